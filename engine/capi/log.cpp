#include "engine/capi/log.h"

#include "engine/base/error.h"
#include "engine/session/state.h"
#include "engine/store/container.h"

#include <cctype>
#include <cerrno>
#include <cstring>

namespace tarvo::engine::capi {

Log::Log(std::string_view level, const std::string& path) {
    std::string name;
    for (const char c : level)
        name += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    m_calls = name == "TRACE";
    m_failures =
        m_calls || name == "DEBUG" || name == "INFO" || name == "WARNING" || name == "ERROR";
    if (!m_failures && !name.empty() && name != "OFF")
        throw Failure(ErrorCode::Argument, "\"" + std::string(level) + "\" is not a log level.",
                      "TRACE, DEBUG, INFO, WARNING, ERROR and OFF are.");
    if (path.empty() || !m_failures)
        return;
    if (store::Container::recognises(path))
        throw Failure(ErrorCode::File, "The log file \"" + path + "\" is a database.",
                      "Give it another name.");
    m_file.reset(std::fopen(path.c_str(), "a"));
    if (!m_file)
        throw Failure(ErrorCode::File, "The log file \"" + path + "\" can't be written.",
                      std::strerror(errno));
}

void Log::called(const char* function) noexcept {
    if (m_calls && m_file)
        write("TRACE", function, "");
}

void Log::failed(const char* function, const char* text) noexcept {
    if (m_failures && m_file)
        write("ERROR", function, text);
}

void Log::write(const char* kind, const char* function, const char* text) noexcept {
    try {
        std::fprintf(m_file.get(), "%s %s %s%s%s\n", session::timestamp().c_str(), kind, function,
                     *text ? ": " : "", text);
        std::fflush(m_file.get());
    } catch (...) {
        // A log that can't be written must not fail the call that it tells of.
    }
}

}  // namespace tarvo::engine::capi
