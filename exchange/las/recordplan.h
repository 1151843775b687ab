// Which attribute of a database goes where in the point records of a LAS file.
#pragma once

#include "exchange/las/dimensions.h"
#include "exchange/las/survey.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::exchange::las {

struct PlanOptions {
    std::optional<int> pointFormat;  // 0 to 10; none: the one that holds most as it is
    std::optional<double> scale;     // of the coordinates; none: by which none changes
    // The reference system has no well-known text, which the point formats from 6 on ask for.
    bool prefersOldFormats = false;
};

struct PlannedField {
    std::size_t column = 0;  // of the source
    Field field;
};

struct RecordPlan {
    int pointFormat = 0;
    std::uint16_t recordLength = 0;
    std::array<double, 3> scale{};
    std::array<double, 3> offset{};
    bool rounds = false;  // see Axis
    std::vector<PlannedField> fields;
    std::vector<std::uint8_t> extraBytes;  // their description; empty: there are none
    std::string ownRecord;                 // see ownrecord.h
};

// Chooses fields that hold every value; what no field of the point format holds goes into extra
// bytes. Throws Failure without three coordinates, where they have no place, and where the
// records become too long.
RecordPlan planRecords(const std::vector<Column>& columns, const Survey& survey,
                       const PlanOptions& options);

}  // namespace tarvo::exchange::las
