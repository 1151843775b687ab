// Real point clouds: what a database says of them against what their bytes say. The files are read
// here in the plainest way, without the importer.

#include "tests/cli/commandtest.h"

#include "core/pointpages.h"
#include "numbers/numbertext.h"
#include "qrb/loader.h"

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>

namespace {

using namespace tarvo::cli::tests;
using tarvo::core::columnsOf;
using tarvo::core::PointColumn;
using tarvo::core::PointPages;
using tarvo::numbers::readNumber;
using tarvo::qrb::pointcloud::DataType;

template <typename T>
T at(const std::string& bytes, std::size_t position) {
    T value;
    std::memcpy(&value, bytes.data() + position, sizeof value);
    return value;
}

// Point formats 0 to 3.
struct LasFile {
    explicit LasFile(const std::string& fileName) {
        std::ifstream stream(fileName, std::ios::binary);
        bytes.assign(std::istreambuf_iterator<char>(stream), {});
        pointCount = at<std::uint32_t>(bytes, 107);
        for (std::size_t i = 0; i < 3; ++i) {
            scale[i] = at<double>(bytes, 131 + 8 * i);
            offset[i] = at<double>(bytes, 155 + 8 * i);
        }
    }

    // Calls see(NAME, VALUE) for every number of a point; coordinates are "raw0" to "raw2".
    template <typename See>
    void read(std::size_t point, const See& see) const {
        const int format = bytes[104];
        const std::size_t length = at<std::uint16_t>(bytes, 105);
        const std::size_t p = at<std::uint32_t>(bytes, 96) + point * length;
        const int flags = at<std::uint8_t>(bytes, p + 14);
        const int classes = at<std::uint8_t>(bytes, p + 15);
        seeElements<std::int32_t>("raw", "", 3, p, see);
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
            seeElements<std::uint16_t>("tarvo.rgba[", "]", 3, p + (format == 2 ? 20 : 28), see);
        }
        if (format == 3 && length == 34 + 27) {  // the extra bytes of the one file that has any
            seeElements<std::uint16_t>("las.extra.colors[", "]", 3, p + 34, see);
            seeElements<std::uint8_t>("las.extra.reserved[", "]", 7, p + 40, see);
            seeElements<std::int8_t>("las.extra.flags[", "]", 2, p + 47, see);
            see("las.extra.intensity", at<std::uint32_t>(bytes, p + 49));
            see("las.extra.time", at<std::uint64_t>(bytes, p + 53));
        }
    }

    std::string bytes;
    std::size_t pointCount = 0;
    double scale[3];
    double offset[3];

private:
    template <typename T, typename See>
    void seeElements(const std::string& begin, const char* end, std::size_t count,
                     std::size_t position, const See& see) const {
        for (std::size_t i = 0; i < count; ++i) {
            see(begin + std::to_string(i) + end, at<T>(bytes, position + i * sizeof(T)));
        }
    }
};

// Ranges and counts of all points.
struct Truth {
    explicit Truth(const LasFile& file) {
        for (std::size_t i = 0; i < file.pointCount; ++i) {
            file.read(i, [this](const std::string& name, auto number) {
                const auto value = static_cast<double>(number);
                const auto [found, isNew] = ranges.try_emplace(name, value, value);
                found->second.first = std::min(found->second.first, value);
                found->second.second = std::max(found->second.second, value);
                if (name == "tarvo.class") {
                    ++classes[static_cast<int>(value)];
                } else if (name == "tarvo.target_index") {
                    ++returns[static_cast<int>(value)];
                }
            });
        }
    }
    std::map<std::string, std::pair<double, double>> ranges;
    std::map<int, int> classes;
    std::map<int, int> returns;
};

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

class RealClouds : public CommandTest {
protected:
    // Imports every file and calls check(FILE, DATABASE).
    template <typename Check>
    void forEachFile(const Check& check) {
        forEachRealCloud([&](const std::filesystem::path& path) {
            const std::string database = folder.file(path.stem().string() + ".qrbx");
            expectSuccess("import " + path.string() + " " + database);
            check(LasFile(path.string()), database);
        });
    }
};

TEST_F(RealClouds, AgreeWithTheBytesOfTheirFiles) {
    forEachFile([](const LasFile& file, const std::string& database) {
        const Truth truth(file);
        EXPECT_EQ(run("select --count " + database).output, std::to_string(file.pointCount) + "\n");
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
            const double low = (stored.first - file.offset[axis]) / file.scale[axis];
            const double high = (stored.second - file.offset[axis]) / file.scale[axis];
            EXPECT_EQ(std::round(low), raw.first) << axis;
            EXPECT_EQ(std::round(high), raw.second) << axis;
            EXPECT_NEAR(low, raw.first, 1e-6 + std::abs(raw.first) * 1e-15) << axis;
            EXPECT_NEAR(high, raw.second, 1e-6 + std::abs(raw.second) * 1e-15) << axis;
        }
    });
}

// A number of a file in all its digits. Coordinates, which are raw * scale + offset, have those of
// their scale, or more where a column has more: an offset may lie between the steps.
std::string fileText(const LasFile& file, const std::string& name, auto number, int columnPlaces) {
    char text[64];
    if constexpr (std::is_floating_point_v<decltype(number)>) {
        const auto end = std::to_chars(text, text + sizeof text, number, std::chars_format::fixed);
        return {text, end.ptr};
    } else if (!name.starts_with("raw")) {
        return std::to_string(number);
    }
    const auto axis = static_cast<std::size_t>(name.back() - '0');
    const auto places = static_cast<int>(std::lround(-std::log10(file.scale[axis])));
    std::snprintf(text, sizeof text, "%.*f", std::max(places, columnPlaces),
                  static_cast<double>(number) * file.scale[axis] + file.offset[axis]);
    return text;
}

std::string withoutLastZeros(std::string text) {
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        text.erase(text.find_last_not_of('.') + 1);
    }
    return text;
}

// All numbers of an object, as they are written.
std::string numbersOf(const std::string& line) {
    rapidjson::Document object;
    object.Parse<rapidjson::kParseNumbersAsStringsFlag>(line.c_str());
    std::string text;
    if (object.IsObject()) {
        for (const auto& member : object.GetObject()) {
            if (!member.value.IsArray()) {
                text += std::string(",") + member.value.GetString();
                continue;
            }
            for (const auto& element : member.value.GetArray()) {
                text += std::string(",") + element.GetString();
            }
        }
    }
    return text.substr(std::min<std::size_t>(1, text.size()));
}

void expectValues(const LasFile& file, const std::string& database) {
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud cloud(context);
    cloud.open(database, tarvo::qrb::pointcloud::OpenSettings(context));
    std::vector<PointColumn> all;
    for (const std::string& name : cloud.pointAttributes().list()) {
        for (PointColumn& column : columnsOf(cloud.pointAttributes().get(name))) {
            all.push_back(std::move(column));
        }
    }
    PointPages pages(cloud, {}, std::move(all), 1000);
    const std::vector<PointColumn>& columns = pages.columns();
    const auto columnOf = [&columns](const char* name) {
        const auto found = std::ranges::find(columns, name, &PointColumn::name);
        return static_cast<std::size_t>(found - columns.begin());
    };
    const std::size_t idColumn = columnOf("tarvo.id");
    ASSERT_LT(idColumn, columns.size());
    const int coordinatePlaces = columns[columnOf("tarvo.xyz[0]")].format.places();
    std::istringstream csv(run("select --format csv " + database).output);
    std::istringstream json(run("select --format jsonl " + database).output);
    std::string csvLine;
    std::string jsonLine;
    std::getline(csv, csvLine);
    const auto joined = [&columns](const auto& textOf) {
        std::string line;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            line += (i > 0 ? "," : "") + textOf(i);
        }
        return line;
    };
    EXPECT_EQ(csvLine, joined([&](std::size_t i) { return columns[i].name; }));
    const std::size_t step = file.pointCount / 4000 + 1;
    std::size_t compared = 0;
    while (const std::uint32_t count = pages.next()) {
        for (std::uint32_t row = 0; row < count; ++row) {
            const std::string line =
                joined([&](std::size_t i) { return columns[i].format.text(pages.value(row, i)); });
            std::getline(csv, csvLine);
            std::getline(json, jsonLine);
            ASSERT_EQ(csvLine, line);
            const std::size_t point = pages.value(row, idColumn) - 1;
            ASSERT_LT(point, file.pointCount);
            if (point % step != 0) {
                continue;
            }
            ASSERT_EQ(numbersOf(jsonLine), line);
            ++compared;
            std::map<std::string, std::string> truth{{"tarvo.id", std::to_string(point + 1)}};
            file.read(point, [&](const std::string& name, auto number) {
                const bool isCoordinate = name.starts_with("raw");
                truth[isCoordinate ? "tarvo.xyz[" + name.substr(3) + "]" : name] =
                    withoutLastZeros(fileText(file, name, number, coordinatePlaces));
            });
            for (std::size_t i = 0; i < columns.size(); ++i) {
                const std::string& name = columns[i].name;
                std::string shown;
                pages.appendText(shown, row, i);
                if (columns[i].format.type() == DataType::DOUBLE) {
                    ASSERT_EQ(readNumber(shown), std::bit_cast<double>(pages.value(row, i)))
                        << name << ", point " << point;
                }
                if (name != "tarvo.rgba[3]") {  // which no file has
                    ASSERT_EQ(withoutLastZeros(shown), truth[name]) << name << ", point " << point;
                    truth.erase(name);
                }
            }
            ASSERT_TRUE(truth.empty()) << truth.begin()->first << " is missing";
        }
    }
    EXPECT_EQ(compared, (file.pointCount + step - 1) / step);
    EXPECT_FALSE(std::getline(csv, csvLine) || std::getline(json, jsonLine));
}

// Database, tables and JSON lines tell the numbers of the file, digit by digit.
TEST_F(RealClouds, GiveBackEveryNumberOfTheirFiles) {
    tarvo::qrb::loadLibrary(QRBLIB_FILE);
    forEachFile(expectValues);
    tarvo::qrb::freeLibrary();
}

}  // namespace
