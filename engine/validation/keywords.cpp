#include "engine/validation/keyword.h"

#include "engine/validation/format.h"

#include <algorithm>
#include <set>
#include <utility>

namespace tarvo::engine::validation {

std::vector<std::string> textsOf(const Value& list, const std::string& place) {
    if (!list.IsArray())
        SchemaGraph::fail(place, "expected an array of texts.");
    std::vector<std::string> result;
    for (const Value& text : list.GetArray()) {
        if (!text.IsString())
            SchemaGraph::fail(place, "expected an array of texts.");
        result.push_back(textOf(text));
    }
    return result;
}

bool matches(const Visit& visit, const Pattern& pattern, const std::string& text) {
    visit.evaluation.spend(text.size() * pattern.size() * 20);
    return pattern.search(text);
}

namespace {

std::string joined(const std::vector<std::string>& texts) {
    std::string result;
    for (std::size_t i = 0; i < texts.size(); ++i)
        result += (i == 0 ? "" : i + 1 < texts.size() ? ", " : " or ") + texts[i];
    return result;
}

struct Type {
    const char* name;
    const char* expected;
    bool (*matches)(const Value& value);
};

constexpr Type types[] = {
    {"null", "null", [](const Value& value) { return value.IsNull(); }},
    {"boolean", "true or false", [](const Value& value) { return value.IsBool(); }},
    {"object", "an object", [](const Value& value) { return value.IsObject(); }},
    {"array", "an array", [](const Value& value) { return value.IsArray(); }},
    {"number", "a number", [](const Value& value) { return value.IsNumber(); }},
    {"integer", "a whole number",
     [](const Value& value) { return value.IsNumber() && isWholeNumber(value); }},
    {"string", "a string", [](const Value& value) { return value.IsString(); }}};

void addType(const Keyword& keyword) {
    std::vector<const Type*> allowed;
    std::vector<std::string> expected;
    for (const std::string& name : keyword.value.IsString()
                                       ? std::vector<std::string>{textOf(keyword.value)}
                                       : textsOf(keyword.value, keyword.place())) {
        const Type* const type = std::find_if(std::begin(types), std::end(types),
                                              [&](const Type& one) { return name == one.name; });
        if (type == std::end(types))
            keyword.fail("\"" + name + "\" is not a type.");
        allowed.push_back(type);
        expected.push_back(type->expected);
    }
    if (allowed.empty())
        keyword.fail("it names no type.");
    keyword.add([=, text = joined(expected)](const Visit& visit) {
        for (const Type* type : allowed)
            if (type->matches(visit.value))
                return true;
        // A number that isn't whole needs to be seen.
        return visit.value.IsNumber() ? visit.differs(text)
                                      : visit.differs(text, typeName(visit.value));
    });
}

void addChoices(const Keyword& keyword, const std::vector<std::string>& choices) {
    constexpr std::size_t shown = 12;
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < std::min(choices.size(), shown); ++i)
        texts.push_back(shortened(choices[i]));
    std::string expected = joined(texts);
    if (choices.size() > shown)
        expected += " or one of " + std::to_string(choices.size() - shown) + " more";
    keyword.add(
        [=, allowed = std::set<std::string>(choices.begin(), choices.end())](const Visit& visit) {
            const std::string text = canonicalText(visit.value);
            visit.evaluation.spend(text.size() * 10);
            return allowed.count(text) > 0 || visit.differs(expected);
        });
}

void addEnum(const Keyword& keyword) {
    if (!keyword.value.IsArray() || keyword.value.Empty())
        keyword.fail("expected an array of values.");
    std::vector<std::string> choices;
    for (const Value& choice : keyword.value.GetArray())
        choices.push_back(canonicalText(choice));
    addChoices(keyword, choices);
}

void addConst(const Keyword& keyword) {
    addChoices(keyword, {canonicalText(keyword.value)});
}

void addPattern(const Keyword& keyword) {
    if (!keyword.value.IsString())
        keyword.fail("expected a regular expression.");
    const std::string expression = textOf(keyword.value);
    keyword.add([pattern = keyword.graph.pattern(expression, keyword.place()),
                 expected = "a text that matches " + shortened(expression)](const Visit& visit) {
        return !visit.value.IsString() || matches(visit, *pattern, textOf(visit.value)) ||
               visit.differs(expected);
    });
}

void addFormat(const Keyword& keyword) {
    if (!keyword.value.IsString())
        keyword.fail("expected the name of a format.");
    const std::string name = textOf(keyword.value);
    const FormatCheck hasFormat = findFormat(name);
    if (!hasFormat)
        return keyword.graph.addUnknownFormat(name);
    keyword.add([=, expected = "a text of the format " + name](const Visit& visit) {
        if (!visit.value.IsString())
            return true;
        visit.evaluation.spend(visit.value.GetStringLength() * 10);
        return hasFormat(textOf(visit.value)) || visit.differs(expected);
    });
}

// Passes: says of the result of the comparison whether the number passes.
template <typename Passes>
void addLimit(const Keyword& keyword, const char* words, Passes passes) {
    if (!keyword.value.IsNumber())
        keyword.fail("expected a number.");
    keyword.add([passes, &limit = keyword.value,
                 expected = words + (" " + canonicalText(keyword.value))](const Visit& visit) {
        return !visit.value.IsNumber() || passes(compareNumbers(visit.value, limit)) ||
               visit.differs(expected);
    });
}

// Draft 4 has the exclusive limits as a switch beside the usual ones.
void addMinimum(const Keyword& keyword) {
    if (keyword.value.IsBool())
        return;
    const Value* const exclusive = keyword.beside("exclusiveMinimum");
    if (exclusive && exclusive->IsTrue())
        addLimit(keyword, "more than", [](int order) { return order > 0; });
    else
        addLimit(keyword, "at least", [](int order) { return order >= 0; });
}

void addMaximum(const Keyword& keyword) {
    if (keyword.value.IsBool())
        return;
    const Value* const exclusive = keyword.beside("exclusiveMaximum");
    if (exclusive && exclusive->IsTrue())
        addLimit(keyword, "less than", [](int order) { return order < 0; });
    else
        addLimit(keyword, "at most", [](int order) { return order <= 0; });
}

void addExclusiveMinimum(const Keyword& keyword) {
    if (!keyword.value.IsBool())
        addLimit(keyword, "more than", [](int order) { return order > 0; });
}

void addExclusiveMaximum(const Keyword& keyword) {
    if (!keyword.value.IsBool())
        addLimit(keyword, "less than", [](int order) { return order < 0; });
}

void addMultipleOf(const Keyword& keyword) {
    if (!keyword.value.IsNumber() || !(keyword.value.GetDouble() > 0))
        keyword.fail("expected a number above 0.");
    keyword.add([&divisor = keyword.value,
                 expected = "a multiple of " + canonicalText(keyword.value)](const Visit& visit) {
        return !visit.value.IsNumber() || isMultiple(visit.value, divisor) ||
               visit.differs(expected);
    });
}

std::size_t characters(const Visit& visit) {
    const std::string text = textOf(visit.value);
    visit.evaluation.spend(text.size());
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xc0) != 0x80; }));
}

// minLength and the like.
void addSize(const Keyword& keyword) {
    if (!keyword.value.IsNumber() || keyword.value.GetDouble() < 0 || !isWholeNumber(keyword.value))
        keyword.fail("expected a whole number from 0.");
    const std::string_view name = keyword.name;
    const bool isLeast = name.starts_with("min");
    const char* const what = name.ends_with("Length")  ? " characters"
                             : name.ends_with("Items") ? " elements"
                                                       : " members";
    const rapidjson::Type type = name.ends_with("Length")  ? rapidjson::kStringType
                                 : name.ends_with("Items") ? rapidjson::kArrayType
                                                           : rapidjson::kObjectType;
    keyword.add([=, &limit = keyword.value,
                 expected = (isLeast ? "at least " : "at most ") + canonicalText(keyword.value) +
                            what](const Visit& visit) {
        if (visit.value.GetType() != type)
            return true;
        const std::size_t count = visit.value.IsString()  ? characters(visit)
                                  : visit.value.IsArray() ? visit.value.Size()
                                                          : visit.value.MemberCount();
        const int order = compareNumbers(Value(static_cast<std::uint64_t>(count)), limit);
        return (isLeast ? order >= 0 : order <= 0) ||
               visit.differs(expected, std::to_string(count));
    });
}

// In the order in which findings of one place are told.
constexpr std::pair<const char*, void (*)(const Keyword&)> keywords[] = {
    {"type", addType},
    {"enum", addEnum},
    {"const", addConst},
    {"pattern", addPattern},
    {"format", addFormat},
    {"minimum", addMinimum},
    {"maximum", addMaximum},
    {"exclusiveMinimum", addExclusiveMinimum},
    {"exclusiveMaximum", addExclusiveMaximum},
    {"multipleOf", addMultipleOf},
    {"minLength", addSize},
    {"maxLength", addSize},
    {"minItems", addSize},
    {"maxItems", addSize},
    {"minProperties", addSize},
    {"maxProperties", addSize},
    {"required", addRequired},
    {"properties", addMembers},
    {"patternProperties", addPatternMembers},
    {"additionalProperties", addAdditionalMembers},
    {"propertyNames", addPropertyNames},
    {"dependencies", addDependencies},
    {"uniqueItems", addUniqueItems},
    {"contains", addContains},
    {"items", addItems},
    {"allOf", addAllOf},
    {"anyOf", addAnyOf},
    {"oneOf", addOneOf},
    {"not", addNot},
    {"if", addIf}};

}  // namespace

void addKeywords(SchemaGraph& graph, SchemaNode& node) {
    for (const auto& [name, add] : keywords) {
        const auto member = node.json->FindMember(name);
        if (member != node.json->MemberEnd())
            add({graph, node, name, member->value});
    }
}

}  // namespace tarvo::engine::validation
