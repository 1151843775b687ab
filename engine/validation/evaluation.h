// One check of a value against a schema: what has been found until now, and what it has cost.
#pragma once

#include "engine/validation/jsonschema.h"
#include "engine/validation/jsonvalue.h"

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tarvo::engine::validation {

struct SchemaNode;

// Where in the value: a list from the innermost place to the root, kept on the stack.
struct Place {
    const Place* parent = nullptr;
    std::size_t index = 0;        // of the member or element
    const Value* name = nullptr;  // of the member
};

// Thrown when there are more findings than anybody reads.
struct EnoughFindings {};

// Findings, each once.
class FindingList {
public:
    explicit FindingList(std::size_t most) : m_most(most) {}

    // Throws EnoughFindings when there are too many.
    void add(const Place& place, Finding finding);
    // In the order of the value.
    std::vector<Finding> take();

    // The parts of the value that don't satisfy a schema and whose findings stand here.
    std::set<std::pair<const SchemaNode*, const Value*>> told;

private:
    const std::size_t m_most;
    std::vector<std::pair<std::vector<std::size_t>, Finding>> m_findings;
    std::set<std::pair<std::string, std::string>> m_seen;
};

class Evaluation {
public:
    // list: takes what is wrong; null where only the answer counts.
    bool check(const SchemaNode& schema, const Value& value, const Place& place, FindingList* list);
    // Throws Failure(Argument) when it becomes too much. steps: roughly nanoseconds.
    void spend(std::uint64_t steps);

private:
    struct PairHash {
        std::size_t operator()(const std::pair<const SchemaNode*, const Value*>& pair) const {
            return std::hash<const void*>()(pair.first) * 31 ^
                   std::hash<const void*>()(pair.second);
        }
    };

    bool checkKeywords(const SchemaNode& schema, const Value& value, const Place& place,
                       FindingList* list);

    std::uint64_t m_steps = 0;
    std::size_t m_depth = 0;
    // The answers of schemas that are referred to more than once: else the ways through a schema
    // could be as many as 2 to the power of its size.
    std::unordered_map<std::pair<const SchemaNode*, const Value*>, bool, PairHash> m_answers;
};

// A value as a keyword's check sees it.
struct Visit {
    Evaluation& evaluation;
    const Value& value;
    const Place& place;
    FindingList* list;
    const char* keyword;

    bool check(const SchemaNode& schema) const {
        return evaluation.check(schema, value, place, list);
    }
    bool check(const SchemaNode& schema, const Value& part, const Place& at) const {
        return evaluation.check(schema, part, at, list);
    }
    // Without findings.
    bool satisfies(const SchemaNode& schema) const {
        return evaluation.check(schema, value, place, nullptr);
    }
    // These tell what is wrong where that is wanted, and return false.
    bool differs(const std::string& expected) const;
    bool differs(const std::string& expected, const std::string& found) const;
    bool fails(const std::string& text) const { return failsAt(place, text); }
    bool failsAt(const Place& at, const std::string& text) const;
};

// Whether the value passes.
using Check = std::function<bool(const Visit&)>;

}  // namespace tarvo::engine::validation
