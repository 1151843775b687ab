#include "exchange/e57/xml.h"

#include "core/json.h"
#include "exchange/csv/columntype.h"
#include "exchange/rawfile.h"
#include "exchange/table/jsontext.h"

#include <cstring>
#include <string_view>

namespace tarvo::exchange::e57 {

namespace {

constexpr int maximumDepth = 32;
constexpr std::size_t formattedUpTo = 1 << 20;  // bytes

using CompactWriter = rapidjson::Writer<rapidjson::StringBuffer>;

class DepthCheck : public pugi::xml_tree_walker {
public:
    bool for_each(pugi::xml_node&) override { return depth() < maximumDepth; }
};

std::string_view trimmed(const char* text) {
    std::string_view view(text);
    const std::size_t begin = view.find_first_not_of(" \t\r\n");
    if (begin == std::string_view::npos) {
        return {};
    }
    return view.substr(begin, view.find_last_not_of(" \t\r\n") - begin + 1);
}

template <typename Number>
Number numberOf(const char* text, Number usual, const char* name, const std::string& fileName) {
    const std::string_view word = trimmed(text);
    Number value = usual;
    if (!word.empty() && !csv::parseNumber(word, value)) {
        failFormat("E57", fileName,
                   "\"" + validUtf8(std::string(word.substr(0, 80))) + "\" of \"" +
                       validUtf8(std::string(name).substr(0, 80)) +
                       "\" is not a number of its type");
    }
    return value;
}

void putString(CompactWriter& writer, const std::string& text) {
    const std::string valid = validUtf8(text);
    writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

void putNode(CompactWriter& writer, const pugi::xml_node& node, std::string_view type);

void putChildren(CompactWriter& writer, const pugi::xml_node& node, bool isArray) {
    isArray ? writer.StartArray() : writer.StartObject();
    for (const pugi::xml_node& child : node.children()) {
        const std::string_view type = child.attribute("type").value();
        if (child.type() != pugi::node_element || type == "CompressedVector" || type == "Blob" ||
            std::strcmp(child.name(), "images2D") == 0) {
            continue;
        }
        if (!isArray) {
            const std::string name = validUtf8(child.name());
            writer.Key(name.data(), static_cast<rapidjson::SizeType>(name.size()));
        }
        putNode(writer, child, type);
    }
    isArray ? writer.EndArray() : writer.EndObject();
}

void putNode(CompactWriter& writer, const pugi::xml_node& node, std::string_view type) {
    if (type == "Structure" || type == "Vector") {
        putChildren(writer, node, type == "Vector");
        return;
    }
    const std::string_view word = trimmed(node.child_value());
    double real = 0;
    std::int64_t whole = 0;
    if (type == "Integer" && (word.empty() || csv::parseNumber(word, whole))) {
        writer.Int64(whole);
    } else if ((type == "Float" || type == "ScaledInteger") &&
               (word.empty() || (csv::parseNumber(word, real) && std::isfinite(real)))) {
        writer.Double(real);
    } else {
        putString(writer, node.child_value());
    }
}

}  // namespace

void parseXml(pugi::xml_document& document, std::string& text, const std::string& fileName) {
    const pugi::xml_parse_result result = document.load_buffer_inplace(
        text.data(), text.size(), pugi::parse_default | pugi::parse_doctype, pugi::encoding_utf8);
    if (!result) {
        failFormat("E57", fileName,
                   std::string("its XML section has a fault at byte ") +
                       std::to_string(result.offset) + ": " + result.description());
    }
    DepthCheck depth;
    if (!document.traverse(depth)) {
        failFormat(
            "E57", fileName,
            "its XML section nests deeper than " + std::to_string(maximumDepth) + " elements");
    }
    for (const pugi::xml_node& node : document.children()) {
        if (node.type() == pugi::node_doctype) {
            failFormat("E57", fileName, "its XML section has a document type");
        }
    }
}

double realOf(const pugi::xml_node& node, const std::string& fileName) {
    const double value = numberOf(node.child_value(), 0.0, node.name(), fileName);
    if (!std::isfinite(value)) {
        failFormat("E57", fileName, "\"" + validUtf8(node.name()) + "\" is not finite");
    }
    return value;
}

double realOf(const pugi::xml_attribute& attribute, double usual, const std::string& fileName) {
    const double value = numberOf(attribute.value(), usual, attribute.name(), fileName);
    if (!std::isfinite(value)) {
        failFormat("E57", fileName, "\"" + validUtf8(attribute.name()) + "\" is not finite");
    }
    return value;
}

std::int64_t wholeOf(const pugi::xml_attribute& attribute, std::int64_t usual,
                     const std::string& fileName) {
    return numberOf(attribute.value(), usual, attribute.name(), fileName);
}

std::uint64_t countOf(const pugi::xml_attribute& attribute, const std::string& fileName) {
    return numberOf(attribute.value(), std::uint64_t{0}, attribute.name(), fileName);
}

std::string jsonOf(const pugi::xml_node& node, bool isArray) {
    rapidjson::StringBuffer buffer;
    CompactWriter writer(buffer);
    putChildren(writer, node, isArray);
    const std::string text(buffer.GetString(), buffer.GetSize());
    return text.size() <= formattedUpTo ? core::formattedJson(text) : text;
}

}  // namespace tarvo::exchange::e57
