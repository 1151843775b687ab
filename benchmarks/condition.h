// Conditions on points in both languages, chosen by looking at the points so that they pass the
// wanted part of any cloud.
#pragma once

#include "benchmarks/columns.h"

#include <string>
#include <vector>

namespace bench {

struct Condition {
    std::string name;
    std::string filter;  // ours
    std::string sql;
};

// No condition, boxes, a condition that no order in space helps, and one that most points pass.
std::vector<Condition> chooseConditions(const StoredPoints& points);

// From one process to another: three lines each.
std::string textOf(const std::vector<Condition>& conditions);
std::vector<Condition> conditionsOf(const std::string& text);

}  // namespace bench
