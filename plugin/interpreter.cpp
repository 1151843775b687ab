#include "plugin/interpreter.h"

#include "core/error.h"
#include "core/utf8.h"
#include "files/path.h"
#include "plugin/process.h"

#include <charconv>
#include <chrono>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

namespace tarvo::plugin {

namespace {

using core::Failure;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds answerPatience{10};
constexpr std::size_t answerLimit = 100'000;
constexpr const char* advice = "Name a Python 3.9 or later as the interpreter of plugins.";

// "3.11.2" as 3 and 11; nothing for other texts.
std::optional<std::pair<int, int>> versionOf(std::string_view text) {
    std::pair<int, int> version;
    const char* const end = text.data() + text.size();
    const auto major = std::from_chars(text.data(), end, version.first);
    if (major.ec != std::errc() || major.ptr == end || *major.ptr != '.')
        return std::nullopt;
    const auto minor = std::from_chars(major.ptr + 1, end, version.second);
    if (minor.ec != std::errc() || minor.ptr == end || *minor.ptr != '.')
        return std::nullopt;
    return version;
}

// The process is started in another folder.
std::string absoluteProgram(const std::string& program) {
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(files::pathOf(program), error);
    return program.find('/') == std::string::npos || error ? program : files::nameOf(path);
}

Interpreter asked(const std::string& name) {
    const std::string program = absoluteProgram(name);
    Process process(program, {"-E", "-S", "-c", "import sys; print(sys.version.split()[0])"}, "/");
    process.closeInput();
    std::string answer, errors;
    const auto deadline = Clock::now() + answerPatience;
    while (process.read(answer, errors, std::chrono::milliseconds(100)))
        if (Clock::now() > deadline || answer.size() + errors.size() > answerLimit)
            throw Failure("\"" + program + "\" does not answer as Python does.", advice);
    const std::string version(core::trimmed(answer));
    const auto numbers = versionOf(version);
    if (!numbers)
        throw Failure("\"" + program + "\" is no Python.", advice);
    if (*numbers < std::pair(3, 9))
        throw Failure("\"" + program + "\" is Python " + version + ", which is too old.", advice);
    return {program, version};
}

}  // namespace

Interpreter findInterpreter(const std::string& pythonPath) {
    const bool isDefault = pythonPath.empty() || pythonPath == defaultPythonPath;
    std::vector<std::string> programs{pythonPath};
    if (isDefault)
        programs = {defaultPythonPath, "python3", "python"};
    for (const std::string& program : programs) {
        std::optional<Interpreter> found;
        try {
            found = asked(program);
        } catch (const Failure&) {
            if (!isDefault)
                throw;
        }
        if (found)
            return *found;
    }
    throw Failure("There is no Python.",
                  "Install Python 3.9 or later, or name it as the "
                  "interpreter of plugins.");
}

}  // namespace tarvo::plugin
