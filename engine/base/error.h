// The one exception type of the engine. engine/capi turns it, and every other exception, into the
// status of the C interface.
#pragma once

#include "qrb/qrb.h"

#include <exception>
#include <string>
#include <utility>

namespace tarvo::engine {

enum class ErrorCode : int {
    Internal = QRB_ERROR_INTERNAL,
    Argument = QRB_ERROR_ARGUMENT,
    State = QRB_ERROR_STATE,
    NotFound = QRB_ERROR_NOT_FOUND,
    Exists = QRB_ERROR_EXISTS,
    File = QRB_ERROR_FILE,
    Format = QRB_ERROR_FORMAT,
    Damaged = QRB_ERROR_DAMAGED,
    Busy = QRB_ERROR_BUSY,
    Filter = QRB_ERROR_FILTER,
    Range = QRB_ERROR_RANGE,
    Validation = QRB_ERROR_VALIDATION,
    Cancelled = QRB_ERROR_CANCELLED,
    Memory = QRB_ERROR_MEMORY
};

// text: one line, what was wrong and with which value; details: where and why, what to do.
class Failure : public std::exception {
public:
    Failure(ErrorCode code, std::string text, std::string details = {})
        : m_code(code), m_text(std::move(text)), m_details(std::move(details)) {}

    const char* what() const noexcept override { return m_text.c_str(); }
    ErrorCode code() const noexcept { return m_code; }
    const std::string& details() const noexcept { return m_details; }

private:
    ErrorCode m_code;
    std::string m_text;
    std::string m_details;
};

}  // namespace tarvo::engine
