#include "tests/exchange/e57builder.h"

#include "exchange/import/importplan.h"
#include "tests/exchange/sourcetest.h"

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace {

using namespace tarvo::exchange;
using namespace tarvo::exchange::tests;

class E57 : public SourceTest {};

const std::string cartesian = e57Field("cartesianX", "Float") + e57Field("cartesianY", "Float") +
                              e57Field("cartesianZ", "Float", "precision=\"single\"");

E57Scan scanOf(const std::vector<std::array<double, 3>>& points) {
    E57Scan scan;
    scan.prototype = cartesian;
    scan.recordCount = points.size();
    scan.streams.resize(3);
    for (const auto& [x, y, z] : points) {
        scan.streams[0].putBytes(x);
        scan.streams[1].putBytes(y);
        scan.streams[2].putBytes(static_cast<float>(z));
    }
    return scan;
}

// Adds a field of whole numbers.
void addWhole(E57Scan& scan, const std::string& name, std::int64_t low, std::int64_t high,
              const std::vector<std::int64_t>& values) {
    scan.prototype += e57Field(name, "Integer", e57Range(low, high));
    Bits& bits = scan.streams.emplace_back();
    const auto width = static_cast<unsigned>(
        std::bit_width(static_cast<std::uint64_t>(high) - static_cast<std::uint64_t>(low)));
    for (const std::int64_t value : values) {
        bits.put(static_cast<std::uint64_t>(value) - static_cast<std::uint64_t>(low), width);
    }
}

// Numbers of each width, in packets that end within numbers and pages.
TEST_F(E57, WholeNumbersOfEachWidthAreUnpacked) {
    const char* const seedText = std::getenv("QRB_SEED");
    const auto seed = seedText ? std::strtoul(seedText, nullptr, 10) : std::random_device()();
    SCOPED_TRACE("QRB_SEED=" + std::to_string(seed));
    std::mt19937_64 random(seed);
    constexpr std::size_t count = 700;
    E57Scan scan = scanOf(std::vector<std::array<double, 3>>(count, {1, 2, 3}));
    std::vector<std::vector<std::int64_t>> expected;
    for (unsigned width = 0; width <= 64; ++width) {
        const std::uint64_t mask = width == 0 ? 0 : ~std::uint64_t{0} >> (64 - width);
        const std::int64_t low = width == 64 ? std::numeric_limits<std::int64_t>::min()
                                             : -static_cast<std::int64_t>(mask / 3);
        auto& values = expected.emplace_back();
        for (std::size_t i = 0; i < count; ++i) {
            values.push_back(
                static_cast<std::int64_t>((random() & mask) + static_cast<std::uint64_t>(low)));
        }
        addWhole(scan, "w" + std::to_string(width), low,
                 static_cast<std::int64_t>(mask + static_cast<std::uint64_t>(low)), values);
    }
    for (const std::size_t packetBytes : {7, 61, 900}) {
        E57Builder builder;
        builder.scans = {scan};
        builder.packetBytes = packetBytes;
        builder.withOtherPackets = packetBytes != 61;
        const auto source = openSource(folder.write("a.e57", builder.build()));
        std::vector<std::vector<std::int64_t>> found(expected.size());
        while (const std::uint32_t points = source->next()) {
            for (std::size_t i = 0; i < source->columns().size(); ++i) {
                const Column& column = source->columns()[i];
                if (column.attribute.starts_with("e57.w")) {
                    ASSERT_EQ(column.type, DataType::INT64);
                    const auto* const values = static_cast<const std::int64_t*>(source->values(i));
                    auto& to = found[std::stoul(column.attribute.substr(5))];
                    to.insert(to.end(), values, values + points);
                }
            }
        }
        EXPECT_EQ(found, expected) << packetBytes;
    }
}

TEST_F(E57, ScansWithDifferentFieldsBecomeOneTable) {
    E57Builder builder;
    builder.about =
        "<guid type=\"String\"><![CDATA[{abc}]]></guid>"
        "<images2D type=\"Vector\"><vectorChild type=\"Structure\"/></images2D>";
    E57Scan first = scanOf({{1.5, 2, 3}, {4, 5, 6}, {7, 8, 9}});
    first.about =
        "<name type=\"String\"><![CDATA[East & west]]></name>"
        "<sensorVendor type=\"String\">Maker</sensorVendor>";
    addWhole(first, "colorRed", 0, 255, {0, 128, 255});
    addWhole(first, "colorGreen", 0, 255, {1, 2, 3});
    addWhole(first, "colorBlue", 0, 255, {4, 5, 6});
    addWhole(first, "isColorInvalid", 0, 1, {0, 1, 0});
    addWhole(first, "rowIndex", 0, 99, {10, 11, 12});
    addWhole(first, "returnIndex", 0, 3, {0, 1, 2});
    addWhole(first, "returnCount", 0, 3, {3, 3, 3});
    addWhole(first, "cartesianInvalidState", 0, 2, {0, 0, 2});
    E57Scan second = scanOf({{1, 0, 0}});
    // A quarter turn about Z.
    second.about =
        "<pose type=\"Structure\"><rotation type=\"Structure\">"
        "<w type=\"Float\">0.70710678118654752</w><x type=\"Float\"/><y type=\"Float\"/>"
        "<z type=\"Float\">7.0710678118654752e-01</z></rotation>"
        "<translation type=\"Structure\"><x type=\"Float\">100</x>"
        "<y type=\"Float\">200</y><z type=\"Float\">300</z></translation></pose>";
    second.prototype +=
        e57Field("intensity", "Float", "precision=\"single\"") + e57Field("note", "String") +
        e57Field("timeStamp", "ScaledInteger", e57Range(0, 1000, "scale=\"0.001\" offset=\"5\""));
    second.streams.emplace_back().putBytes(0.75f);
    second.streams.emplace_back().putBytes(std::uint16_t{0x6104});
    second.streams.emplace_back().put(250, 10);
    builder.scans = {first, second};
    Table table = read(builder.build());
    const auto expect = [&](const char* name, double a, double b, double c) {
        ASSERT_EQ(table[name].size(), 3u) << name;
        for (const auto& [value, found] :
             {std::pair(a, table[name][0]), {b, table[name][1]}, {c, table[name][2]}}) {
            EXPECT_TRUE(value == found || (std::isnan(value) && std::isnan(found)))
                << name << " " << value << " " << found;
        }
    };
    const double none = std::nan("");
    expect("tarvo.xyz[0]", 1.5, 4, 100);
    expect("tarvo.xyz[1]", 2, 5, 201);
    expect("tarvo.xyz[2]", 3, 6, 300);
    expect("e57.scan", 1, 1, 2);
    expect("tarvo.rgba[0]", 0, -1, -1);
    expect("tarvo.rgba[2]", 4, -1, -1);
    expect("e57.row", 10, 11, -1);
    expect("tarvo.target_index", 1, 2, 0);
    expect("tarvo.target_count", 3, 3, 0);
    expect("tarvo.intensity", none, none, 0.75);
    expect("tarvo.timestamp", none, none, 5.25);
    EXPECT_EQ(table.size(), 12u);
    EXPECT_NE(notes.find("1 points that"), std::string::npos) << notes;
    EXPECT_NE(notes.find("1 images"), std::string::npos) << notes;
    EXPECT_NE(notes.find("1 fields of texts"), std::string::npos) << notes;
    for (const char* word : {"East & west", "Maker", "\"{abc}\"", "\"translation\"", "300"}) {
        EXPECT_NE(metaData.find(word), std::string::npos) << metaData;
    }
    PointSources sources;
    sources.push_back(openSource(folder.file("a")));
    const ImportPlan plan = planImport(sources, "tarvo.xyz", {});
    EXPECT_EQ(plan.attributes.at("tarvo.rgba").definition.maximumValue, 255);
    EXPECT_EQ(plan.attributes.at("tarvo.rgba").definition.invalidValue, -1);
    EXPECT_EQ(plan.attributes.at("tarvo.target_index").definition.minimumValue, 1);
    EXPECT_EQ(plan.attributes.at("e57.row").definition.invalidValue, -1);
}

TEST_F(E57, SphericalCoordinatesAreConverted) {
    E57Scan scan;
    scan.prototype =
        e57Field("sphericalRange", "ScaledInteger", e57Range(0, 1 << 20, "scale=\"0.001\"")) +
        e57Field("sphericalAzimuth", "Float") + e57Field("sphericalElevation", "Float");
    scan.streams.resize(3);
    const double pi = std::acos(-1.0);
    for (const auto& [range, azimuth, elevation] :
         {std::array<double, 3>{2, 0, 0}, {3, pi / 2, 0}, {1, 1, pi / 2}, {9, 9, 9}}) {
        scan.streams[0].put(static_cast<std::uint64_t>(range * 1000), 21);
        scan.streams[1].putBytes(azimuth);
        scan.streams[2].putBytes(elevation);
    }
    scan.recordCount = 4;
    addWhole(scan, "sphericalInvalidState", 0, 2, {0, 0, 0, 1});
    E57Builder builder;
    builder.scans = {scan};
    Table table = read(builder.build());
    EXPECT_EQ(table["tarvo.xyz[0]"], (std::vector<double>{2, 0, 0}));
    EXPECT_EQ(table["tarvo.xyz[1]"], (std::vector<double>{0, 3, 0}));
    EXPECT_EQ(table["tarvo.xyz[2]"], (std::vector<double>{0, 0, 1}));
}

// What stands for full brightness becomes that of the attribute: 255, or 65535 for finer colours.
TEST_F(E57, ColoursAreScaledByTheirLimits) {
    const auto red = [&](const std::string& limits, std::int64_t high,
                         const std::vector<std::int64_t>& values) {
        E57Scan scan = scanOf({{1, 2, 3}, {4, 5, 6}});
        if (!limits.empty()) {
            scan.about =
                "<colorLimits type=\"Structure\"><colorRedMinimum type=\"Integer\"/>"
                "<colorRedMaximum type=\"Integer\">" +
                limits + "</colorRedMaximum></colorLimits>";
        }
        if (high > 0) {
            addWhole(scan, "colorRed", 0, high, values);
        } else {
            scan.prototype += e57Field("colorRed", "Float");
            scan.streams.emplace_back().putBytes(0.5);
            scan.streams.back().putBytes(1.5);
        }
        E57Builder builder;
        builder.scans = {scan};
        return read(builder.build())["tarvo.rgba[0]"];
    };
    using Values = std::vector<double>;
    EXPECT_EQ(red("", 255, {7, 255}), (Values{7, 255}));
    EXPECT_EQ(red("200", 255, {7, 200}), (Values{7, 200})) << "the brightest point";
    EXPECT_EQ(red("255", 65535, {7, 255}), (Values{7, 255})) << "bytes in larger numbers";
    EXPECT_EQ(red("", 65535, {7, 65535}), (Values{7, 65535}));
    EXPECT_EQ(red("1023", 1023, {0, 1023}), (Values{0, 65535}));
    EXPECT_EQ(red("1", 0, {}), (Values{32768, 65535}));
    EXPECT_NE(notes.find("1 colours beyond"), std::string::npos) << notes;
}

TEST_F(E57, ScaledCoordinatesKeepTheirGrid) {
    E57Scan scan;
    for (const char* name : {"cartesianX", "cartesianY", "cartesianZ"}) {
        scan.prototype += e57Field(name, "ScaledInteger",
                                   e57Range(-500000, 500000, "scale=\"0.0001\" offset=\"600000\""));
        scan.streams.emplace_back().put(500001, 20);
    }
    scan.recordCount = 1;
    E57Builder builder;
    builder.scans = {scan};
    EXPECT_EQ(read(builder.build())["tarvo.xyz[0]"], std::vector<double>{600000.0001});
    const auto axes = openSource(folder.file("a"))->coordinateAxes();
    ASSERT_EQ(axes.size(), 3u);
    EXPECT_EQ(axes[0].scale(), 0.0001);
    // Without points there are no values to make room for.
    builder.scans[0].recordCount = 0;
    PointSources sources;
    sources.push_back(openSource(folder.write("a", builder.build())));
    const ImportPlan plan = planImport(sources, "tarvo.xyz", {});
    const PointAttribute& xyz = plan.attributes.at("tarvo.xyz").definition;
    EXPECT_LT(xyz.minimumValue, xyz.maximumValue);
    EXPECT_EQ(xyz.resolution, 0.0001);
}

TEST_F(E57, WhatIsNotReadAsItStandsThereIsTold) {
    E57Builder builder;
    builder.scans = {scanOf({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}})};
    for (const std::size_t packet : {60000, 8}) {
        builder.packetBytes = packet;
        builder.scans[0].recordCount = 3;
        read(builder.build());
        EXPECT_EQ(notes, "");
        builder.scans[0].recordCount = 2;
        EXPECT_EQ(read(builder.build())["tarvo.xyz[0]"], (std::vector<double>{1, 4}));
        EXPECT_NE(notes.find("1 scan holds more records"), std::string::npos) << notes;
    }
    const auto far = [&](const std::string& type, const std::string& how, std::uint64_t first) {
        E57Scan scan;
        for (const char* name : {"cartesianX", "cartesianY", "cartesianZ"}) {
            scan.prototype += e57Field(name, type, how);
            Bits& bits = scan.streams.emplace_back();
            for (std::uint64_t i = 0; i < 5; ++i) {
                bits.put(first + i, 64);
            }
        }
        scan.recordCount = 5;
        builder.scans = {scan};
        return builder.build();
    };
    const std::string wide = e57Range(INT64_MIN, INT64_MAX);
    constexpr std::uint64_t zero = 1ull << 63;
    for (const std::string& file :
         {far("Integer", wide, zero + (1ull << 60)),
          far("ScaledInteger", wide + "scale=\"0.1\" offset=\"1e17\"", zero)}) {
        read(file);
        EXPECT_NE(notes.find("15 values are so far from 0"), std::string::npos) << notes;
    }
    read(far("ScaledInteger", wide + "scale=\"0.1\" offset=\"1e12\"", zero));
    EXPECT_EQ(notes, "");
    expectFailure(far("ScaledInteger", wide + "scale=\"0\"", zero), "has the scale 0");
}

TEST_F(E57, HostileFilesEndInOneFailure) {
    const auto with = [](const auto& change) {
        E57Builder builder;
        builder.scans = {scanOf({{1, 2, 3}, {4, 5, 6}})};
        change(builder);
        return builder.build();
    };
    const std::string good = with([](E57Builder&) {});
    ASSERT_EQ(failure(good), "");
    std::string bytes = good;
    bytes[60] ^= 1;
    expectFailure(bytes, "does not agree with its checksum");
    expectFailure(good.substr(0, good.size() - 1), "bytes of");
    expectFailure(with([](auto& b) { b.sectionId = 2; }), "kind 2");
    expectFailure(with([](auto& b) { b.scans[0].recordCount = 3; }), "do not fit");
    expectFailure(with([](auto& b) { b.scans[0].recordCount = ~0ull; }), "do not fit");
    expectFailure(with([](auto& b) { b.scans[0].streams.pop_back(); }), "2 of 3 fields");
    expectFailure(with([](auto& b) {
                      b.scans.push_back(b.scans[0]);
                      b.scans[1].recordCount = 4;
                  }),
                  "do not fit");
    expectFailure(with([](auto& b) {
                      b.scans[0].codecs =
                          "<vectorChild type=\"Structure\"><other/><inputs/></vectorChild>";
                  }),
                  "packed by the codec \"other\", which can't be read");
    expectFailure(with([](auto& b) { b.scans[0].prototype += e57Field("a", "Blob"); }), "Blob");
    expectFailure(
        with([](auto& b) { b.scans[0].prototype += e57Field("a", "Integer", e57Range(2, 1)); }),
        "maximum below");
    expectFailure(
        with([](auto& b) { b.scans[0].prototype += e57Field("a", "Integer", "minimum=\"1x\""); }),
        "\"1x\"");
    // Points that take no bits: no file is too small for any number of them.
    expectFailure(with([](auto& b) {
                      E57Scan scan;
                      for (const char* name : {"cartesianX", "cartesianY", "cartesianZ"}) {
                          scan.prototype += e57Field(name, "Integer", e57Range(1, 1));
                      }
                      scan.recordCount = 1ull << 60;
                      b.scans = {scan};
                  }),
                  "do not fit");
    // XML that grows, reaches out or nests.
    expectFailure(with([](auto& b) {
                      b.prologue =
                          "<!DOCTYPE e [<!ENTITY a SYSTEM \"file:///etc/passwd\">"
                          "<!ENTITY b \"&a;&a;&a;&a;\">]>\n";
                      b.about = "<guid type=\"String\">&b;&a;</guid>";
                  }),
                  "document type");
    std::string deep;
    for (int i = 0; i < 100000; ++i) {
        deep += "<a>";
    }
    expectFailure(with([&](auto& b) { b.about = deep; }), "XML section");
    std::string closed = deep;
    for (int i = 0; i < 100000; ++i) {
        closed += "</a>";
    }
    expectFailure(with([&](auto& b) { b.about = closed; }), "nests deeper");
    EXPECT_EQ(failure(with([](auto& b) {
                  b.about = "<a" + std::string(100000, 'b') + " type=\"String\"/>";
              })),
              "");
    std::string many;
    for (int i = 0; i < 300; ++i) {
        many += e57Field("f" + std::to_string(i), "Integer", e57Range(0, 0));
    }
    expectFailure(with([&](auto& b) { b.scans[0].prototype += many; }), "fields");
    for (std::size_t at = 8; at < good.size(); at += 2) {
        for (const int value : {0x00, 0xff}) {
            bytes = good;
            bytes[at] = static_cast<char>(value);
            mendPages(reinterpret_cast<std::uint8_t*>(bytes.data()), bytes.size());
            failure(bytes);
        }
    }
    for (std::size_t size = 8; size < good.size(); size += 7) {
        EXPECT_NE(failure(good.substr(0, size)), "");
    }
}

TEST_F(E57, RealFilesHaveTheirPoints) {
    if (realFile("").empty()) {
        GTEST_SKIP() << "QRB_TEST_DATA names no folder of real files.";
    }
    const auto table = [&](const char* name) { return readAll(*openSource(realFile(name))); };
    Table both = table("A_B.e57");
    ASSERT_EQ(both["tarvo.xyz[0]"].size(), 6u);
    // The scan of four points is the second one.
    const auto& number = both["e57.scan"];
    const auto first = static_cast<std::size_t>(std::ranges::find(number, 2.0) - number.begin());
    ASSERT_EQ(first, 2u);
    EXPECT_EQ(both["tarvo.xyz[0]"][first], -44.300098f);
    EXPECT_EQ(both["tarvo.xyz[1]"][first], -1.1321f);
    EXPECT_EQ(both["tarvo.xyz[2]"][first], 0.3358f);
    EXPECT_EQ(both["tarvo.rgba[0]"][first], 0);
    EXPECT_EQ(both["tarvo.rgba[1]"][first], 255);
    EXPECT_EQ(both["tarvo.rgba[2]"][first], 0);
    EXPECT_EQ(both["tarvo.intensity"][first], 0);
    Table b = table("B2.e57");
    EXPECT_EQ(b["tarvo.xyz[0]"],
              std::vector<double>(both["tarvo.xyz[0]"].begin(), both["tarvo.xyz[0]"].begin() + 2));
    Table moved = table("A4_moved.e57");
    ASSERT_EQ(moved["tarvo.xyz[0]"].size(), 4u);
    EXPECT_NE(moved["tarvo.xyz[0]"][0], both["tarvo.xyz[0]"][first]);
    // A pose turns and shifts, and keeps distances.
    const auto distance = [](Table& all, std::size_t from, std::size_t to) {
        double sum = 0;
        for (const char* name : {"tarvo.xyz[0]", "tarvo.xyz[1]", "tarvo.xyz[2]"}) {
            sum += std::pow(all[name][from] - all[name][to], 2);
        }
        return std::sqrt(sum);
    };
    for (std::size_t i = 1; i < 4; ++i) {
        EXPECT_NEAR(distance(moved, 0, i), distance(both, first, first + i), 1e-5);
    }
    Table different = table("A_B_different_dims.e57");
    ASSERT_EQ(different["tarvo.xyz[0]"].size(), 2u);
    EXPECT_TRUE(std::isnan(different["tarvo.intensity"][1]));
    EXPECT_EQ(different["tarvo.rgba[0]"][0], -1);
    EXPECT_GE(different["tarvo.rgba[0]"][1], 0);
}

}  // namespace
