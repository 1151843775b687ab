#include "engine/validation/jsonschema.h"

#include "engine/base/json.h"
#include "engine/validation/checks.h"
#include "engine/validation/flatschema.h"
#include "engine/validation/schemalibrary.h"

#include <algorithm>
#include <new>
#include <set>
#include <utility>

namespace tarvo::engine::validation {

namespace {

struct PlacedFinding {
    std::vector<std::size_t> position;  // index of the member or element on each level
    std::string pointer;
    std::string text;
};

// What the schema library says of a place because of what it said of a part of it: "".
// The rest of its texts is replaced by clearer ones.
std::string ownText(const std::string& text) {
    constexpr std::pair<std::string_view, std::string_view> replacements[] = {
        {"Failed to validate against any", "satisfies none of the alternatives"},
        {"Failed to validate against exactly one", "satisfies more than one of the alternatives"},
        {"Target should not validate", "satisfies what the schema excludes with \"not\""},
        {"Failed to any values against", "has no element like the one that the schema asks for"},
        {"Failed to validate", ""}};
    for (const auto& [begin, replacement] : replacements)
        if (text.compare(0, begin.size(), begin) == 0)
            return std::string(replacement);
    constexpr std::string_view dependency = "Missing dependency '";
    if (text.compare(0, dependency.size(), dependency) == 0)
        return "the member \"" +
               text.substr(dependency.size(), text.rfind('\'') - dependency.size()) +
               "\" is missing, which another member needs";
    return text;
}

// The library's path has the root, then "[NAME]" or "[INDEX]" per level.
PlacedFinding placed(const rapidjson::Value& root,
                     const valijson::ValidationResults::Error& error) {
    PlacedFinding result;
    result.text = ownText(error.description);
    const rapidjson::Value* value = &root;
    for (std::size_t i = 1; i < error.context.size(); ++i) {
        const std::string name = error.context[i].substr(1, error.context[i].size() - 2);
        result.pointer = childPointer(result.pointer, name);
        std::size_t index = 0;
        if (value && value->IsObject()) {
            const rapidjson::Value key(
                rapidjson::StringRef(name.data(), static_cast<rapidjson::SizeType>(name.size())));
            const auto member = value->FindMember(key);
            index = static_cast<std::size_t>(member - value->MemberBegin());
            value = member == value->MemberEnd() ? nullptr : &member->value;
        } else if (value && value->IsArray()) {
            index = std::stoul(name);
            value = index < value->Size() ? &(*value)[static_cast<rapidjson::SizeType>(index)]
                                          : nullptr;
        }
        result.position.push_back(index);
    }
    return result;
}

}  // namespace

std::string toLine(const Finding& finding) {
    return (finding.pointer.empty() ? "The whole value" : finding.pointer) + ": " + finding.text;
}

struct JsonSchema::Private {
    Effort effort;
    rapidjson::Document flat;
    valijson::Schema schema;
};

JsonSchema::JsonSchema(std::string_view text, std::string_view what) {
    rapidjson::Document document = parseJson(text, what);
    tameNumbers(document);
    try {
        m_private = std::make_unique<Private>();
        m_private->flat = flattenSchema(document);
        valijson::SchemaParser parser;
        addChecks(parser, m_private->effort);
        parser.populateSchema(RapidJsonAdapter(m_private->flat), m_private->schema);
    } catch (const std::runtime_error& error) {
        // How the schema library tells that memory ran out.
        if (std::string_view(error.what()).starts_with("Failed to allocate"))
            throw std::bad_alloc();
        throw Failure(ErrorCode::Argument, std::string(what) + " is not valid.", error.what());
    }
}

JsonSchema::~JsonSchema() = default;

std::vector<Finding> JsonSchema::check(std::string_view text, std::string_view what) {
    rapidjson::Document document = parseJson(text, what);
    tameNumbers(document);
    Effort& effort = m_private->effort;
    valijson::ValidationResults results;
    effort.steps = 0;
    effort.results = &results;
    bool pass = false;
    bool enough = false;
    try {
        const RapidJsonAdapter value(document);
        pass = valijson::Validator().validate(m_private->schema, value, &results);
    } catch (const EnoughFindings&) {
        enough = true;
    }
    effort.results = nullptr;
    if (pass)
        return {};

    std::vector<PlacedFinding> found;
    for (const valijson::ValidationResults::Error& error : results)
        if (PlacedFinding finding = placed(document, error); !finding.text.empty())
            found.push_back(std::move(finding));
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& a, const auto& b) { return a.position < b.position; });
    std::vector<Finding> result;
    if (enough)
        result.push_back({"", "has more faults than those listed here"});
    std::set<std::pair<std::string, std::string>> seen;
    for (PlacedFinding& finding : found)
        if (seen.emplace(finding.pointer, finding.text).second)
            result.push_back({std::move(finding.pointer), std::move(finding.text)});
    if (result.empty())
        result.push_back({"", "does not satisfy its schema"});
    return result;
}

}  // namespace tarvo::engine::validation
