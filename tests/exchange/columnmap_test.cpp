// Columns that a user sends to other attributes, and plans that need no second look at the values.
#include "exchange/table/columnmap.h"
#include "exchange/import/filesurvey.h"
#include "exchange/import/importplan.h"
#include "exchange/table/summary.h"
#include "tests/exchange/lasbuilder.h"
#include "tests/exchange/sourcetest.h"

#include <cmath>
#include <limits>

namespace {

using namespace tarvo;
using namespace tarvo::exchange;
using namespace tarvo::exchange::tests;

class ColumnMaps : public SourceTest {
protected:
    PointSources map(const std::string& bytes, const std::vector<const char*>& texts) {
        ColumnMap choices;
        for (const char* text : texts) {
            choices.push_back(choiceFromText(text));
        }
        return mapped({openSource(folder.write("a", bytes))}, choices);
    }
    // The failure's text; empty: there is none.
    std::string refusal(const std::string& bytes, const std::vector<const char*>& texts) {
        try {
            map(bytes, texts);
        } catch (const core::Failure& failure) {
            return failure.what();
        }
        return {};
    }
    const std::string numbers = "1.5 2 3 7 11\n4 5.25 6 8 12\n";
};

TEST_F(ColumnMaps, ColumnsGoWhereTheUserWantsThem) {
    const PointSources sources = map(
        numbers, {"column 4=intensity", "column 1=tarvo.xyz[1]", "column 2=x", "text.column_5=-"});
    const Table table = readAll(*sources[0]);
    const Table expected = {{"tarvo.xyz[1]", {1.5, 4}},
                            {"tarvo.xyz[0]", {2, 5.25}},
                            {"tarvo.xyz[2]", {3, 6}},
                            {"tarvo.intensity", {7, 8}}};
    EXPECT_EQ(table, expected);
    EXPECT_EQ(sources[0]->columns()[0].length, 3u);
    const PointSources own = map(numbers, {"column 4=Own.pair[1]", "column 5=Own.pair[0]"});
    EXPECT_EQ(own[0]->columns()[3].length, 2u);
    const ImportPlan plan = planImport(own, "tarvo.xyz", {});
    EXPECT_EQ(plan.attributes.at("Own.pair").definition.length, 2u);
    EXPECT_EQ(plan.attributes.at("Own.pair").definition.title, "column_4");
}

TEST_F(ColumnMaps, WhatCanNotBeMeantIsRefused) {
    EXPECT_EQ(refusal(numbers, {"column 4=own.a"}), "");
    const std::pair<std::vector<const char*>, const char*> wrong[] = {
        {{"column 4=own.a", "column 5=own.a"}, "would both go to \"own.a\""},
        {{"column 4=tarvo.xyz[0]"}, "would both go to \"tarvo.xyz[0]\""},
        {{"column 4=1st"}, "is no name of an attribute"},
        {{"column 4=own value"}, "is no name of an attribute"},
        {{"column 4=own[9999]"}, "element number above"},
        {{"column 4=own.a", "text.column_4=-"}, "is mapped twice"},
        {{"column 4=own.a", "column 4=own.b"}, "is mapped twice"},
        {{"column 6=own.a"}, "No file has the column \"column 6\""},
        {{"column 1=-", "column 2=-", "column 3=-", "column 4=-", "column 5=-"}, "are left out"},
    };
    for (const auto& [texts, words] : wrong) {
        const std::string found = refusal(numbers, texts);
        EXPECT_NE(found.find(words), std::string::npos) << found;
    }
    EXPECT_THROW(choiceFromText("column 4"), core::Failure);
    EXPECT_THROW(choiceFromText("=a"), core::Failure);
    EXPECT_EQ(choiceText(choiceFromText("a=b=c.d")), "a=b=c.d");
    // Fractions are no ids, but only who takes them is told.
    const PointSources ids = map(numbers, {"column 1=tarvo.id", "column 5=x"});
    EXPECT_TRUE(ids[0]->columns()[0].fault);
    // Columns of one name are told apart by where they go by themselves.
    const std::string twice =
        "ply\nformat ascii 1.0\nelement vertex 1\nproperty float x\n"
        "property float y\nproperty float z\nproperty int Foo\n"
        "property int Foo\nend_header\n1 2 3 4 5\n";
    EXPECT_NE(refusal(twice, {"Foo=own.a"}).find("several columns"), std::string::npos);
    EXPECT_EQ(readAll(*map(twice, {"ply.foo_2=own.a"})[0]).at("own.a"), std::vector<double>{5});
}

TEST_F(ColumnMaps, SwappedCoordinatesKeepTheirGrids) {
    LasBuilder builder;
    builder.offset[1] = 1000;
    builder.addPoint(100, 200, 300);
    const std::string las = folder.write("a.las", builder.build());
    const PointSources swapped = mapped({openSource(las)}, {{"X", "y"}, {"Y", "x"}});
    ASSERT_EQ(swapped[0]->coordinateAxes().size(), 3u);
    EXPECT_EQ(swapped[0]->coordinateAxes()[0].offset(), 1000);
    EXPECT_EQ(swapped[0]->coordinateAxes()[1].offset(), 0);
    EXPECT_EQ(readAll(*swapped[0]).at("tarvo.xyz[0]"), std::vector<double>{1002});
    const PointSources other = mapped({openSource(las)}, {{"X", "own.x"}, {"Intensity", "x"}});
    EXPECT_TRUE(other[0]->coordinateAxes().empty());
    EXPECT_EQ(planImport(swapped, "tarvo.xyz", {}).extent.size(), 3u);
}

TEST_F(ColumnMaps, ASurveyIsSureOnlyOfWhatTheDefinitionHolds) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const auto holds = [](double resolution, double least, double most,
                          const std::vector<double>& values, double noValue) {
        qrb::pointcloud::PointAttribute definition;
        definition.resolution = resolution;
        definition.minimumValue = least;
        definition.maximumValue = most;
        Column column;
        column.hasInvalid = !std::isnan(noValue);
        column.invalidValue = noValue;
        ColumnSummary summary;
        summary.add(values.data(), values.size());
        return isSureToHold(definition, column, summary);
    };
    EXPECT_TRUE(holds(0.01, -10, 10, {1.25, -10, 10}, nan));
    EXPECT_TRUE(holds(0.005, -10, 10, {1.25}, 99));
    EXPECT_TRUE(holds(1, 0, 255, {0, 255}, nan));
    EXPECT_TRUE(holds(0, -10, 10, {1.0 / 3}, nan));
    EXPECT_FALSE(holds(0.1, -10, 10, {1.25}, nan));
    EXPECT_FALSE(holds(0.02, -10, 10, {1.01}, nan));
    EXPECT_FALSE(holds(0.01, 0.005, 10, {1.25}, nan));
    EXPECT_FALSE(holds(0.01, -10, 10, {10.01}, nan));
    EXPECT_FALSE(holds(1, 0, 255, {0.5}, nan));
    EXPECT_FALSE(holds(1, 0, 255, {1, 7}, 7));
    EXPECT_FALSE(holds(0, -10, 10, {nan, 1}, nan));
    EXPECT_FALSE(holds(0, -10, infinity, {infinity, 1}, nan));
}

}  // namespace
