// What the keywords of JSON schemas have in common, and those about parts and combinations
// (partkeywords.cpp).
#pragma once

#include "engine/validation/schemagraph.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvo::engine::validation {

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

// The texts of an array; throws Failure(Argument) for anything else.
std::vector<std::string> textsOf(const Value& list, const std::string& place);
// Whether a text matches, and what that costs.
bool matches(const Visit& visit, const Pattern& pattern, const std::string& text);

void addRequired(const Keyword& keyword);
void addMembers(const Keyword& keyword);
void addPatternMembers(const Keyword& keyword);
void addAdditionalMembers(const Keyword& keyword);
void addPropertyNames(const Keyword& keyword);
void addDependencies(const Keyword& keyword);
void addUniqueItems(const Keyword& keyword);
void addContains(const Keyword& keyword);
void addItems(const Keyword& keyword);
void addAllOf(const Keyword& keyword);
void addAnyOf(const Keyword& keyword);
void addOneOf(const Keyword& keyword);
void addNot(const Keyword& keyword);
void addIf(const Keyword& keyword);

}  // namespace tarvo::engine::validation
