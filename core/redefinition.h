// What it does to the values of points when their attribute gets another definition, told before
// it is done.
#pragma once

#include "numbers/gridconversion.h"
#include "qrb/pointcloud.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tarvo::core {

struct ValueChanges {
    numbers::FateCounts fates;  // of the values of elements that stay
    std::uint64_t dropped = 0;  // of elements that go
    std::uint64_t added = 0;    // of elements that come; they take nothing away
    std::uint64_t points = 0;   // that have a value which changes

    std::uint64_t changed() const { return fates.changed() + dropped; }
};

// Counts what putting the definition in the place of the stored one changes, as the database is
// now, the pending transaction with it. Reads the values of the attribute unless the statistics of
// the index prove that all are kept. Nothing where it can't be told, because a definition is none
// that this program understands. progress gets per cent; what it throws ends the counting, as
// qrb::Error does.
std::optional<ValueChanges> countChanges(const qrb::Pointcloud& database,
                                         const qrb::pointcloud::PointAttribute& stored,
                                         const qrb::pointcloud::PointAttribute& definition,
                                         const qrb::pointcloud::Progress& progress = {});

// One sentence; empty: no value changes.
std::string describe(const ValueChanges& changes, const qrb::pointcloud::PointAttribute& stored,
                     const qrb::pointcloud::PointAttribute& definition);

// What putting the definition may do to values, without a look at them; empty: nothing.
std::string conversionHint(const qrb::pointcloud::PointAttribute& stored,
                           const qrb::pointcloud::PointAttribute& definition);

}  // namespace tarvo::core
