// The formats of texts that JSON schemas name.
#pragma once

#include <string_view>

namespace tarvo::engine::validation {

// Whether a text has the format; by the grammars of the RFCs, in one pass.
using FormatCheck = bool (*)(std::string_view text);

// Null for a format that is not checked.
FormatCheck findFormat(std::string_view name);

}  // namespace tarvo::engine::validation
