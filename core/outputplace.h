// Where the programs may write what they put out.
#pragma once

#include "qrb/context.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::core {

// What an output is; what a plugin writes may be anything.
enum class OutputKind : std::uint8_t { Text, Scan, Database, Unknown };

// Refuses the places that an output must never take: a database, whoever has it open, a file that
// is being read, by whatever names, a scan in its own format, which only another scan may replace,
// and names whose extensions promise something else. fileName and reads: UTF-8. Throws qrb::Error.
void checkOutputPlace(const qrb::Context& context, const std::string& fileName,
                      const std::vector<std::string>& reads = {},
                      OutputKind kind = OutputKind::Text);

// The last of them: "flight.laz" holds points of that format and nothing else. Throws qrb::Error.
void checkPromise(const std::string& fileName, OutputKind kind);

}  // namespace tarvo::core
