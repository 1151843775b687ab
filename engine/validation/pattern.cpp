#include "engine/validation/pattern.h"

#include "engine/base/error.h"
#include "engine/base/utf8.h"
#include "engine/validation/ecmaregex.h"

#include <re2/re2.h>

#include <new>

#if defined(__GLIBC__)
#include <execinfo.h>
#endif

namespace tarvo::engine::validation {

namespace {

constexpr std::size_t maximumExpression = 1000;

[[noreturn]] void refusePattern(const std::string& expression, const std::string& reason) {
    throw Failure(ErrorCode::Argument,
                  "The regular expression \"" + expression.substr(0, 100) + "\" " + reason);
}

// RE2 prepares parts of a program once; an exception that leaves such a routine of the C library has
// that load its unwinder, and where there is no memory for it the process is ended. So it is loaded
// ahead.
void loadUnwinder() {
#if defined(__GLIBC__)
    void* frame = nullptr;
    if (backtrace(&frame, 1) == 0)
        throw std::bad_alloc();
#endif
}

std::unique_ptr<re2::RE2> compile(const std::string& expression) {
    if (expression.size() > maximumExpression)
        refusePattern(expression,
                      "is longer than " + std::to_string(maximumExpression) + " bytes.");
    // A message would end at the byte.
    if (const std::size_t zero = expression.find('\0'); zero != std::string::npos)
        refusePattern(expression.substr(0, zero), "contains a zero byte.");
    loadUnwinder();
    re2::RE2::Options options;
    options.set_log_errors(false);
    options.set_never_capture(true);
    try {
        auto regex = std::make_unique<re2::RE2>(translatedRegex(expression), options);
        if (regex->ok())
            return regex;
        if (regex->error_code() == re2::RE2::ErrorPatternTooLarge)
            refusePattern(expression, "is too large.");
        refusePattern(expression, "can't be understood: " + regex->error() + ".");
    } catch (const RegexFault& fault) {
        refusePattern(expression, fault.what());
    }
}

}  // namespace

Pattern::Pattern(const std::string& expression)
    : m_regex(compile(expression)), m_size(static_cast<std::size_t>(m_regex->ProgramSize())) {}

Pattern::~Pattern() = default;

bool Pattern::search(const std::string& text) const {
    return re2::RE2::PartialMatch(validUtf8(text), *m_regex);
}

}  // namespace tarvo::engine::validation
