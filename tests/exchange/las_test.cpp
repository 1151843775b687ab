#include "core/error.h"
#include "exchange/las/source.h"
#include "tests/cli/folder.h"
#include "tests/exchange/lasbuilder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <map>

namespace {

using namespace tarvo::exchange;
using namespace tarvo::exchange::tests;
using tarvo::cli::tests::Folder;
using tarvo::core::Failure;
using tarvo::qrb::pointcloud::DataType;

double valueAt(const PointSource& source, std::size_t column, std::size_t row) {
    const void* const values = source.values(column);
    switch (source.columns()[column].type) {
        case DataType::UINT8:
            return static_cast<const std::uint8_t*>(values)[row];
        case DataType::INT8:
            return static_cast<const std::int8_t*>(values)[row];
        case DataType::UINT16:
            return static_cast<const std::uint16_t*>(values)[row];
        case DataType::INT16:
            return static_cast<const std::int16_t*>(values)[row];
        case DataType::UINT32:
            return static_cast<const std::uint32_t*>(values)[row];
        case DataType::INT32:
            return static_cast<const std::int32_t*>(values)[row];
        case DataType::UINT64:
            return static_cast<double>(static_cast<const std::uint64_t*>(values)[row]);
        case DataType::INT64:
            return static_cast<double>(static_cast<const std::int64_t*>(values)[row]);
        case DataType::SINGLE:
            return static_cast<const float*>(values)[row];
        case DataType::DOUBLE:
            return static_cast<const double*>(values)[row];
        case DataType::NONE:
            break;
    }
    return -1e300;
}

// The first batch by column name, of one row.
std::map<std::string, double> rowOf(PointSource& source, std::size_t row) {
    source.rewind();
    EXPECT_GT(source.next(), row);
    std::map<std::string, double> values;
    for (std::size_t i = 0; i < source.columns().size(); ++i) {
        values[source.columns()[i].descriptor()] = valueAt(source, i, row);
    }
    return values;
}

class LasFormats : public testing::TestWithParam<int> {
protected:
    Folder folder;
};

TEST_P(LasFormats, EveryFieldIsTakenFromItsPlace) {
    const int format = GetParam();
    for (int minor = format < 6 ? 0 : 4; minor <= 4; ++minor) {
        SCOPED_TRACE("version 1." + std::to_string(minor));
        LasBuilder las(minor, format);
        las.addPoint(0, 0, 0);
        Bytes& p = las.addPoint(-2147483647, 2147483647, 12345);
        put(p, 12, std::uint16_t{54321});
        std::map<std::string, double> expected = {{"tarvo.xyz[0]", -21474836.47},
                                                  {"tarvo.xyz[1]", 21474836.47},
                                                  {"tarvo.xyz[2]", 123.45},
                                                  {"tarvo.intensity", 54321}};
        std::size_t at = 20;
        if (format < 6) {
            p[14] = 5 | 6 << 3 | 1 << 6;   // return 5 of 6, positive direction
            p[15] = 31 | 1 << 5 | 1 << 7;  // class 31, synthetic, withheld
            p[16] = static_cast<std::uint8_t>(-90);
            p[17] = 200;
            put(p, 18, std::uint16_t{60000});
            expected.insert({{"tarvo.target_index", 5},
                             {"tarvo.target_count", 6},
                             {"tarvo.scan_direction", 1},
                             {"las.edge_of_flight_line", 0},
                             {"tarvo.class", 31},
                             {"las.synthetic", 1},
                             {"las.key_point", 0},
                             {"las.withheld", 1},
                             {"tarvo.scan_angle", -90},
                             {"las.user_data", 200},
                             {"las.point_source_id", 60000}});
        } else {
            p[14] = 14 | 15 << 4;
            p[15] = 0b1010 | 2 << 4 | 1 << 7;  // key point, overlap, channel 2, edge
            p[16] = 255;
            p[17] = 1;
            put(p, 18, std::int16_t{-30000});
            put(p, 20, std::uint16_t{7});
            expected.insert({{"tarvo.target_index", 14},
                             {"tarvo.target_count", 15},
                             {"tarvo.scan_direction", 0},
                             {"las.edge_of_flight_line", 1},
                             {"tarvo.class", 255},
                             {"las.synthetic", 0},
                             {"las.key_point", 1},
                             {"las.withheld", 0},
                             {"las.overlap", 1},
                             {"las.scanner_channel", 2},
                             {"tarvo.scan_angle", -180},
                             {"las.user_data", 1},
                             {"las.point_source_id", 7}});
            at = 22;
        }
        const bool timed = format == 1 || format >= 3;
        const bool coloured =
            format == 2 || format == 3 || format == 5 || format == 7 || format == 8 || format == 10;
        const bool waved = format == 4 || format == 5 || format >= 9;
        if (timed) {
            put(p, at, 123456789.125);
            expected["tarvo.timestamp"] = 123456789.125;
            at += 8;
        }
        if (coloured) {
            for (int i = 0; i < 3; ++i, at += 2) {
                put(p, at, static_cast<std::uint16_t>(65535 - i));
                expected["tarvo.rgba[" + std::to_string(i) + "]"] = 65535 - i;
            }
        }
        if (format == 8 || format == 10) {
            put(p, at, std::uint16_t{999});
            expected["tarvo.nir"] = 999;
            at += 2;
        }
        if (waved) {
            p[at] = 9;
            put(p, at + 1, std::uint64_t{1} << 40);
            put(p, at + 9, std::uint32_t{4000000000});
            const char* const names[] = {"las.wave_return_location", "las.wave_x_t", "las.wave_y_t",
                                         "las.wave_z_t"};
            for (std::size_t i = 0; i < 4; ++i) {
                put(p, at + 13 + 4 * i, 0.5f + static_cast<float>(i));
                expected[names[i]] = 0.5 + static_cast<double>(i);
            }
            expected["las.wave_descriptor_index"] = 9;
            expected["las.wave_offset"] = 1099511627776.0;
            expected["las.wave_size"] = 4000000000.0;
            at += 29;
        }
        ASSERT_EQ(at, las.recordLength);
        las::LasSource source(folder.write("a.las", las.build()));
        EXPECT_EQ(rowOf(source, 1), expected);
        EXPECT_EQ(source.next(), 0u);
    }
}

INSTANTIATE_TEST_SUITE_P(All, LasFormats, testing::Range(0, 11));

class Las : public testing::Test {
protected:
    void expectFailure(const Bytes& bytes, const std::string& part) {
        try {
            las::LasSource source(folder.write("a.las", bytes));
            FAIL() << "taken, but expected: " << part;
        } catch (const Failure& failure) {
            EXPECT_NE(std::string(failure.what()).find(part), std::string::npos) << failure.what();
            EXPECT_NE(std::string(failure.what()).find("a.las"), std::string::npos);
        }
    }
    Folder folder;
};

TEST_F(Las, ExtraBytesKeepTypesScalesAndNames) {
    LasBuilder builder(4, 6);
    Bytes described;
    const auto describe = [&](const Bytes& bytes) {
        described.insert(described.end(), bytes.begin(), bytes.end());
    };
    describe(LasBuilder::extraBytes(3, 1 | 8 | 16, "Height (cm)", 0.01, 100, 7));  // uint16
    describe(LasBuilder::extraBytes(8, 0, "big"));                                 // int64
    describe(LasBuilder::extraBytes(21 + 8, 0, "normal"));                         // float[3]
    describe(LasBuilder::extraBytes(0, 2, ""));                                    // two raw bytes
    describe(LasBuilder::extraBytes(2, 0, "big"));  // int8, same name
    builder.addRecord("LASF_Spec", 4, described);
    builder.recordLength = 30 + 2 + 8 + 12 + 2 + 1 + 1;  // one byte nobody describes
    Bytes& p = builder.addPoint(1, 2, 3);
    put(p, 30, std::uint16_t{12345});
    put(p, 32, std::int64_t{-9007199254740993});
    put(p, 40, 0.25f);
    put(p, 48, -1.5f);
    p[53] = 77;
    p[54] = 0xff;
    p[55] = 5;
    las::LasSource source(folder.write("a.las", builder.build()));
    auto row = rowOf(source, 0);
    EXPECT_EQ(row["las.extra.height__cm_"], 223.45);
    EXPECT_EQ(row["las.extra.normal[0]"], 0.25);
    EXPECT_EQ(row["las.extra.normal[2]"], -1.5);
    EXPECT_EQ(row["las.extra.undocumented[1]"], 77);
    EXPECT_EQ(row["las.extra.big_2"], -1);
    EXPECT_EQ(row["las.extra.undocumented_2"], 5);
    for (std::size_t i = 0; i < source.columns().size(); ++i) {
        const Column& column = source.columns()[i];
        if (column.attribute == "las.extra.big") {
            EXPECT_EQ(static_cast<const std::int64_t*>(source.values(i))[0], -9007199254740993);
        } else if (column.attribute == "las.extra.height__cm_") {
            EXPECT_TRUE(column.hasInvalid);
            EXPECT_DOUBLE_EQ(column.invalidValue, 100.07);
            EXPECT_EQ(column.title, "Height (cm)");
        }
    }
}

TEST_F(Las, ScaledNumbersThatADoubleCantTellApartAreCounted) {
    LasBuilder builder(4, 6);
    builder.addRecord("LASF_Spec", 4, LasBuilder::extraBytes(7, 8, "code", 0.1));
    builder.recordLength = 30 + 8;
    for (std::uint64_t i = 0; i < 5; ++i) {
        put(builder.addPoint(1, 2, 3), 30, (1ull << 60) + i);
        put(builder.addPoint(1, 2, 3), 30, (1ull << 52) + i);
    }
    las::LasSource source(folder.write("a.las", builder.build()));
    for (int pass = 0; pass < 2; ++pass) {
        source.rewind();
        while (source.next() > 0) {
        }
        ASSERT_EQ(source.notes().size(), 1u);
        EXPECT_EQ(source.notes()[0].find("5 values are so far from 0"), 0u) << source.notes()[0];
    }
}

// The scale and the offset have a bit each that says whether they count.
TEST_F(Las, ScalesAndOffsetsOfExtraBytesCountByTheirOwnBits) {
    LasBuilder builder(4, 6);
    Bytes described;
    for (const auto& [name, options] :
         {std::pair{"none", 0}, {"scale", 8}, {"offset", 16}, {"both", 8 | 16}}) {
        const Bytes one =
            LasBuilder::extraBytes(3, static_cast<std::uint8_t>(options), name, 0.5, 100);
        described.insert(described.end(), one.begin(), one.end());
    }
    builder.addRecord("LASF_Spec", 4, described);
    builder.recordLength = 30 + 4 * 2;
    Bytes& p = builder.addPoint(1, 2, 3);
    for (std::size_t i = 0; i < 4; ++i)
        put(p, 30 + 2 * i, std::uint16_t{9});
    las::LasSource source(folder.write("a.las", builder.build()));
    auto row = rowOf(source, 0);
    EXPECT_EQ(row["las.extra.none"], 9);
    EXPECT_EQ(row["las.extra.scale"], 4.5);
    EXPECT_EQ(row["las.extra.offset"], 109);
    EXPECT_EQ(row["las.extra.both"], 104.5);
}

// Scales that differ between elements, and numbers that only the widest types hold.
TEST_F(Las, ExtraBytesTakeEveryElementsScaleAndTheWidestNumbers) {
    LasBuilder builder(4, 6);
    Bytes pair = LasBuilder::extraBytes(10 + 3, 8, "pair");  // uint16[2]
    put(pair, 112 + 8, 0.5);                                 // of the second only
    Bytes real = LasBuilder::extraBytes(9, 1, "real");       // float
    put(real, 40, -9999.5);
    const Bytes large = LasBuilder::extraBytes(7, 8, "large", 0.5);  // uint64
    Bytes first = LasBuilder::extraBytes(20 + 3, 8, "first", 0.25);  // uint16[3]
    put(first, 112 + 8, 1.0);
    put(first, 112 + 16, 1.0);
    Bytes shifted = LasBuilder::extraBytes(10 + 3, 16, "shifted");  // uint16[2]
    put(shifted, 136, 100.0);
    for (const Bytes& one : {real, large, first, shifted})
        pair.insert(pair.end(), one.begin(), one.end());
    builder.addRecord("LASF_Spec", 4, pair);
    builder.recordLength = 30 + 2 * 2 + 4 + 8 + 3 * 2 + 2 * 2;
    Bytes& p = builder.addPoint(1, 2, 3);
    put(p, 38, ~std::uint64_t{0});
    for (const std::size_t at : {30u, 32u, 46u, 48u, 50u, 52u, 54u})
        put(p, at, std::uint16_t{9});
    las::LasSource source(folder.write("a.las", builder.build()));
    auto row = rowOf(source, 0);
    EXPECT_EQ(row["las.extra.pair[0]"], 9);
    EXPECT_EQ(row["las.extra.pair[1]"], 4.5);
    EXPECT_EQ(row["las.extra.first[0]"], 2.25);
    EXPECT_EQ(row["las.extra.first[1]"], 9);
    EXPECT_EQ(row["las.extra.first[2]"], 9);
    EXPECT_EQ(row["las.extra.shifted[0]"], 109);
    EXPECT_EQ(row["las.extra.shifted[1]"], 9);
    EXPECT_EQ(row["las.extra.large"], 9223372036854775808.0);
    for (const Column& column : source.columns())
        EXPECT_EQ(column.hasInvalid ? column.invalidValue : 0,
                  column.attribute == "las.extra.real" ? -9999.5 : 0)
            << column.attribute;
}

TEST_F(Las, AxesTellTheirScalesAndWhatTheyCanHold) {
    LasBuilder builder(2, 0);
    builder.scale[1] = -0.01;
    builder.scale[2] = 0.002;
    builder.addPoint(1, 2, 3);
    const las::LasSource source(folder.write("a.las", builder.build()));
    const std::vector<Affine> axes = source.coordinateAxes();
    ASSERT_EQ(axes.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(axes[i].scale(), builder.scale[i]) << i;
    EXPECT_EQ(source.columns()[0].lowest, -21474836.48);
    EXPECT_EQ(source.columns()[1].lowest, -21474836.47);
    EXPECT_EQ(source.columns()[1].highest, 21474836.48);
    EXPECT_EQ(source.columns()[2].highest, 4294967.294);
}

TEST_F(Las, AFileThatBecomesShorterWhileItIsReadIsNoPoints) {
    LasBuilder builder(2, 0);
    for (int i = 0; i < 9000; ++i)  // more than are read at once
        builder.addPoint(i, i, i);
    const std::string file = folder.write("a.las", builder.build());
    las::LasSource source(file);
    std::filesystem::resize_file(file, 5000 * 20);
    EXPECT_THROW(source.next(), Failure);
}

TEST_F(Las, TheCoordinateReferenceSystemIsKept) {
    LasBuilder builder(4, 6);
    builder.addPoint(1, 2, 3);
    Bytes keys;
    for (const std::uint16_t key : {1, 1, 0, 1, 3072, 0, 1, 25832}) {
        put(keys, keys.size(), key);
    }
    builder.addRecord("LASF_Projection", 34735, keys);
    builder.addRecord("someone", 5, {1, 2, 3});
    const std::string wkt = "PROJCS[\"x\",1]";
    builder.addExtendedRecord("LASF_Projection", 2112, Bytes(wkt.begin(), wkt.end()));
    const las::LasSource source(folder.write("a.las", builder.build()));
    std::map<std::string, std::string> items;
    for (const auto& [name, value] : source.metaData()) {
        items[name] = value;
    }
    EXPECT_EQ(items["las.crs.wkt"], "\"PROJCS[\\\"x\\\",1]\"");
    EXPECT_NE(items["las.crs.geotiff"].find("[1, 1, 0, 1, 3072, 0, 1, 25832]"), std::string::npos);
    EXPECT_NE(items["las.records"].find("AQID"), std::string::npos);
    EXPECT_NE(items["las.header"].find("\"point_format\": 6"), std::string::npos);
}

// They are data of others: what is damaged or large must cost neither the import nor the memory.
TEST_F(Las, RecordsAreKeptAsBytesOrToldOnly) {
    const auto items = [&](const LasBuilder& builder) {
        std::map<std::string, std::string> found;
        for (const auto& [name, value] :
             las::LasSource(folder.write("a.las", builder.build())).metaData())
            found[name] = value;
        return found;
    };
    LasBuilder odd(4, 6);
    odd.addRecord("LASF_Projection", 34735, Bytes(3));
    odd.addRecord("LASF_Projection", 34736, Bytes(12));
    odd.addRecord("LASF_Projection", 2112, {'a', 0xe4, 'b'});
    odd.addRecord("LASF_Projection", 2112, {'a', 0, 'b'});
    odd.addRecord("LASF_Projection", 2112, {'a', 0, 0});
    odd.addRecord("LASF_Projection", 2112, {});
    odd.addRecord("LASF_Projection", 34737, {});
    auto found = items(odd);
    const std::string keys = found["las.crs.geotiff"];
    EXPECT_NE(keys.find("\"base64_34735\": \"AAAA\""), std::string::npos) << keys;
    EXPECT_NE(keys.find("\"base64_34736\": \"AAAAAAAAAAAAAAAA\""), std::string::npos) << keys;
    // Texts that no string of JSON holds byte for byte.
    const std::string texts = found["las.records"];
    EXPECT_NE(texts.find("\"YeRi\""), std::string::npos) << texts;
    EXPECT_NE(texts.find("\"YQBi\""), std::string::npos) << texts;
    EXPECT_EQ(texts.find("\"YQAA\""), std::string::npos) << texts;

    constexpr std::size_t largest = 1 << 20;
    LasBuilder large(4, 6);
    large.addExtendedRecord("someone", 1, Bytes(largest + 1));
    for (int i = 0; i < 18; ++i)
        large.addExtendedRecord("someone", 2, Bytes(largest));
    const std::string records = items(large)["las.records"];
    const auto count = [&](const std::string& text) {
        int found = 0;
        for (std::size_t at = 0; (at = records.find(text, at)) != std::string::npos; ++at)
            ++found;
        return found;
    };
    EXPECT_EQ(count("\"length\": 1048577"), 1);
    EXPECT_EQ(count("\"length\": 1048576"), 18);
    EXPECT_EQ(count("\"base64\""), 16);
}

// Since version 1.4 there are two fields for it; writers fill either, or both.
TEST_F(Las, PointsAreCountedByTheFieldThatIsFilled) {
    for (const int minor : {0, 1, 2, 3, 4}) {
        for (const int format : {0, 1}) {
            LasBuilder builder(minor, format);
            for (int i = 0; i < 5; ++i) {
                builder.addPoint(100 + i, 2, 3);
            }
            const Bytes file = builder.build();
            const auto expectPoints = [&](std::uint32_t old, std::uint64_t wide,
                                          std::uint64_t expected) {
                SCOPED_TRACE("version 1." + std::to_string(minor) + ", counts " +
                             std::to_string(old) + " and " + std::to_string(wide));
                Bytes bytes = file;
                put(bytes, 107, old);
                if (minor == 4) {
                    put(bytes, 247, wide);
                }
                las::LasSource source(folder.write("a.las", bytes));
                EXPECT_EQ(source.header().pointCount, expected);
                std::uint64_t read = 0;
                while (const std::uint32_t count = source.next()) {
                    read += count;
                }
                EXPECT_EQ(read, expected);
            };
            expectPoints(5, 5, 5);
            expectPoints(5, 0, 5);
            expectPoints(0, 0, 0);
            expectPoints(3, 0, 3);
            if (minor == 4) {
                expectPoints(0, 5, 5);
                expectPoints(3, 5, 5);
                expectPoints(5, 3, 3);
            }
            // The last point, and nothing else, in the coordinates of the last row.
            las::LasSource source(folder.write("a.las", file));
            EXPECT_DOUBLE_EQ(rowOf(source, 4)["tarvo.xyz[0]"], 1.04);
        }
    }
    // A count beyond the file's end is refused in whichever field it stands.
    LasBuilder builder(4, 1);
    builder.addPoint(1, 2, 3);
    Bytes bytes = builder.build();
    put(bytes, 247, std::uint64_t{0});
    put(bytes, 107, std::uint32_t{2});
    expectFailure(bytes, "number of point records is 2");
    put(bytes, 247, std::uint64_t{3});
    put(bytes, 107, std::uint32_t{1});
    expectFailure(bytes, "number of point records is 3");
    // The wide field is no part of earlier versions: what lies there are records or points.
    LasBuilder earlier(3, 1);
    for (int i = 0; i < 5; ++i) {
        earlier.addPoint(-1, -1, -1);
    }
    EXPECT_EQ(las::LasSource(folder.write("a.las", earlier.build())).header().pointCount, 5u);
}

// A writer that was killed leaves a file whose header knows nothing of its points.
TEST_F(Las, PointsThatTheHeaderDoesNotCountAreTold) {
    LasBuilder las;
    for (int i = 0; i < 5; ++i) {
        las.addPoint(i, i, i);
    }
    Bytes bytes = las.build();
    EXPECT_TRUE(las::LasSource(folder.write("whole.las", bytes)).notes().empty());
    put(bytes, 107, std::uint32_t(2));
    const auto notes = las::LasSource(folder.write("a.las", bytes)).notes();
    ASSERT_EQ(notes.size(), 1u);
    EXPECT_NE(notes[0].find("2 points, but there is room for 3 more"), std::string::npos)
        << notes[0];
}

TEST_F(Las, FaultyHeadersAreNamedByFieldAndValue) {
    LasBuilder builder(4, 3);
    builder.addRecord("u", 1, Bytes(10));
    builder.addExtendedRecord("v", 2, Bytes(10));
    for (int i = 0; i < 3; ++i) {
        builder.addPoint(i, i, i);
    }
    const Bytes good = builder.build();
    ASSERT_NO_THROW(las::LasSource(folder.write("a.las", good)));
    const auto broken = [&](std::size_t at, auto value) {
        Bytes bytes = good;
        put(bytes, at, value);
        return bytes;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    expectFailure(broken(0, std::uint8_t{'X'}), "is not a LAS file");
    expectFailure(broken(25, std::uint8_t{5}), "version 1.5");
    expectFailure(broken(94, std::uint16_t{374}), "header size is 374");
    expectFailure(broken(96, std::uint32_t{100}), "offset to point data is 100");
    expectFailure(broken(96, std::uint32_t{4000000000}), "offset to point data is 4000000000");
    expectFailure(broken(100, std::uint32_t{4000000000}), "4000000000");
    expectFailure(broken(104, std::uint8_t{11}), "format is 11");
    expectFailure(broken(104, std::uint8_t{0x83}), "LAZ file");
    expectFailure(broken(104, std::uint8_t{0xc3}), "format is 195");
    expectFailure(broken(104, std::uint8_t{0x43}), "format is 67");
    expectFailure(broken(105, std::uint16_t{33}), "record length is 33");
    expectFailure(broken(105, std::uint16_t{0}), "record length is 0");
    expectFailure(broken(247, std::uint64_t{6}), "number of point records is 6");
    expectFailure(broken(247, std::uint64_t{4}), "extended variable length record is 541");
    expectFailure(broken(247, ~std::uint64_t{0}), "18446744073709551615");
    expectFailure(broken(131, 0.0), "x scale factor is 0");
    expectFailure(broken(139, nan), "y scale factor");
    expectFailure(broken(171, nan), "z offset");
    expectFailure(broken(235, std::uint64_t{10}), "is 10");
    expectFailure(broken(235, ~std::uint64_t{0}), "18446744073709551615");
    expectFailure(broken(243, std::uint32_t{2}), "extended variable length record");
    expectFailure(broken(375 + 20, std::uint16_t{11}), "length of 11");
    for (const auto& [minor, size] : {std::pair{0, 227}, {2, 227}, {3, 235}, {4, 375}}) {
        Bytes bytes = LasBuilder(minor, 0).build();
        ASSERT_NO_THROW(las::LasSource(folder.write("a.las", bytes)));
        put(bytes, 94, static_cast<std::uint16_t>(size - 1));
        expectFailure(bytes, "header size is " + std::to_string(size - 1));
    }
    Bytes extra = LasBuilder::extraBytes(3, 0, "a");
    LasBuilder overlong(4, 0);
    overlong.addRecord("LASF_Spec", 4, extra);
    overlong.addPoint(0, 0, 0);
    expectFailure(overlong.build(), "\"a\" take 2 bytes");
    extra.pop_back();
    LasBuilder odd(4, 0);
    odd.addRecord("LASF_Spec", 4, extra);
    expectFailure(odd.build(), "not a multiple of 192");
}

// Reads everything there is; a failure is an answer, a crash is not (run it with sanitizers).
bool survives(const std::string& fileName) {
    try {
        las::LasSource source(fileName);
        while (source.next() > 0) {
        }
        source.metaData();
        return true;
    } catch (const Failure&) {
        return false;
    }
}

TEST_F(Las, CutAndCorruptedFilesEndInAnErrorAtMost) {
    LasBuilder builder(4, 10);
    builder.recordLength += 4;
    builder.addRecord("LASF_Spec", 4, LasBuilder::extraBytes(9, 8, "f", 0.5));
    builder.addExtendedRecord("LASF_Projection", 2112, Bytes(30, 'w'));
    for (int i = 0; i < 5; ++i) {
        builder.addPoint(i, -i, i * i);
    }
    const Bytes good = builder.build();
    ASSERT_TRUE(survives(folder.write("a.las", good)));
    for (std::size_t size = 0; size < good.size(); ++size) {
        EXPECT_FALSE(survives(folder.write(
            "a.las", Bytes(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size)))))
            << size;
    }
    for (std::size_t at = 0; at < 375 + 54 + 192; ++at) {
        for (const int value : {0x00, 0x01, 0x7f, 0x80, 0xff}) {
            Bytes bytes = good;
            bytes[at] = static_cast<std::uint8_t>(value);
            survives(folder.write("a.las", bytes));
        }
    }
}

TEST(Inputs, APipeIsRefusedAtOnce) {
    const Folder folder;
    const std::string name = folder.file("pipe.las");
    ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
    EXPECT_THROW(las::LasSource source(name), Failure);
}

}  // namespace
