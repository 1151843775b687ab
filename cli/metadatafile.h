// Metadata items in files: JSON objects with one member per item, whose value is that of the item.
#pragma once

#include "qrb/metadata.h"

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

struct MetaDataImport {
    std::vector<std::string> added;
    std::vector<std::string> updated;
};
// Sets the items that a file holds, in its order; numbers keep their digits. Needs a pending
// transaction. Throws Failure and Error.
void importMetaDataFile(qrb::pointcloud::MetaData& metaData, const std::string& fileName,
                        MetaDataImport& result);

}  // namespace tarvo::cli
