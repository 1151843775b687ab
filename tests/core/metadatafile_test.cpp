#include "core/metadatafile.h"
#include "core/error.h"
#include "core/json.h"
#include "tests/qrb/library.h"

namespace tarvo::core {
namespace {

using Names = std::vector<std::string>;

TEST(Json, IsLaidOutAnewWithoutATouchOfItsParts) {
    std::string text = " { \"a b\" : [ 1.50e0 ,\"x\\u00e4\\/ \\\" }\" ] ,\n\"c\":{ },\"d\":[\t] } ";
    const std::string compact = "{\"a b\":[1.50e0,\"x\\u00e4\\/ \\\" }\"],\"c\":{},\"d\":[]}";
    EXPECT_EQ(formattedJson(text),
              "{\n    \"a b\": [\n        1.50e0,\n        \"x\\u00e4\\/ \\\" }\"\n    ],\n"
              "    \"c\": {},\n    \"d\": []\n}");
    EXPECT_TRUE(compactJson(text));
    EXPECT_EQ(text, compact);
    for (const char* other : {"", "{", "1 2", "{'a':1}", "\"x"}) {
        std::string same = other;
        EXPECT_FALSE(compactJson(same));
        EXPECT_EQ(same, other);
        EXPECT_EQ(formattedJson(other), other);
    }
    // Its indents would fill the memory.
    const std::string deep = std::string(100'000, '[') + std::string(100'000, ']');
    EXPECT_EQ(formattedJson(deep), deep);
}

TEST(MetaDataFile, GivesBackEveryItemAsItWas) {
    const std::vector<MetaDataItem> items{{"a", "{\"n\":12345678901234567890.10}"},
                                          {"b", "plain \"text\""},
                                          {"c", "[1,2]"},
                                          {"d", "7"},
                                          {"e", "\"quoted\""},
                                          {"f", "null"},
                                          {"g", ""},
                                          {"h", "{ no JSON"},
                                          {"i", std::string("zero\0byte", 9)}};
    const MetaDataFile file = readMetaDataFile(writeMetaDataFile(items));
    EXPECT_EQ(file.items, items);
    EXPECT_EQ(file.skipped, Names{});
    // Blanks around an object make no text of it.
    EXPECT_EQ(writeMetaDataFile({{"a", " \t\r\n{\"n\": [1]}\n"}}),
              writeMetaDataFile({{"a", "{\"n\":[1]}"}}));
}

TEST(MetaDataFile, NamesWhatItSkips) {
    const MetaDataFile file = readMetaDataFile(
        "{\"a\": 1, \"b\": \"x\", \"c\": [{\"y\": [2]}], \"d\": null, \"e\": true, "
        "\"f\": {\"g\": [1.0, \"z\"]}}");
    EXPECT_EQ(file.items, (std::vector<MetaDataItem>{{"b", "x"}, {"f", "{\"g\":[1.0,\"z\"]}"}}));
    EXPECT_EQ(file.skipped, (Names{"a (number)", "c (array)", "d (null)", "e (boolean)"}));
    const std::string deep =
        "{\"a\":" + std::string(100'000, '[') + std::string(100'000, ']') + "}";
    EXPECT_EQ(readMetaDataFile(deep).skipped, Names{"a (array)"});
    const auto refusal = [](const char* text) -> std::string {
        try {
            readMetaDataFile(text);
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "taken";
    };
    for (const char* text : {"[1, 2]", "7", "\"x\""})
        EXPECT_EQ(refusal(text), "The top-level element is expected to be an object.");
    EXPECT_EQ(refusal("{\"a\": "), "Failed to parse JSON string: Invalid value. Position: 6");
}

class ImportedItems : public LibraryTest {};

TEST_F(ImportedItems, KeepSignaturesWhereNothingChangesAndTellWhereOneIsLost) {
    const qrb::Context context("OFF", "");
    qrb::pointcloud::CreateSettings settings(context);
    settings.primaryAttribute = attribute("p", 0, 100, 1);
    qrb::Pointcloud cloud(context);
    cloud.create(file("a.qrbx"), settings);
    auto& metaData = cloud.metaData();
    cloud.transactions().begin("import", "test");
    for (const char* name : {"same", "other", "plain"})
        metaData.set(name, "{\"a\":1}");
    // As people write it; a file has it in another spelling.
    metaData.set("spelt", "{ \"a\" : \"\\u00e9\\/\",\n  \"b\": [1.0] }\n");
    for (const char* name : {"same", "other", "spelt"})
        metaData.createSignature(name, 1, {1, 2});
    MetaDataImport import(metaData);
    EXPECT_FALSE(import.losesSignature({"same", "{\"a\":1}"}));
    EXPECT_TRUE(import.losesSignature({"other", "2"}));
    EXPECT_FALSE(import.losesSignature({"plain", "2"}));
    EXPECT_FALSE(import.losesSignature({"new", "2"}));
    const auto written = readMetaDataFile(writeMetaDataFile({{"spelt", metaData.get("spelt")}}));
    EXPECT_FALSE(import.losesSignature(written.items.at(0)));
    EXPECT_TRUE(import.losesSignature({"spelt", "{\"a\":\"\u00e9/\",\"b\":[1]}"}));
    import.set(written.items.at(0));
    for (const MetaDataItem& item : std::vector<MetaDataItem>{
             {"same", "{\"a\":1}"}, {"other", "2"}, {"plain", "3"}, {"new", "4"}})
        import.set(item);
    EXPECT_EQ(import.unchanged, (Names{"spelt", "same"}));
    EXPECT_EQ(import.updated, (Names{"other", "plain"}));
    EXPECT_EQ(import.unsignedNow, Names{"other"});
    EXPECT_EQ(import.added, Names{"new"});
    EXPECT_TRUE(metaData.verifySignature("same", 1, {1, 2}));
    EXPECT_TRUE(metaData.verifySignature("spelt", 1, {1, 2}));
    EXPECT_EQ(metaData.get("other"), "2");
    import.takeBack();
    EXPECT_EQ(metaData.get("other"), "{\"a\":1}");
    EXPECT_EQ(metaData.get("plain"), "{\"a\":1}");
    EXPECT_FALSE(metaData.exists("new"));
}

}  // namespace
}  // namespace tarvo::core
