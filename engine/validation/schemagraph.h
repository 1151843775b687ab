// A JSON schema made ready: its keywords as checks, its references as edges of a graph.
#pragma once

#include "engine/validation/evaluation.h"
#include "engine/validation/pattern.h"

#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tarvo::engine::validation {

struct SchemaNode {
    const Value* json = nullptr;
    std::string place;  // JSON pointer
    std::vector<std::pair<const char*, Check>> checks;
    std::vector<SchemaNode*> sameValue;  // schemas that the checks apply to the value itself
    bool isShared = false;               // referred to more than once
    int height = 0;  // with what hangs on sameValue; 0: not known, -1: being measured
};

class SchemaGraph {
public:
    // json must outlive the graph. Throws Failure(Argument) with the JSON pointer of the place for
    // faults, for references outside of the schema (nothing is ever loaded) and those that come
    // round for the same value, for keywords of drafts after 7, and for schemas that are too large.
    explicit SchemaGraph(const Value& json);
    SchemaGraph(const SchemaGraph&) = delete;
    SchemaGraph& operator=(const SchemaGraph&) = delete;

    const SchemaNode& root() const { return *m_rootNode; }
    // The formats that are named but not checked.
    const std::set<std::string>& unknownFormats() const { return m_unknownFormats; }

    // For the keywords (keyword.h), which look at a schema with these.
    [[noreturn]] static void fail(const std::string& place, const std::string& reason,
                                  const std::string& hint = {});
    // The schema at a place, behind its references; its keywords may follow later. keyword: under
    // which it stands.
    SchemaNode& schemaAt(const Value& json, const std::string& place, const char* keyword);
    std::shared_ptr<const Pattern> pattern(const std::string& expression, const std::string& place);
    void addUnknownFormat(const std::string& name) { m_unknownFormats.insert(name); }

private:
    const Value& target(const Value& reference, const std::string& place);
    static void measure(SchemaNode& node, std::size_t depth);

    const Value& m_json;
    std::deque<SchemaNode> m_nodes;  // the first ones have their keywords
    std::unordered_map<const Value*, SchemaNode*> m_byJson;
    std::map<std::string, std::shared_ptr<const Pattern>> m_patterns;
    std::size_t m_patternSize = 0;
    std::size_t m_lookedAt = 0;  // members, on the ways of references
    std::set<std::string> m_unknownFormats;
    const SchemaNode* m_rootNode = nullptr;
};

// Makes the checks of a schema's keywords (keyword.h); json: an object without "$ref".
void addKeywords(SchemaGraph& graph, SchemaNode& node);

}  // namespace tarvo::engine::validation
