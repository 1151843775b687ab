// How a failure is told on standard error.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace tarvo::cli {

// "qrbtool: TEXT", then the details, indented. In JSON a line
// {"error":{"text":TEXT,"details":DETAILS,"code":CODE}}, without a code where there is none.
// Both texts may come from files. code: that of the library.
void reportError(std::string_view text, std::string_view details, bool asJson,
                 std::optional<std::int32_t> code = std::nullopt);

}  // namespace tarvo::cli
