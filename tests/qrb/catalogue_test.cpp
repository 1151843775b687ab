#include "qrb/defaults/catalogue.h"

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace {

namespace defaults = tarvo::qrb::defaults;

TEST(Catalogue, TablesAreWhole) {
    EXPECT_EQ(defaults::attributes().size(), 247u);
    EXPECT_EQ(defaults::metaData().size(), 52u);
    EXPECT_EQ(defaults::schemas().size(), 39u);
    EXPECT_EQ(defaults::groups().size(), 5u);
    EXPECT_EQ(defaults::attributesStamp().version, "1.4.6");
    EXPECT_EQ(defaults::metaDataStamp().date, "2024-12-11");
    EXPECT_EQ(defaults::schemasStamp().version, "f274d50d");
    EXPECT_EQ(defaults::attributes().front().name, "tarvo.xyz");
}

TEST(Catalogue, AttributesCanBeStored) {
    std::set<std::string> names;
    for (const defaults::AttributeEntry& a : defaults::attributes()) {
        SCOPED_TRACE(a.name);
        EXPECT_TRUE(names.insert(a.name).second);
        EXPECT_EQ(defaults::findAttribute(a.name), &a);
        EXPECT_FALSE(a.title.empty());
        EXPECT_GE(a.length, 1u);
        EXPECT_GE(a.resolution, 0.0);
        EXPECT_LE(a.minimumValue, a.maximumValue);
        if (a.name == "tarvo.xyz") {
            EXPECT_EQ(a.defaultValue, 0);  // it names none
        }
        EXPECT_TRUE((a.minimumValue <= a.defaultValue && a.defaultValue <= a.maximumValue) ||
                    a.defaultValue == a.invalidValue);
        EXPECT_NE(std::find(defaults::groups().begin(), defaults::groups().end(), a.group),
                  defaults::groups().end());
        EXPECT_TRUE(a.storageClass >= 1 && a.storageClass <= 3);
        EXPECT_LE(a.compressionOptions, 3);
    }
}

TEST(Catalogue, MetaDataAndSchemasAreJsonAndNameWhatExists) {
    for (const defaults::MetaDataEntry& item : defaults::metaData()) {
        SCOPED_TRACE(item.name);
        rapidjson::Document document;
        EXPECT_FALSE(document.Parse(item.schema.c_str()).HasParseError());
        EXPECT_TRUE(document.IsObject());
        EXPECT_FALSE(document.Parse(item.example.c_str()).HasParseError());
        EXPECT_EQ(defaults::findMetaData(item.name), &item);
    }
    for (const defaults::SchemaEntry& schema : defaults::schemas()) {
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
            EXPECT_NE(defaults::findAttribute(name), nullptr) << name;
        }
        EXPECT_EQ(primaries, 1);
        for (const auto& value : document["metadata"].GetArray()) {
            std::string name = value.GetString();
            if (name.back() == '?') {
                name.pop_back();
            }
            EXPECT_NE(defaults::findMetaData(name), nullptr) << name;
        }
    }
}

TEST(Catalogue, NamesAreComparedExactly) {
    EXPECT_NE(defaults::findAttribute("tarvo.xyz"), nullptr);
    EXPECT_EQ(defaults::findAttribute("tarvo.XYZ"), nullptr);
    EXPECT_EQ(defaults::findAttribute("tarvo.xy"), nullptr);
    EXPECT_EQ(defaults::findMetaData("Tarvo.geo_tag"), nullptr);
    EXPECT_EQ(defaults::findSchema("QRBX"), nullptr);
    ASSERT_NE(defaults::findSchema("vtx"), nullptr);
    EXPECT_EQ(defaults::findSchema("vtx")->json,
              "{\"identifier\":\"vtx\",\"extension\":\"vtx\",\"attributes\":[\"tarvo.id*\","
              "\"tarvo.xyz\",\"tarvo.xyz_accuracies?\"],\"metadata\":[\"tarvo.geo_tag\"]}");
}

}  // namespace
