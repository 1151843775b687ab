// The one exception type of the layer, and the two checks that follow every library call.
#pragma once

#include "qrb/qrb.h"

#include <cstdint>
#include <exception>
#include <string>

namespace tarvo::qrb {

// A failed library call: what() is the text, details() tells more; both UTF-8.
class Error : public std::exception {
public:
    ~Error() override = default;
    const char* what() const noexcept override;
    virtual std::int32_t code() const noexcept;
    virtual const char* details() const noexcept;

protected:
    explicit Error(std::int32_t code = 0) : m_code(code) {}
    std::int32_t m_code;
};

// What is really thrown.
class ErrorImpl : public Error {
public:
    ErrorImpl(std::int32_t code, std::string text, std::string details);
    const char* what() const noexcept override;
    const char* details() const noexcept override;

private:
    std::string m_text;
    std::string m_details;
};

// Checks the status of a context-bound function; throws ErrorImpl unless it is QRB_SUCCESS or
// silent is set. A null context gives code 0 and the text "unknown".
void checkStatus(qrb_context* context, std::int32_t status, bool silent = false);

// Checks and deletes the result of a _cf function; throws ErrorImpl unless it is null or silent
// is set.
void checkResult(qrb_result* result, bool silent = false);

// Owns one text handed out by a _cf function.
class StringHolder {
public:
    StringHolder() = default;
    ~StringHolder();
    StringHolder(const StringHolder&) = delete;
    StringHolder& operator=(const StringHolder&) = delete;

    char** slot() { return &m_text; }
    std::string str() const { return m_text ? m_text : ""; }

private:
    char* m_text = nullptr;
};

// A copy of a text that belongs to the library; null gives the empty text.
inline std::string copyText(const char* text) { return text ? text : ""; }

}  // namespace tarvo::qrb
