// Files beside a database: what the window reads from and writes to them. No database is read or
// written this way: closing its file again would drop the locks that the program holds on it.
#pragma once

#include "files/wholefile.h"

#include <QString>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::window {

// The bytes of a file. Throws qrb::Error with the text failure, or a usual one, where it can't be
// opened or is a database.
std::string readFile(const QString& fileName, const QString& failure = {});

// An output that is there whole once it is published, or as it was before. reads: files that it may
// not take, as it may no database (UTF-8). Throws qrb::Error, with the text failed where the
// place can't be written.
std::unique_ptr<files::WholeFile> openOutput(const QString& fileName, const QString& failed,
                                             const std::vector<std::string>& reads = {});

// The file is there whole, or as it was before. Throws qrb::Error "Failed to open output
// file!", or files::FileError.
void writeFile(const QString& fileName, std::string_view bytes);

}  // namespace tarvo::window
