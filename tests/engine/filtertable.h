// Attributes of every kind for the filter's tests, and how points are selected among their columns.
#pragma once

#include "engine/base/instructions.h"
#include "engine/codec/bitpack.h"
#include "engine/filter/filter.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <list>
#include <string>
#include <vector>

namespace tarvo::engine::filter::testing {

using schema::AttributeRecord;
using schema::AttributeTable;
using schema::Column;
using schema::Grid;
using Wide = Grid::Wide;

inline constexpr double noInvalid = std::numeric_limits<double>::quiet_NaN();

inline void addAttribute(AttributeTable& table, const std::string& name, double resolution,
                         double minimum, double maximum, double invalid = noInvalid,
                         std::uint32_t length = 1) {
    AttributeRecord record;
    record.name = name;
    record.length = length;
    record.resolution = resolution;
    record.minimumValue = minimum;
    record.maximumValue = maximum;
    record.defaultValue = minimum;
    record.invalidValue = invalid;
    table.all().emplace_back(record, static_cast<std::uint32_t>(table.size()));
}

inline AttributeTable makeTable() {
    AttributeTable table;
    addAttribute(table, "a", 1, 0, 255);
    addAttribute(table, "b", 1, -1000, 1000, -2000);
    addAttribute(table, "c", 0.01, -500, 500, -500);
    addAttribute(table, "d", 0.3, 0.1, 10000, -1);
    addAttribute(table, "e", 0, -1e6, 1e6);
    addAttribute(table, "f", 1, 0, 1152921504606846976.0);
    addAttribute(table, "g", 1, 0, 18446744073709551616.0);
    addAttribute(table, "h", 1, 1, 20, 7);
    addAttribute(table, "k", 1, 0, 100, 0.5);
    addAttribute(table, "z", 0, -10, 10, 0);
    addAttribute(table, "tarvo.xyz", 0.001, -1, 1, noInvalid, 3);
    addAttribute(table, "u", 1, 0, 1.8e19, -1);
    addAttribute(table, "v", 1, 1, 10, 0);
    addAttribute(table, "w", 1, 0, 100, 1e30);
    addAttribute(table, "x", 0, -1e18, 1e18);
    addAttribute(table, "y", 0, 1, 10);
    addAttribute(table, "m", 1, -9223372036854775808.0, 9223372036854774784.0);
    addAttribute(table, "n", 1, -5, -1);
    return table;
}

// The column as a block, bit-packed or plain.
inline codec::Block blockOf(const Column& column, bool packed) {
    std::vector<codec::PackedRun> runs;
    if (!packed || codec::measureRuns(column, runs) >= column.size() * column.width())
        return codec::Block(column);
    Bytes bytes;
    codec::packRuns(column, runs, bytes);
    ByteReader reader(bytes, "the block");
    runs = codec::readRuns(reader, column.width(), column.size());
    const std::size_t at = bytes.size() - reader.left();
    return {column.width(), column.size(), std::move(runs), std::move(bytes), at};
}

// Selects among columns that are given per element of the filter, in every way that there is: from
// packed blocks and plain ones, by the instructions that all machines have and those of this one.
inline Selection selectFrom(const BoundFilter& filter, std::size_t count,
                            const std::function<const Column&(const ElementRef&)>& columnOf,
                            const Decided& decided = {}) {
    Selection selection{99};
    const bool wide = machineHasWideInstructions();
    for (const int way : {0, 1, 2, 3}) {
        wideInstructions() = wide && way % 2 == 0;
        std::list<codec::Block> blocks;
        std::vector<int> calls(filter.elements().size());
        const auto source = [&](std::size_t slot) -> const codec::Block& {
            EXPECT_EQ(++calls.at(slot), 1);
            return blocks.emplace_back(blockOf(columnOf(filter.elements()[slot]), way < 2));
        };
        Selection own;
        filter.select(count, source, own, decided);
        calls.assign(calls.size(), 0);
        EXPECT_EQ(filter.count(count, source, decided), own.size());
        if (way > 0) {
            EXPECT_EQ(own, selection) << "way " << way;
        }
        selection = own;
    }
    wideInstructions() = wide;
    return selection;
}

}  // namespace tarvo::engine::filter::testing
