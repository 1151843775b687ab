// Metadata items in files, for the commands.
#pragma once

#include "core/metadatafile.h"

#include <string>
#include <vector>

namespace tarvo::cli {

class Database;

// Writes the items of these names (none: all) into one file, or into an existing folder, where
// each gets a file "NAME.meta.json"; characters of a name that are no letters, digits, blanks, "."
// (but for a leading one), "_" or "-" stand as %XX in the name of the file. A file that is there is
// not replaced by one without items. Throws Failure, FileError and Error.
void exportMetaData(const Database& database, const std::string& target,
                    std::vector<std::string> names);

// Sets the items that a file holds, in its order. Returns the members that were skipped. Throws
// Failure and Error.
std::vector<std::string> importMetaDataFile(core::MetaDataImport& import,
                                            const std::string& fileName);

}  // namespace tarvo::cli
