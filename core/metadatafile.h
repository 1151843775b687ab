// Metadata items in files: a JSON object with a member per item. An item that is a JSON object
// stands as that; every other one as a string that holds the item's text, so that reading gives
// back what was written.
#pragma once

#include "qrb/metadata.h"

#include <string>
#include <string_view>
#include <vector>

namespace tarvo::core {

struct MetaDataItem {
    std::string name;
    std::string text;
    bool operator==(const MetaDataItem&) const = default;
};

// The text of a file, indented. Texts that are no UTF-8 are read as Latin-1.
std::string writeMetaDataFile(const std::vector<MetaDataItem>& items);

struct MetaDataFile {
    std::vector<MetaDataItem> items;   // in the order of the file
    std::vector<std::string> skipped;  // "NAME (number)": members that are no string or object
};
// Numbers keep their digits. Throws Failure for a text that is no JSON object, with the place.
MetaDataFile readMetaDataFile(std::string_view text);

// Sets the items of a file. What it changed can be taken back, but for signatures.
class MetaDataImport {
public:
    // Within a pending transaction, which must outlive it.
    explicit MetaDataImport(qrb::pointcloud::MetaData& metaData) : m_metaData(metaData) {}

    // An item that has this value already, an object in whatever spelling, is left alone with its
    // signature. Throws qrb::Error.
    void set(const MetaDataItem& item);
    // Whether set() would lose a signature, which nobody without its key can give back.
    bool losesSignature(const MetaDataItem& item) const;
    void takeBack();

    std::vector<std::string> added;
    std::vector<std::string> updated;
    std::vector<std::string> unchanged;
    std::vector<std::string> unsignedNow;  // of the updated ones, those that were signed

private:
    struct Before {
        std::string name;
        bool exists;
        std::string text;
    };
    qrb::pointcloud::MetaData& m_metaData;
    std::vector<Before> m_before;
};

}  // namespace tarvo::core
