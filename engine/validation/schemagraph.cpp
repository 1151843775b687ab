#include "engine/validation/schemagraph.h"

#include <algorithm>
#include <array>

namespace tarvo::engine::validation {

namespace {

constexpr std::size_t maximumNodes = 100'000;
constexpr std::size_t maximumDepth = 120;
constexpr std::size_t maximumLookedAt = 500'000'000;
constexpr std::size_t maximumPatterns = 1000;
constexpr std::size_t maximumPatternSize = 2'000'000;

constexpr std::array laterKeywords{"prefixItems",       "unevaluatedProperties", "unevaluatedItems",
                                   "dependentRequired", "dependentSchemas",      "minContains",
                                   "maxContains",       "$dynamicRef",           "$recursiveRef"};

// The fragment of an address; what is no escape stands for itself.
std::string percentDecoded(std::string_view text) {
    const auto digit = [&](std::size_t at) {
        const std::size_t value = std::string_view("0123456789abcdefABCDEF").find(text[at]);
        return static_cast<int>(value < 16 ? value : value - 6);
    };
    const auto isDigit = [&](std::size_t at) {
        return at < text.size() &&
               std::string_view("0123456789abcdefABCDEF").find(text[at]) != std::string_view::npos;
    };
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '%' && isDigit(i + 1) && isDigit(i + 2);
        result += isEscape ? static_cast<char>(digit(i + 1) * 16 + digit(i + 2)) : text[i];
        i += isEscape ? 2 : 0;
    }
    return result;
}

const Value* element(const Value& array, const std::string& token) {
    if (token.empty() || token.size() > 9 || (token[0] == '0' && token.size() > 1) ||
        token.find_first_not_of("0123456789") != std::string::npos)
        return nullptr;
    const auto index = static_cast<rapidjson::SizeType>(std::stoul(token));
    return index < array.Size() ? &array[index] : nullptr;
}

// What a JSON pointer leads to; null where there is nothing, and for what is no pointer.
// lookedAt: is told how many members were.
const Value* follow(const Value& root, std::string_view pointer, std::size_t& lookedAt) {
    const Value* value = &root;
    while (value && !pointer.empty()) {
        if (pointer[0] != '/')
            return nullptr;
        const std::size_t end = std::min(pointer.find('/', 1), pointer.size());
        std::string token;
        for (std::size_t i = 1; i < end; ++i) {
            token += pointer[i];
            if (pointer[i] != '~')
                continue;
            if (++i == end || (pointer[i] != '0' && pointer[i] != '1'))
                return nullptr;
            token.back() = pointer[i] == '0' ? '~' : '/';
        }
        pointer.remove_prefix(end);
        if (value->IsObject()) {
            lookedAt += value->MemberCount();
            const auto member = value->FindMember(Value(rapidjson::StringRef(
                token.data(), static_cast<rapidjson::SizeType>(token.size()))));
            value = member == value->MemberEnd() ? nullptr : &member->value;
        } else {
            value = value->IsArray() ? element(*value, token) : nullptr;
        }
    }
    return value;
}

[[noreturn]] void failRound(const std::string& place) {
    SchemaGraph::fail(place, "it refers back to itself for the same value.",
                      "A schema may refer to itself for members and elements only.");
}

}  // namespace

SchemaGraph::SchemaGraph(const Value& json) : m_json(json) {
    m_rootNode = &schemaAt(json, "", "");
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        SchemaNode& node = m_nodes[i];
        if (!node.json->IsObject())
            continue;
        for (const char* keyword : laterKeywords)
            if (node.json->HasMember(keyword))
                fail(node.place, "the keyword \"" + std::string(keyword) +
                                     "\" is newer than draft 7, which is supported.");
        addKeywords(*this, node);
    }
    for (SchemaNode& node : m_nodes)
        measure(node, 1);
}

void SchemaGraph::fail(const std::string& place, const std::string& reason,
                       const std::string& hint) {
    throw Failure(
        ErrorCode::Argument,
        "The JSON schema is not valid at \"" + (place.empty() ? "/" : place) + "\": " + reason,
        hint);
}

SchemaNode& SchemaGraph::schemaAt(const Value& json, const std::string& place,
                                  const char* keyword) {
    const Value* schema = &json;
    std::string found = place;
    for (std::vector<const Value*> passed; schema->IsObject();) {
        const auto reference = schema->FindMember("$ref");
        if (reference == schema->MemberEnd())
            break;
        passed.push_back(schema);
        if (passed.size() > maximumDepth)
            fail(place, "it nests more than " + std::to_string(maximumDepth) + " references.");
        schema = &target(reference->value, found);
        found = percentDecoded(textOf(reference->value)).substr(1);
        if (std::find(passed.begin(), passed.end(), schema) != passed.end())
            failRound(place);
    }
    SchemaNode*& node = m_byJson[schema];
    if (node) {
        node->isShared = true;
        return *node;
    }
    if (!schema->IsObject() && !schema->IsBool())
        fail(found, "expected a schema: an object, true or false.");
    if (m_nodes.size() == maximumNodes)
        fail(found, "it has more than " + std::to_string(maximumNodes) + " parts.");
    node = &m_nodes.emplace_back();
    node->json = schema;
    node->place = found;
    if (schema->IsBool() && !schema->GetBool())
        node->checks.emplace_back(
            keyword, [](const Visit& visit) { return visit.fails("is not allowed here"); });
    return *node;
}

const Value& SchemaGraph::target(const Value& reference, const std::string& place) {
    if (!reference.IsString())
        fail(place, "\"$ref\" is not a text.");
    const std::string text = textOf(reference);
    if (text.empty() || text[0] != '#' || (text.size() > 1 && text[1] != '/'))
        fail(place, "it refers to \"" + text + "\".",
             "Only references within the schema (\"#/definitions/NAME\") are followed; nothing "
             "is loaded from files or the network.");
    const Value* found = follow(m_json, percentDecoded(text.substr(1)), m_lookedAt);
    if (m_lookedAt > maximumLookedAt)
        fail(place, "it has too many references into very large objects.");
    if (!found)
        fail(place, "it refers to \"" + text + "\", which the schema does not have.");
    return *found;
}

std::shared_ptr<const Pattern> SchemaGraph::pattern(const std::string& expression,
                                                    const std::string& place) {
    std::shared_ptr<const Pattern>& known = m_patterns[expression];
    if (known)
        return known;
    try {
        known = std::make_shared<const Pattern>(expression);
    } catch (const Failure& failure) {
        fail(place, failure.what(), failure.details());
    }
    m_patternSize += known->size();
    if (m_patterns.size() > maximumPatterns || m_patternSize > maximumPatternSize)
        fail(place, "its regular expressions are too many or too large.");
    return known;
}

// Checks of one value must end.
void SchemaGraph::measure(SchemaNode& node, std::size_t depth) {
    if (node.height < 0)
        failRound(node.place);
    if (depth - 1 + static_cast<std::size_t>(std::max(node.height, 1)) > maximumDepth)
        fail(node.place, "it nests more than " + std::to_string(maximumDepth) + " schemas.");
    if (node.height > 0)
        return;
    node.height = -1;
    int height = 1;
    for (SchemaNode* part : node.sameValue) {
        measure(*part, depth + 1);
        height = std::max(height, part->height + 1);
    }
    node.height = height;
}

}  // namespace tarvo::engine::validation
