#include "engine/capi/log.h"

#include "engine/base/error.h"
#include "engine/session/state.h"
#include "engine/store/container.h"

#include <cctype>
#include <cerrno>
#include <cstring>

namespace tarvo::engine::capi {

namespace {

// "qrb_status qrb_context_new(qrb_context**, ...)" -> "qrb_context_new"
std::string_view functionName(std::string_view signature) {
    signature = signature.substr(0, signature.find('('));
    const std::size_t blank = signature.find_last_of(" *");
    return blank == std::string_view::npos ? signature : signature.substr(blank + 1);
}

}  // namespace

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
        const std::string name(functionName(function));
        std::fprintf(m_file.get(), "%s %s %s%s%s\n", session::timestamp().c_str(), kind,
                     name.c_str(), *text ? ": " : "", text);
        std::fflush(m_file.get());
    } catch (...) {
        // A log that can't be written must not fail the call that it tells of.
    }
}

}  // namespace tarvo::engine::capi
