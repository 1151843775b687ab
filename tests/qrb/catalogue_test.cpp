#include "catalogue/catalogue.h"

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include <algorithm>
#include <cmath>
#include <regex>
#include <set>
#include <sstream>

namespace {

namespace catalogue = tarvo::catalogue;

bool hasTag(const catalogue::AttributeEntry& a, const std::string& tag) {
    return std::regex_search(a.tags, std::regex("(^|[ ,])" + tag + "([ ,]|$)"));
}

// As the library understands the settings "default".
bool isAveraged(const catalogue::AttributeEntry& a) {
    return a.lodSettings == "average" ||
           (a.lodSettings == "default" && a.name != "tarvo.id" && a.namedValues.empty() &&
            !hasTag(a, "enumeration") && !hasTag(a, "boolean"));
}

TEST(Catalogue, TablesAreWhole) {
    EXPECT_EQ(catalogue::attributes().size(), 247u);
    EXPECT_EQ(catalogue::metaData().size(), 52u);
    EXPECT_EQ(catalogue::schemas().size(), 39u);
    EXPECT_EQ(catalogue::groups().size(), 5u);
    EXPECT_EQ(catalogue::attributesStamp().version, "1.4.6");
    EXPECT_EQ(catalogue::metaDataStamp().date, "2024-12-11");
    EXPECT_EQ(catalogue::schemasStamp().version, "f274d50d");
    EXPECT_EQ(catalogue::groupsStamp().version, "1.1.54");
    EXPECT_EQ(catalogue::groupsStamp().date, "2023-01-19");
    EXPECT_EQ(catalogue::attributes().front().name, "tarvo.xyz");
}

TEST(Catalogue, AttributesCanBeStored) {
    std::set<std::string> names;
    for (const catalogue::AttributeEntry& a : catalogue::attributes()) {
        SCOPED_TRACE(a.name);
        EXPECT_TRUE(names.insert(a.name).second);
        EXPECT_EQ(catalogue::findAttribute(a.name), &a);
        EXPECT_FALSE(a.title.empty());
        EXPECT_GE(a.length, 1u);
        EXPECT_GE(a.resolution, 0.0);
        EXPECT_LE(a.minimumValue, a.maximumValue);
        if (a.name == "tarvo.xyz") {
            EXPECT_EQ(a.defaultValue, 0);  // it names none
        }
        EXPECT_TRUE((a.minimumValue <= a.defaultValue && a.defaultValue <= a.maximumValue) ||
                    a.defaultValue == a.invalidValue);
        EXPECT_NE(std::find(catalogue::groups().begin(), catalogue::groups().end(), a.group),
                  catalogue::groups().end());
        EXPECT_TRUE(a.storageClass >= 1 && a.storageClass <= 3);
        EXPECT_LE(a.compressionOptions, 3);
    }
}

// The mean of two identifiers is a third one, that of 359 and 1 degrees lies behind the scanner.
TEST(Catalogue, LevelsOfDetailAverageOnlyWhatHasAMean) {
    const std::regex keysAndCodes(
        ".*[._](id|index|first|count|references|date|timestamp(_.*)?|type|class|zone|channel|facet|"
        "segment|solution_gnss|satellites_.*)");
    for (const catalogue::AttributeEntry& a : catalogue::attributes()) {
        SCOPED_TRACE(a.name);
        const bool goesRound = a.unitSymbol == "deg" && a.maximumValue - a.minimumValue >= 360;
        const bool isUnitVector = a.description.starts_with("Unit ");
        if (goesRound || isUnitVector || hasTag(a, "timestamp") || hasTag(a, "enumeration") ||
            hasTag(a, "boolean") || std::regex_match(a.name, keysAndCodes)) {
            EXPECT_FALSE(isAveraged(a));
        }
        // Of several elements only the first point's belong together.
        if (isUnitVector || (a.length > 1 && std::regex_match(a.name, keysAndCodes))) {
            EXPECT_EQ(a.lodSettings, "first");
        }
    }
    EXPECT_EQ(catalogue::findAttribute("tarvo.xyz")->lodSettings, "default");
}

// A new attribute must not tell of measurements that nobody made.
TEST(Catalogue, WhatIsNotKnownIsTheDefault) {
    const std::regex unknown(
        "(-?[0-9]+) if (not known|it has none|there is none|none|the .* none)");
    int found = 0;
    for (const catalogue::AttributeEntry& a : catalogue::attributes()) {
        SCOPED_TRACE(a.name);
        std::smatch match;
        if (std::regex_search(a.description, match, unknown)) {
            ++found;
            EXPECT_EQ(a.invalidValue, std::stod(match[1]));
        }
        if (!std::isnan(a.invalidValue)) {
            EXPECT_EQ(a.defaultValue, a.invalidValue);
            // The type in which the values are exchanged may be SINGLE.
            EXPECT_EQ(static_cast<float>(a.invalidValue), a.invalidValue);
        }
        std::istringstream names(a.namedValues);
        for (std::string line; std::getline(names, line);) {
            const std::string name = line.substr(line.find('=') + 1);
            if (name == "unknown" || name == "invalid" || name == "undefined") {
                EXPECT_EQ(a.defaultValue, std::stod(line));
            }
        }
    }
    EXPECT_GT(found, 50);
}

TEST(Catalogue, MetaDataAndSchemasAreJsonAndNameWhatExists) {
    for (const catalogue::MetaDataEntry& item : catalogue::metaData()) {
        SCOPED_TRACE(item.name);
        rapidjson::Document document;
        EXPECT_FALSE(document.Parse(item.schema.c_str()).HasParseError());
        EXPECT_TRUE(document.IsObject());
        EXPECT_FALSE(document.Parse(item.example.c_str()).HasParseError());
        EXPECT_EQ(catalogue::findMetaData(item.name), &item);
    }
    std::set<std::string> named;
    for (const catalogue::SchemaEntry& schema : catalogue::schemas()) {
        SCOPED_TRACE(schema.identifier);
        rapidjson::Document document;
        ASSERT_FALSE(document.Parse(schema.json.c_str()).HasParseError());
        int primaries = 0;
        for (const auto& value : document["attributes"].GetArray()) {
            std::string name = value.GetString();
            if (name.back() == '*' || name.back() == '?') {
                primaries += name.back() == '*' ? 1 : 0;
                name.pop_back();
            }
            EXPECT_NE(catalogue::findAttribute(name), nullptr) << name;
            named.insert(name);
        }
        EXPECT_EQ(primaries, 1);
        for (const auto& value : document["metadata"].GetArray()) {
            std::string name = value.GetString();
            if (name.back() == '?') {
                name.pop_back();
            }
            EXPECT_NE(catalogue::findMetaData(name), nullptr) << name;
            named.insert(name);
        }
    }
    // Strict validation would find fault with what no file type has a place for.
    for (const catalogue::AttributeEntry& a : catalogue::attributes()) {
        EXPECT_TRUE(named.contains(a.name)) << a.name;
    }
    for (const catalogue::MetaDataEntry& item : catalogue::metaData()) {
        EXPECT_TRUE(named.contains(item.name)) << item.name;
    }
}

TEST(Catalogue, NamesAreComparedExactly) {
    EXPECT_NE(catalogue::findAttribute("tarvo.xyz"), nullptr);
    EXPECT_EQ(catalogue::findAttribute("tarvo.XYZ"), nullptr);
    EXPECT_EQ(catalogue::findAttribute("tarvo.xy"), nullptr);
    EXPECT_EQ(catalogue::findMetaData("Tarvo.geo_tag"), nullptr);
    EXPECT_EQ(catalogue::findSchema("QRBX"), nullptr);
    ASSERT_NE(catalogue::findSchema("vtx"), nullptr);
    EXPECT_EQ(catalogue::findSchema("vtx")->json,
              "{\"identifier\":\"vtx\",\"extension\":\"vtx\",\"attributes\":[\"tarvo.id*\","
              "\"tarvo.xyz\",\"tarvo.xyz_accuracies?\"],\"metadata\":[\"tarvo.geo_tag\"]}");
}

}  // namespace
