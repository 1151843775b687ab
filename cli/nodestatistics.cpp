#include "cli/nodestatistics.h"

#include "cli/errors.h"
#include "cli/json.h"
#include "cli/texttable.h"
#include "core/valueformat.h"
#include "qrb/error.h"

#include <functional>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::IndexNode;
using qrb::pointcloud::QueryStat;

// The extremes of an attribute's elements; empty texts where the node has no value.
struct Extremes {
    std::string attribute;
    std::vector<std::string> elements;  // their names
    std::vector<std::string> minimum, maximum, cleanedMinimum, cleanedMaximum;
    std::uint32_t revision = 0;
};

const IndexNode* findNode(const IndexNode& node, std::uint32_t id, std::uint32_t& level) {
    if (node.id == id) {
        return &node;
    }
    ++level;
    for (const IndexNode& child : node.children) {
        if (const IndexNode* const found = findNode(child, id, level)) {
            return found;
        }
    }
    --level;
    return nullptr;
}

std::vector<std::string> valueTexts(const core::ValueFormat& format, std::size_t length,
                                    const std::function<void(void*)>& read) {
    std::vector<std::uint64_t> values(length);
    try {
        read(values.data());
    } catch (const qrb::Error& error) {
        if (error.code() != QRB_ERROR_NOT_FOUND) {
            throw;
        }
        return std::vector<std::string>(length);
    }
    std::vector<std::string> texts;
    for (const std::uint64_t value : values) {
        texts.push_back(format.isFinite(value) ? format.text(value) : "");
    }
    return texts;
}

Extremes readExtremes(const qrb::Pointcloud& cloud, std::uint32_t node, const std::string& name) {
    if (!cloud.pointAttributes().exists(name)) {
        throw Failure("There is no attribute \"" + name + "\" in the file.",
                      "\"qrbtool attributes FILE\" lists the attributes.");
    }
    const auto definition = cloud.pointAttributes().get(name);
    const core::ValueFormat format(definition);
    const QueryStat stat = cloud.stat();
    const auto read = [&](auto extreme, bool cleaned) {
        return valueTexts(format, definition.length, [&](void* buffer) {
            (stat.*extreme)(node, name, format.type(), buffer, cleaned);
        });
    };
    Extremes result;
    result.attribute = name;
    result.elements = core::elementNames(name, definition.length);
    result.minimum = read(&QueryStat::minimum, false);
    result.maximum = read(&QueryStat::maximum, false);
    result.cleanedMinimum = read(&QueryStat::minimum, true);
    result.cleanedMaximum = read(&QueryStat::maximum, true);
    result.revision = stat.revision(node, name);
    return result;
}

void putExtremes(JsonText& json, const Extremes& extremes) {
    json.beginObject();
    json.member("name", extremes.attribute);
    const auto put = [&json](const char* key, const std::vector<std::string>& texts) {
        json.key(key);
        json.numbers(texts);
    };
    put("minimum", extremes.minimum);
    put("maximum", extremes.maximum);
    put("cleaned_minimum", extremes.cleanedMinimum);
    put("cleaned_maximum", extremes.cleanedMaximum);
    json.member("revision", extremes.revision);
    json.endObject();
}

}  // namespace

std::string nodeStatistics(const qrb::Pointcloud& cloud, std::uint32_t node,
                           std::vector<std::string> attributes, bool asJson) {
    IndexNode root;
    cloud.stat().index(root);
    std::uint32_t level = 0;
    const IndexNode* const found = node == 0 ? nullptr : findNode(root, node, level);
    if (found == nullptr) {
        throw Failure("The index has no node " + std::to_string(node) + ".",
                      "\"qrbtool index FILE\" lists the nodes.");
    }
    if (attributes.empty()) {
        attributes = cloud.pointAttributes().list();
    }
    JsonText json;
    json.beginObject();
    json.member("id", found->id);
    json.member("level", level);
    json.member("points", found->pointCountTotal);
    json.member("points_own", found->pointCountNode);
    json.member("revision", found->revision);
    json.member("leaf", found->children.empty());
    json.key("attributes");
    json.beginArray();
    TextTable table({{"Attribute"},
                     {"Minimum", true},
                     {"Maximum", true},
                     {"Valid minimum", true},
                     {"Valid maximum", true},
                     {"Revision", true}});
    for (const std::string& name : attributes) {
        const Extremes extremes = readExtremes(cloud, node, name);
        putExtremes(json, extremes);
        for (std::size_t i = 0; i < extremes.elements.size(); ++i) {
            table.add({extremes.elements[i], extremes.minimum[i], extremes.maximum[i],
                       extremes.cleanedMinimum[i], extremes.cleanedMaximum[i],
                       std::to_string(extremes.revision)});
        }
    }
    json.endArray();
    json.endObject();
    if (asJson) {
        return json.text();
    }
    return labelled("Node",
                    std::to_string(found->id) + (found->children.empty() ? " (a leaf)" : "")) +
           labelled("Level", std::to_string(level)) +
           labelled("Points", std::to_string(found->pointCountTotal)) +
           labelled("Own points", std::to_string(found->pointCountNode)) +
           labelled("Revision", std::to_string(found->revision)) + "\n" + table.text();
}

}  // namespace tarvo::cli
