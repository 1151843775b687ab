// What each keyword of a JSON schema asks for.
#include "engine/validation/format.h"
#include "engine/validation/schemagraph.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <set>
#include <utility>

namespace tarvo::engine::validation {

namespace {

// A keyword in the schema that it stands in.
struct Keyword {
    SchemaGraph& graph;
    SchemaNode& node;
    const char* name;
    const Value& value;

    std::string place() const { return childPointer(node.place, name); }
    [[noreturn]] void fail(const std::string& reason) const { SchemaGraph::fail(place(), reason); }
    // Another keyword of the same schema, or null.
    const Value* beside(const char* other) const {
        const auto found = node.json->FindMember(other);
        return found == node.json->MemberEnd() ? nullptr : &found->value;
    }
    SchemaNode& schema() const { return graph.schemaAt(value, place(), name); }
    SchemaNode& schema(const Value& part, std::string_view partName) const {
        return graph.schemaAt(part, childPointer(place(), partName), name);
    }
    // A schema for the value itself.
    SchemaNode& ofSameValue(SchemaNode& schema) const {
        node.sameValue.push_back(&schema);
        return schema;
    }
    void add(Check check) const { node.checks.emplace_back(name, std::move(check)); }
};

using Schemas = std::vector<const SchemaNode*>;

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

bool matches(const Visit& visit, const Pattern& pattern, const std::string& text) {
    visit.evaluation.spend(text.size() * pattern.size() * 20);
    return pattern.search(text);
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

// The names of an object's members.
std::set<std::string_view> memberNames(const Visit& visit) {
    std::set<std::string_view> names;
    for (const auto& member : visit.value.GetObject())
        names.emplace(member.name.GetString(), member.name.GetStringLength());
    visit.evaluation.spend(names.size() * 100);
    return names;
}

void addRequired(const Keyword& keyword) {
    // Draft 3 has a switch here, which later drafts don't know.
    keyword.add([names = textsOf(keyword.value, keyword.place())](const Visit& visit) {
        if (!visit.value.IsObject())
            return true;
        const std::set<std::string_view> present = memberNames(visit);
        bool pass = true;
        for (const std::string& name : names)
            if (!present.count(name))
                pass = visit.fails("the member " + quotedText(name) + " is missing");
        return pass;
    });
}

// "properties", "patternProperties" and "additionalProperties", which depend on each other.
struct Members {
    std::map<std::string, const SchemaNode*> byName;
    std::vector<std::pair<std::shared_ptr<const Pattern>, const SchemaNode*>> byPattern;
    const SchemaNode* additional = nullptr;

    bool check(const Visit& visit, const Value& name, const Value& member,
               const Place& place) const {
        const std::string text = textOf(name);
        const auto known = byName.find(text);
        bool isKnown = known != byName.end();
        bool pass = !isKnown || visit.check(*known->second, member, place);
        for (const auto& [pattern, schema] : byPattern) {
            if (!matches(visit, *pattern, text))
                continue;
            isKnown = true;
            pass = visit.check(*schema, member, place) && pass;
        }
        if (!isKnown && additional)
            pass = visit.check(*additional, member, place) && pass;
        return pass;
    }
};

// Calls the function with each member and its place; for the answer only, up to the first fault.
template <typename Passes>
bool eachMember(const Visit& visit, Passes passes) {
    bool pass = true;
    std::size_t index = 0;
    if (visit.value.IsObject())
        for (const auto& member : visit.value.GetObject()) {
            visit.evaluation.spend(100);
            const Place place{&visit.place, index++, &member.name};
            pass = passes(member.name, member.value, place) && pass;
            if (!pass && !visit.list)
                break;
        }
    return pass;
}

const Value& objectOf(const Keyword& keyword) {
    if (!keyword.value.IsObject())
        keyword.fail("expected an object of schemas.");
    return keyword.value;
}

void addMembers(const Keyword& first) {
    const auto members = std::make_shared<Members>();
    const auto beside = [&](const char* name) {
        const Value* const value = first.beside(name);
        return value ? std::make_unique<Keyword>(Keyword{first.graph, first.node, name, *value})
                     : nullptr;
    };
    if (const auto keyword = beside("properties"))
        for (const auto& member : objectOf(*keyword).GetObject())
            members->byName.emplace(textOf(member.name),
                                    &keyword->schema(member.value, textOf(member.name)));
    if (const auto keyword = beside("patternProperties"))
        for (const auto& member : objectOf(*keyword).GetObject())
            members->byPattern.emplace_back(
                keyword->graph.pattern(textOf(member.name), keyword->place()),
                &keyword->schema(member.value, textOf(member.name)));
    if (const auto keyword = beside("additionalProperties"))
        members->additional = &keyword->schema();
    first.add([members](const Visit& visit) {
        return eachMember(visit, [&](const Value& name, const Value& member, const Place& place) {
            return members->check(visit, name, member, place);
        });
    });
}

// Where the keywords before it are there, these have made the check.
void addPatternMembers(const Keyword& keyword) {
    if (!keyword.beside("properties"))
        addMembers(keyword);
}

void addAdditionalMembers(const Keyword& keyword) {
    if (!keyword.beside("patternProperties"))
        addPatternMembers(keyword);
}

void addPropertyNames(const Keyword& keyword) {
    keyword.add([&schema = keyword.schema()](const Visit& visit) {
        return eachMember(visit, [&](const Value& name, const Value&, const Place& place) {
            if (visit.evaluation.check(schema, name, place, nullptr))
                return true;
            FindingList faults(1);
            try {
                (void)visit.evaluation.check(schema, name, {}, &faults);
            } catch (const EnoughFindings&) {
                // The first is told.
            }
            const std::vector<Finding> found = faults.take();
            return visit.failsAt(place, "the name of the member is not allowed" +
                                            (found.empty() ? "" : ": " + found[0].text));
        });
    });
}

void addDependencies(const Keyword& keyword) {
    if (!keyword.value.IsObject())
        keyword.fail("expected an object.");
    std::vector<std::pair<std::string, std::vector<std::string>>> names;
    std::vector<std::pair<std::string, const SchemaNode*>> schemas;
    for (const auto& member : keyword.value.GetObject()) {
        const std::string name = textOf(member.name);
        if (member.value.IsArray())
            names.emplace_back(name, textsOf(member.value, childPointer(keyword.place(), name)));
        else
            schemas.emplace_back(name, &keyword.ofSameValue(keyword.schema(member.value, name)));
    }
    keyword.add([=](const Visit& visit) {
        if (!visit.value.IsObject())
            return true;
        const std::set<std::string_view> present = memberNames(visit);
        bool pass = true;
        for (const auto& [name, others] : names)
            for (const std::string& other : others)
                if (present.count(name) && !present.count(other))
                    pass = visit.fails("the member " + quotedText(other) +
                                       " is missing, which another member needs");
        for (const auto& [name, schema] : schemas)
            if (present.count(name))
                pass = visit.check(*schema) && pass;
        return pass;
    });
}

void addUniqueItems(const Keyword& keyword) {
    if (!keyword.value.IsBool())
        keyword.fail("expected true or false.");
    if (!keyword.value.GetBool())
        return;
    keyword.add([](const Visit& visit) {
        if (!visit.value.IsArray())
            return true;
        bool pass = true;
        std::map<std::string, std::size_t> seen;
        std::size_t index = 0;
        for (const Value& element : visit.value.GetArray()) {
            std::string text = canonicalText(element);
            visit.evaluation.spend(text.size() * 10 + 200);
            const auto [first, isNew] = seen.emplace(std::move(text), index);
            if (!isNew) {
                pass = visit.failsAt({&visit.place, index},
                                     "is the same as element " + std::to_string(first->second));
                if (!visit.list)
                    break;
            }
            ++index;
        }
        return pass;
    });
}

void addContains(const Keyword& keyword) {
    keyword.add([&schema = keyword.schema()](const Visit& visit) {
        if (!visit.value.IsArray())
            return true;
        std::size_t index = 0;
        for (const Value& element : visit.value.GetArray())
            if (visit.evaluation.check(schema, element, {&visit.place, index++}, nullptr))
                return true;
        return visit.fails("has no element like the one that the schema asks for");
    });
}

Schemas schemasOf(const Keyword& keyword) {
    Schemas schemas;
    for (rapidjson::SizeType i = 0; i < keyword.value.Size(); ++i)
        schemas.push_back(&keyword.schema(keyword.value[i], std::to_string(i)));
    return schemas;
}

// "items" and "additionalItems"
void addItems(const Keyword& keyword) {
    Schemas first;
    const SchemaNode* rest = nullptr;
    if (keyword.value.IsArray()) {
        first = schemasOf(keyword);
        if (const Value* const additional = keyword.beside("additionalItems"))
            rest = &Keyword{keyword.graph, keyword.node, "additionalItems", *additional}.schema();
    } else {
        rest = &keyword.schema();
    }
    keyword.add([=](const Visit& visit) {
        if (!visit.value.IsArray())
            return true;
        bool pass = true;
        std::size_t index = 0;
        for (const Value& element : visit.value.GetArray()) {
            const SchemaNode* const schema = index < first.size() ? first[index] : rest;
            if (!schema || (!pass && !visit.list))
                break;
            pass = visit.check(*schema, element, {&visit.place, index++}) && pass;
        }
        return pass;
    });
}

Schemas alternatives(const Keyword& keyword) {
    if (!keyword.value.IsArray() || keyword.value.Empty())
        keyword.fail("expected an array of schemas.");
    Schemas schemas;
    for (rapidjson::SizeType i = 0; i < keyword.value.Size(); ++i)
        schemas.push_back(
            &keyword.ofSameValue(keyword.schema(keyword.value[i], std::to_string(i))));
    return schemas;
}

void addAllOf(const Keyword& keyword) {
    keyword.add([schemas = alternatives(keyword)](const Visit& visit) {
        bool pass = true;
        for (const SchemaNode* schema : schemas)
            if (pass || visit.list)
                pass = visit.check(*schema) && pass;
        return pass;
    });
}

// Tells what is wrong by each alternative; none is satisfied.
bool satisfiesNone(const Visit& visit, const Schemas& schemas) {
    for (const SchemaNode* schema : schemas)
        if (visit.list)
            (void)visit.check(*schema);
    return visit.fails("satisfies none of the alternatives");
}

void addAnyOf(const Keyword& keyword) {
    keyword.add([schemas = alternatives(keyword)](const Visit& visit) {
        for (const SchemaNode* schema : schemas)
            if (visit.satisfies(*schema))
                return true;
        return satisfiesNone(visit, schemas);
    });
}

void addOneOf(const Keyword& keyword) {
    keyword.add([schemas = alternatives(keyword)](const Visit& visit) {
        int satisfied = 0;
        for (const SchemaNode* schema : schemas)
            if (visit.satisfies(*schema) && ++satisfied > 1)
                return visit.fails("satisfies more than one of the alternatives");
        return satisfied == 1 || satisfiesNone(visit, schemas);
    });
}

void addNot(const Keyword& keyword) {
    keyword.add([&schema = keyword.ofSameValue(keyword.schema())](const Visit& visit) {
        return !visit.satisfies(schema) ||
               visit.fails("satisfies what the schema excludes with \"not\"");
    });
}

void addIf(const Keyword& keyword) {
    const auto branch = [&](const char* name) -> const SchemaNode* {
        const Value* const value = keyword.beside(name);
        return value ? &keyword.ofSameValue(
                           Keyword{keyword.graph, keyword.node, name, *value}.schema())
                     : nullptr;
    };
    const SchemaNode* const condition = &keyword.ofSameValue(keyword.schema());
    const SchemaNode* const then = branch("then");
    const SchemaNode* const otherwise = branch("else");
    keyword.add([=](const Visit& visit) {
        const SchemaNode* const schema = visit.satisfies(*condition) ? then : otherwise;
        return !schema || visit.check(*schema);
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
