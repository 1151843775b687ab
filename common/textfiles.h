// Side files of the dialogs, read and written whole.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace tarvo::common {

// The bytes of a file. Throws tarvo::qrb::Error "Failed to open input file!".
std::string readFile(const QString& fileName);

// The file is there whole, or as it was before. Throws tarvo::qrb::Error "Failed to open output
// file!".
void writeFile(const QString& fileName, std::string_view bytes);

}  // namespace tarvo::common
