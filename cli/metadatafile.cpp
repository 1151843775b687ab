#include "cli/metadatafile.h"

#include "cli/database.h"
#include "cli/errors.h"
#include "cli/output.h"
#include "cli/textfile.h"

#include <cstdio>
#include <filesystem>

namespace tarvo::cli {

namespace {

std::string itemsAsJson(const qrb::pointcloud::MetaData& metaData,
                        const std::vector<std::string>& names) {
    std::vector<core::MetaDataItem> items;
    for (const std::string& name : names) {
        if (!metaData.exists(name)) {
            throw Failure("The database has no metadata item \"" + name + "\".",
                          "\"qrbtool metadata FILE\" lists the items.");
        }
        items.push_back({name, metaData.get(name)});
    }
    return core::writeMetaDataFile(items);
}

// An item may have any name, so it must not lead out of the folder.
std::string fileNameOf(const std::string& item) {
    std::string name;
    for (const char c : item) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                           (c >= '0' && c <= '9') || c == '_' || c == '-' || c == ' ' ||
                           (c == '.' && !name.empty());
        if (plain) {
            name += c;
        } else {
            char code[8];
            std::snprintf(code, sizeof code, "%%%02X",
                          static_cast<unsigned>(static_cast<unsigned char>(c)));
            name += code;
        }
    }
    return name + ".meta.json";
}

}  // namespace

void exportMetaData(const Database& database, const std::string& target,
                    std::vector<std::string> names) {
    const qrb::pointcloud::MetaData& metaData = database.cloud().metaData();
    if (names.empty()) {
        names = metaData.list();
    }
    std::error_code error;
    const auto write = [&](const std::string& fileName, const std::vector<std::string>& items) {
        if (items.empty() && std::filesystem::is_regular_file(fileName, error)) {
            throw Failure("The database has no metadata items; \"" + fileName +
                          "\" was left as it was.");
        }
        writeAnswer(database, fileName, itemsAsJson(metaData, items));
    };
    if (!std::filesystem::is_directory(target, error)) {
        write(target, names);
        return;
    }
    for (const std::string& name : names) {
        write((std::filesystem::path(target) / fileNameOf(name)).string(), {name});
    }
}

std::vector<std::string> importMetaDataFile(core::MetaDataImport& import,
                                            const std::string& fileName) {
    const std::string text = readTextFile(fileName);
    core::MetaDataFile file;
    try {
        file = core::readMetaDataFile(text);
    } catch (const Failure& failure) {
        throw Failure("\"" + fileName + "\" is no file of metadata items.", failure.what());
    }
    for (const core::MetaDataItem& item : file.items) {
        import.set(item);
    }
    return file.skipped;
}

}  // namespace tarvo::cli
