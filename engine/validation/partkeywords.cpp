#include "engine/validation/keyword.h"

#include <map>
#include <memory>
#include <set>

namespace tarvo::engine::validation {

namespace {

using Schemas = std::vector<const SchemaNode*>;

// The names of an object's members.
std::set<std::string_view> memberNames(const Visit& visit) {
    std::set<std::string_view> names;
    for (const auto& member : visit.value.GetObject())
        names.emplace(member.name.GetString(), member.name.GetStringLength());
    visit.evaluation.spend(names.size() * 100);
    return names;
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

Schemas schemasOf(const Keyword& keyword) {
    Schemas schemas;
    for (rapidjson::SizeType i = 0; i < keyword.value.Size(); ++i)
        schemas.push_back(&keyword.schema(keyword.value[i], std::to_string(i)));
    return schemas;
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

// Tells what is wrong by each alternative; none is satisfied.
bool satisfiesNone(const Visit& visit, const Schemas& schemas) {
    for (const SchemaNode* schema : schemas)
        if (visit.list)
            (void)visit.check(*schema);
    return visit.fails("satisfies none of the alternatives");
}

}  // namespace

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

void addAllOf(const Keyword& keyword) {
    keyword.add([schemas = alternatives(keyword)](const Visit& visit) {
        bool pass = true;
        for (const SchemaNode* schema : schemas)
            if (pass || visit.list)
                pass = visit.check(*schema) && pass;
        return pass;
    });
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

}  // namespace tarvo::engine::validation
