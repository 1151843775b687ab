#include "engine/validation/newfile.h"

#include "catalogue/catalogue.h"

#include <utility>
#include <vector>

namespace tarvo::engine::validation {

void createFile(const std::string& fileName, const session::CreateSettings& settings,
                const std::string& api, const FileSchema& schema, bool optionals) {
    session::CreateSettings own = settings;
    const FileSchema::Item* primary = schema.primary();
    if (primary && primary->name != settings.primaryAttribute.name)
        own.primaryAttribute = session::defaultAttribute(primary->name);

    std::vector<schema::AttributeRecord> attributes;
    for (const FileSchema::Item& item : schema.attributes)
        if ((optionals || !item.optional) && item.name != own.primaryAttribute.name &&
            item.name != schema::pointIdName)
            attributes.push_back(session::defaultAttribute(item.name));

    std::vector<std::pair<std::string, std::string>> metaData;
    for (const FileSchema::Item& item : schema.metaData) {
        if (item.optional && !optionals)
            continue;
        const catalogue::MetaDataEntry* entry = catalogue::findMetaData(item.name);
        if (!entry)
            throw Failure(ErrorCode::NotFound,
                          "\"" + item.name + "\" is not a default metadata item.");
        // The file agrees with the schema without an item that could only be made up.
        if (item.optional && entry->neutral.empty())
            continue;
        metaData.emplace_back(item.name, entry->neutral.empty() ? entry->example : entry->neutral);
    }
    session::Session::create(fileName, own, api, attributes, metaData);
}

}  // namespace tarvo::engine::validation
