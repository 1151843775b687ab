// Real point clouds: what a database says of them against what their bytes say. The files are read
// here in the plainest way, without the importer.

#include "tests/cli/folder.h"
#include "tests/cli/process.h"

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>

namespace {

using namespace tarvo::cli::tests;

// Ranges and counts of point formats 0 to 3.
struct Truth {
    std::size_t pointCount = 0;
    double scale[3];
    double offset[3];
    std::map<std::string, std::pair<double, double>> ranges;
    std::map<int, int> classes;
    std::map<int, int> returns;
};

template <typename T>
T at(const std::string& bytes, std::size_t position) {
    T value;
    std::memcpy(&value, bytes.data() + position, sizeof value);
    return value;
}

Truth readTruth(const std::string& fileName) {
    std::ifstream stream(fileName, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(stream)), {});
    Truth truth;
    const int format = bytes[104];
    truth.pointCount = at<std::uint32_t>(bytes, 107);
    for (std::size_t i = 0; i < 3; ++i) {
        truth.scale[i] = at<double>(bytes, 131 + 8 * i);
        truth.offset[i] = at<double>(bytes, 155 + 8 * i);
    }
    for (std::size_t i = 0; i < truth.pointCount; ++i) {
        const std::size_t p = at<std::uint32_t>(bytes, 96) + i * at<std::uint16_t>(bytes, 105);
        const auto see = [&](const std::string& name, double value) {
            const auto [found, isNew] = truth.ranges.try_emplace(name, value, value);
            found->second.first = std::min(found->second.first, value);
            found->second.second = std::max(found->second.second, value);
        };
        for (std::size_t axis = 0; axis < 3; ++axis) {
            see("raw" + std::to_string(axis), at<std::int32_t>(bytes, p + 4 * axis));
        }
        const int flags = at<std::uint8_t>(bytes, p + 14);
        const int classes = at<std::uint8_t>(bytes, p + 15);
        see("tarvo.intensity", at<std::uint16_t>(bytes, p + 12));
        see("tarvo.target_index", flags % 8);
        see("tarvo.target_count", flags / 8 % 8);
        see("tarvo.scan_direction", flags / 64 % 2);
        see("las.edge_of_flight_line", flags / 128);
        see("tarvo.class", classes % 32);
        see("las.synthetic", classes / 32 % 2);
        see("las.key_point", classes / 64 % 2);
        see("las.withheld", classes / 128);
        see("tarvo.scan_angle", at<std::int8_t>(bytes, p + 16));
        see("las.user_data", at<std::uint8_t>(bytes, p + 17));
        see("las.point_source_id", at<std::uint16_t>(bytes, p + 18));
        if (format == 1 || format == 3) {
            see("tarvo.timestamp", at<double>(bytes, p + 20));
        }
        if (format >= 2) {
            for (std::size_t channel = 0; channel < 3; ++channel) {
                see("tarvo.rgba[" + std::to_string(channel) + "]",
                    at<std::uint16_t>(bytes, p + (format == 2 ? 20 : 28) + 2 * channel));
            }
        }
        ++truth.classes[classes % 32];
        ++truth.returns[flags % 8];
    }
    return truth;
}

// What "info" says: ranges by element.
std::map<std::string, std::pair<double, double>> infoRanges(const rapidjson::Document& info) {
    std::map<std::string, std::pair<double, double>> ranges;
    for (const auto& attribute : info["attributes"].GetArray()) {
        const std::string name = attribute["name"].GetString();
        for (rapidjson::SizeType i = 0; i < attribute["minimum"].Size(); ++i) {
            ranges[attribute["length"].GetUint() == 1 ? name
                                                      : name + "[" + std::to_string(i) + "]"] = {
                attribute["minimum"][i].GetDouble(), attribute["maximum"][i].GetDouble()};
        }
    }
    return ranges;
}

int countWhere(const std::string& database, const std::string& filter) {
    return std::atoi(run("select --count --filter '" + filter + "' " + database).output.c_str());
}

TEST(RealClouds, AgreeWithTheBytesOfTheirFiles) {
    const char* const data = std::getenv("QRB_TEST_DATA");
    if (data == nullptr || *data == '\0') {
        std::cout << "Real clouds were left out: QRB_TEST_DATA is not set.\n";
        GTEST_SKIP();
    }
    const Folder folder;
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(data)) {
        if (entry.path().extension() != ".las") {
            continue;
        }
        ++files;
        SCOPED_TRACE(entry.path().filename().string());
        const Truth truth = readTruth(entry.path().string());
        const std::string database = folder.file(entry.path().stem().string() + ".qrbx");
        const Result import = run("import " + entry.path().string() + " " + database);
        ASSERT_EQ(import.code, 0) << import.output;
        EXPECT_EQ(run("select --count " + database).output,
                  std::to_string(truth.pointCount) + "\n");
        for (const auto& [value, count] : truth.classes) {
            EXPECT_EQ(countWhere(database, "tarvo.class == " + std::to_string(value)), count);
        }
        for (const auto& [value, count] : truth.returns) {
            EXPECT_EQ(countWhere(database, "tarvo.target_index == " + std::to_string(value)),
                      count);
        }
        rapidjson::Document info;
        info.Parse<rapidjson::kParseFullPrecisionFlag>(
            run("info --json " + database).output.c_str());
        ASSERT_FALSE(info.HasParseError());
        auto found = infoRanges(info);
        for (const auto& [name, range] : truth.ranges) {
            if (!name.starts_with("raw")) {
                ASSERT_TRUE(found.contains(name)) << name;
                EXPECT_EQ(found[name], range) << name;
            }
        }
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const auto raw = truth.ranges.at("raw" + std::to_string(axis));
            const auto stored = found["tarvo.xyz[" + std::to_string(axis) + "]"];
            // The stored integers come back, and values are right to a millionth of the step.
            const double low = (stored.first - truth.offset[axis]) / truth.scale[axis];
            const double high = (stored.second - truth.offset[axis]) / truth.scale[axis];
            EXPECT_EQ(std::round(low), raw.first) << axis;
            EXPECT_EQ(std::round(high), raw.second) << axis;
            EXPECT_NEAR(low, raw.first, 1e-6 + std::abs(raw.first) * 1e-15) << axis;
            EXPECT_NEAR(high, raw.second, 1e-6 + std::abs(raw.second) * 1e-15) << axis;
        }
    }
    EXPECT_GT(files, 0) << "no .las files in " << data;
}

}  // namespace
