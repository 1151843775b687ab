#include "engine/validation/evaluation.h"

#include "engine/validation/schemagraph.h"

#include <algorithm>

namespace tarvo::engine::validation {

namespace {

constexpr std::uint64_t maximumSteps = 20'000'000'000;
// Of checks within checks: each takes stack.
constexpr std::size_t maximumNesting = 1000;

}  // namespace

void FindingList::add(const Place& place, Finding finding) {
    std::vector<const Place*> path;
    for (const Place* part = &place; part->parent; part = part->parent)
        path.push_back(part);
    std::vector<std::size_t> position;
    for (auto part = path.rbegin(); part != path.rend(); ++part) {
        const Value* const name = (*part)->name;
        finding.pointer =
            childPointer(finding.pointer, name ? textOf(*name) : std::to_string((*part)->index));
        position.push_back((*part)->index);
    }
    if (!m_seen.emplace(finding.pointer, finding.text).second)
        return;
    if (m_findings.size() == m_most)
        throw EnoughFindings();
    m_findings.emplace_back(std::move(position), std::move(finding));
}

std::vector<Finding> FindingList::take() {
    std::stable_sort(m_findings.begin(), m_findings.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<Finding> result;
    for (auto& [position, finding] : m_findings)
        result.push_back(std::move(finding));
    return result;
}

void Evaluation::spend(std::uint64_t steps) {
    m_steps += steps;
    if (m_steps > maximumSteps)
        throw Failure(ErrorCode::Argument, "Checking the value against its schema takes too long.",
                      "Make the schema simpler or the value smaller.");
}

bool Evaluation::check(const SchemaNode& schema, const Value& value, const Place& place,
                       FindingList* list) {
    spend(500);
    if (!schema.isShared)
        return checkKeywords(schema, value, place, list);
    const std::pair key(&schema, &value);
    const auto known = m_answers.find(key);
    if (known != m_answers.end() && (known->second || !list || list->told.count(key) > 0))
        return known->second;
    spend(2000);
    const bool pass = checkKeywords(schema, value, place, list);
    m_answers[key] = pass;
    if (!pass && list)
        list->told.insert(key);
    return pass;
}

bool Evaluation::checkKeywords(const SchemaNode& schema, const Value& value, const Place& place,
                               FindingList* list) {
    if (m_depth == maximumNesting)
        throw Failure(ErrorCode::Argument,
                      "The value nests too deep for its schema: it nests more than " +
                          std::to_string(maximumNesting) + " checks.");
    // Also where a check is left by an exception.
    const struct Level {
        explicit Level(std::size_t& counted) : depth(counted) { ++depth; }
        ~Level() { --depth; }
        std::size_t& depth;
    } level(m_depth);
    bool pass = true;
    for (const auto& [keyword, check] : schema.checks) {
        pass = check({*this, value, place, list, keyword}) && pass;
        if (!pass && !list)
            break;
    }
    return pass;
}

bool Visit::differs(const std::string& expected) const {
    return list && differs(expected, describe(value));
}

bool Visit::differs(const std::string& expected, const std::string& found) const {
    if (list)
        list->add(place,
                  {"", keyword, expected, found, "expected " + expected + ", found " + found});
    return false;
}

bool Visit::failsAt(const Place& at, const std::string& text) const {
    if (list)
        list->add(at, {"", keyword, "", "", text});
    return false;
}

}  // namespace tarvo::engine::validation
