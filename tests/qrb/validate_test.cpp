// Files against file schemas and metadata items against JSON schemas, on the library itself.
#include "tests/qrb/library.h"

#include "catalogue/catalogue.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>
#include <vector>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

class Validate : public LibraryTest {
protected:
    static std::string schema(const std::string& attributes, const std::string& metaData = "") {
        return R"({"identifier":"own","extension":"own","attributes":[)" + attributes +
               R"(],"metadata":[)" + metaData + "]}";
    }
    // The findings, each without the text above them.
    static std::vector<std::string> findings(const qrb::Pointcloud& cloud,
                                             const std::string& schema, bool strict = false) {
        std::vector<std::string> lines;
        try {
            cloud.management().validate(schema, strict);
        } catch (const qrb::Error& error) {
            EXPECT_EQ(error.code(), QRB_ERROR_VALIDATION) << error.what();
            std::istringstream details(error.details());
            for (std::string line; std::getline(details, line);)
                lines.push_back(line);
        }
        return lines;
    }
    using Lines = std::vector<std::string>;
};

TEST_F(Validate, EveryFileSchemaMakesFilesThatAgreeWithIt) {
    const qrb::Context context("OFF", "");
    for (const auto& entry : catalogue::schemas()) {
        std::size_t mandatory = 0;
        for (const bool optionals : {false, true}) {
            SCOPED_TRACE(entry.identifier + (optionals ? " with optionals" : ""));
            const std::string name = file(entry.identifier + (optionals ? "+" : ""));
            qrb::Pointcloud cloud(context);
            cloud.create(name, CreateSettings(context), entry.json, optionals);
            EXPECT_TRUE(cloud.isOpen());
            cloud.close();
            cloud.open(name, OpenSettings(context));
            EXPECT_EQ(findings(cloud, entry.json, true), Lines{});
            const std::size_t parts =
                cloud.pointAttributes().list().size() + cloud.metaData().list().size();
            if (!optionals)
                mandatory = parts;
            EXPECT_EQ(parts > mandatory, optionals && entry.json.find('?') != std::string::npos);
            Lines placeholders;
            cloud.changelog().exportToTextfile(name + ".txt");
            std::ostringstream changelogText;
            changelogText << std::ifstream(name + ".txt").rdbuf();
            const std::string changelog = changelogText.str();
            for (const catalogue::MetaDataEntry& item : catalogue::metaData()) {
                const std::string quoted = "\"" + std::string(item.name);
                const bool named = entry.json.find(quoted + "\"") != std::string::npos;
                const bool optional = entry.json.find(quoted + "?\"") != std::string::npos;
                // What nobody knows is not made up: neither said where it can be left open, nor
                // there where it can be left out.
                const bool known = !item.neutral.empty();
                const bool exists = named || (optional && optionals && known);
                EXPECT_EQ(cloud.metaData().exists(item.name), exists) << item.name;
                if (exists && known) {
                    EXPECT_EQ(cloud.metaData().get(item.name), item.neutral);
                } else if (exists) {
                    placeholders.push_back("The metadata item \"" + item.name +
                                           "\" holds the example of the catalogue: replace it by "
                                           "what is true.");
                    EXPECT_NE(changelog.find("Placeholders: "), std::string::npos);
                    EXPECT_NE(changelog.find(" " + item.name), std::string::npos) << changelog;
                }
            }
            EXPECT_EQ(cloud.management().findings(entry.json, true).notes, placeholders);
            EXPECT_EQ(changelog.find("Placeholders:") == std::string::npos, placeholders.empty());
            const std::string primary = cloud.pointAttributes().primaryAttributeName();
            EXPECT_NE(entry.json.find("\"" + primary + "*\""), std::string::npos);
            // It takes points: defaults for all that isn't given.
            TransactionGuard transaction(cloud.transactions(), "Insert", "tests");
            const PointAttribute definition = cloud.pointAttributes().get(primary);
            std::vector<double> values(definition.length, definition.minimumValue + 1);
            auto query = cloud.insert();
            query.bind(primary, DataType::DOUBLE, values.data(), 0);
            EXPECT_EQ(query.next(1), 1u);
            query.close();
            transaction.commit();
            EXPECT_EQ(findings(cloud, entry.json, true), Lines{});
        }
    }
}

TEST_F(Validate, TellsAllThatIsMissingOrTooMuch) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    CreateSettings settings(context);
    settings.primaryAttribute = attribute("tarvo.xyz", -10, 10, 0.5, 3);
    cloud.create(file("cloud"), settings);
    {
        TransactionGuard transaction(cloud.transactions(), "Add", "tests");
        cloud.pointAttributes().add(attribute("tarvo.reflectance", 0, 5, 0.01));
        cloud.pointAttributes().add(attribute("tarvo.target_count", -5, 300, 1));
        cloud.pointAttributes().add(attribute("own", 0, 1, 1));
        cloud.metaData().set("own.item", "1");
        cloud.metaData().set("tarvo.geo_tag", R"({"crs": 5})");
        transaction.commit();
    }
    EXPECT_EQ(findings(cloud, schema(R"("own", "tarvo.id?", "other?")", R"("own.item")")), Lines{});
    EXPECT_EQ(
        findings(cloud, schema(R"("tarvo.id*", "own", "gone")", R"("own.item", "gone.item")")),
        (Lines{"The primary point attribute is \"tarvo.xyz\", not \"tarvo.id\".",
               "The point attribute \"gone\" is missing.",
               "The metadata item \"gone.item\" is missing."}));
    const Lines strict = findings(cloud, schema(R"("tarvo.timestamp?", "own")", ""), true);
    EXPECT_EQ(strict,
              (Lines{"The point attribute \"tarvo.xyz\" is not part of the schema.",
                     "The point attribute \"tarvo.reflectance\" is not part of the schema.",
                     "The point attribute \"tarvo.target_count\" is not part of the schema.",
                     "The metadata item \"own.item\" is not part of the schema.",
                     "The metadata item \"tarvo.geo_tag\" is not part of the schema."}));

    // Definitions that hold less than the catalogue's, or something else.
    EXPECT_EQ(findings(cloud, schema(R"("tarvo.xyz*", "tarvo.reflectance?")")),
              (Lines{"The point attribute \"tarvo.xyz\" has the unit \"\", not \"m\".",
                     "The point attribute \"tarvo.xyz\" has the resolution 0.5, not 0.00025 or "
                     "finer.",
                     "The point attribute \"tarvo.reflectance\" has the unit \"\", not \"dB\"."}));
    EXPECT_EQ(findings(cloud, schema(R"("tarvo.target_count")")),
              Lines{"The point attribute \"tarvo.target_count\" has the data type INT16, not "
                    "UINT8."});

    const Lines items = findings(cloud, schema("", R"("tarvo.geo_tag")"));
    ASSERT_FALSE(items.empty());
    EXPECT_EQ(items[0].find("The metadata item \"tarvo.geo_tag\": /crs: expected"), 0u) << items[0];
}

TEST_F(Validate, LooksAtTheValuesThatAreThere) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    CreateSettings settings(context);
    settings.primaryAttribute = cloud.pointAttributes().getDefault("tarvo.xyz");
    settings.primaryAttribute.maximumValue = 1e6;
    cloud.create(file("cloud"), settings);
    PointAttribute count = cloud.pointAttributes().getDefault("tarvo.reflectance");
    count.minimumValue = -5000;
    count.resolution = 0.001;
    {
        TransactionGuard transaction(cloud.transactions(), "Add", "tests");
        cloud.pointAttributes().add(count);
        transaction.commit();
    }
    const std::string wanted = schema(R"("tarvo.xyz*", "tarvo.reflectance")");
    EXPECT_EQ(findings(cloud, wanted, true), Lines{});
    TransactionGuard transaction(cloud.transactions(), "Insert", "tests");
    const double values[][4] = {{0, 535000, 0, 0}, {1, 700000.5, 2, -4000}};
    auto query = cloud.insert();
    query.bind("tarvo.xyz", DataType::DOUBLE, &values[0][0], 32);
    query.bind("tarvo.reflectance", DataType::DOUBLE, &values[0][3], 32);
    ASSERT_EQ(query.next(2), 2u);
    query.close();
    // Values of the pending transaction count too.
    const Lines lines = findings(cloud, wanted, true);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0],
              "The point attribute \"tarvo.xyz[1]\" has values up to 700000.5, above the maximum "
              "535000.");
    EXPECT_EQ(lines[1].find("The point attribute \"tarvo.reflectance\" has values down to -4000, "),
              0u);
}

// The catalogue's invalid value lies beyond its range: points without a value are no fault, though
// the file's own definition does not say so.
TEST_F(Validate, LetsThePlannedInvalidValueStandBeyondTheRange) {
    const qrb::Context context("OFF", "");
    const std::vector<std::string> names = qrb::Pointcloud(context).pointAttributes().listDefault();
    int above = 0;
    int below = 0;
    for (const std::string& name : names) {
        const PointAttribute usual = qrb::Pointcloud(context).pointAttributes().getDefault(name);
        if (name == "tarvo.id" || usual.length != 1 || !std::isfinite(usual.invalidValue) ||
            usual.resolution == 0 ||
            (usual.invalidValue >= usual.minimumValue && usual.invalidValue <= usual.maximumValue))
            continue;
        const bool isAbove = usual.invalidValue > usual.maximumValue;
        (isAbove ? above : below)++;
        qrb::Pointcloud cloud(context);
        CreateSettings settings(context);
        settings.primaryAttribute = attribute("p", -10, 10, 1);
        cloud.create(file(name), settings);
        PointAttribute own = usual;
        own.minimumValue = std::min(usual.minimumValue, usual.invalidValue - 2 * usual.resolution);
        own.maximumValue = std::max(usual.maximumValue, usual.invalidValue + 2 * usual.resolution);
        own.defaultValue = own.minimumValue;
        own.invalidValue = std::nan("");
        if (own.resolution == 1 && own.dataType() == DataType::DOUBLE)
            continue;  // whole numbers beyond what a type holds
        TransactionGuard transaction(cloud.transactions(), "Insert", "tests");
        cloud.pointAttributes().add(own);
        const double values[] = {usual.invalidValue, usual.minimumValue, usual.maximumValue};
        auto query = cloud.insert();
        const double position = 1;
        query.bind("p", DataType::DOUBLE, &position, 0);
        query.bind(name, DataType::DOUBLE, values, 8);
        ASSERT_EQ(query.next(3), 3u);
        query.close();
        const auto told = [&] {
            Lines lines = findings(cloud, schema("\"" + name + "\""));
            std::erase_if(lines, [](const std::string& line) {
                return line.find(" has values ") == std::string::npos;
            });
            return lines;
        };
        EXPECT_EQ(told(), Lines{}) << name;
        const double beyond = isAbove ? own.maximumValue : own.minimumValue;
        auto more = cloud.insert();
        more.bind("p", DataType::DOUBLE, &position, 0);
        more.bind(name, DataType::DOUBLE, &beyond, 0);
        ASSERT_EQ(more.next(1), 1u);
        more.close();
        EXPECT_EQ(told().size(), 1u) << name;
    }
    EXPECT_GT(above, 0);
    EXPECT_GT(below, 0);
}

TEST_F(Validate, RefusesWhatIsNoFileSchema) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    cloud.create(file("cloud"), CreateSettings(context));
    const auto refused = [&](const std::string& text) {
        EXPECT_FALSE(std::filesystem::exists(file("new")));
        qrb::Pointcloud other(context);
        const std::string here =
            failure([&] { cloud.management().validate(text, false); }, QRB_ERROR_ARGUMENT);
        EXPECT_EQ(failure([&] { other.create(file("new"), CreateSettings(context), text, true); },
                          QRB_ERROR_ARGUMENT),
                  here);
        return here;
    };
    EXPECT_NE(refused("").find("not valid JSON"), std::string::npos);
    EXPECT_NE(refused("[]").find("not a JSON object"), std::string::npos);
    EXPECT_NE(refused(R"({"identifier": "a"})").find("\"extension\""), std::string::npos);
    EXPECT_NE(refused(schema("5")).find("element 0 is no text"), std::string::npos);
    EXPECT_NE(refused(schema(R"("*")")).find("element 0 is no name"), std::string::npos);
    EXPECT_NE(refused(schema(R"("a", "a?")")).find("twice"), std::string::npos);
    EXPECT_NE(refused(schema(R"("a*", "b*")")).find("two primary"), std::string::npos);
    EXPECT_NE(refused(schema("", R"("a*")")).find("only attributes"), std::string::npos);
}

TEST_F(Validate, FilesBySchemaTakeTheSettingsDefinitionOrNothing) {
    const qrb::Context context("OFF", "");
    CreateSettings settings(context);
    settings.primaryAttribute = attribute("tarvo.range", 0, 10, 0.5);
    {
        qrb::Pointcloud cloud(context);
        cloud.create(file("own"), settings, schema(R"("tarvo.class", "tarvo.range*")"), false);
        EXPECT_EQ(cloud.pointAttributes().get("tarvo.range").resolution, 0.5);
        EXPECT_EQ(cloud.pointAttributes().list(),
                  (std::vector<std::string>{"tarvo.range", "tarvo.id", "tarvo.class"}));
    }
    {
        qrb::Pointcloud cloud(context);
        cloud.create(file("none"), settings, schema(R"("tarvo.class?", "tarvo.range?")"), true);
        EXPECT_EQ(cloud.pointAttributes().primaryAttributeName(), "tarvo.range");
    }
    qrb::Pointcloud cloud(context);
    EXPECT_NE(failure([&] { cloud.create(file("new"), settings, schema(R"("own")"), false); },
                      QRB_ERROR_NOT_FOUND)
                  .find("\"own\""),
              std::string::npos);
    EXPECT_NE(failure([&] { cloud.create(file("new"), settings, schema("", R"("own")"), false); },
                      QRB_ERROR_NOT_FOUND)
                  .find("\"own\""),
              std::string::npos);
    EXPECT_FALSE(cloud.isOpen());
    EXPECT_FALSE(std::filesystem::exists(file("new")));
    // What is not included need not be known.
    cloud.create(file("new"), settings, schema(R"("own?")", R"("own?")"), false);
    qrb::Pointcloud second(context);
    failure([&] { second.create(file("new"), settings, schema(""), false); }, QRB_ERROR_EXISTS);
    EXPECT_TRUE(std::filesystem::exists(file("new")));
}

TEST_F(Validate, MetaDataItemsAgainstTheirOwnOrAGivenSchema) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    cloud.create(file("cloud"), CreateSettings(context));
    MetaData& items = cloud.metaData();
    const auto* entry = catalogue::findMetaData("tarvo.geo_tag");
    TransactionGuard transaction(cloud.transactions(), "Set", "tests");
    items.set("tarvo.geo_tag", entry->example);
    items.set("own", R"({"frame": {"units": 5}, "b": true})");
    items.validate("tarvo.geo_tag", "");
    items.validate("own", R"({"type": "object"})");
    failure([&] { items.validate("own", ""); }, QRB_ERROR_NOT_FOUND);
    failure([&] { items.validate("gone", "{}"); }, QRB_ERROR_NOT_FOUND);
    failure([&] { items.validate("own", "{\"$ref\": \"#\"}"); }, QRB_ERROR_ARGUMENT);
    EXPECT_EQ(failure(
                  [&] {
                      items.validate("own", R"({"properties": {"b": {"type": "null"}, "frame":
                          {"properties": {"units": {"type": "string"}}}}})");
                  },
                  QRB_ERROR_VALIDATION),
              "The metadata item \"own\" does not satisfy its JSON schema: 2 problems.\n"
              "/frame/units: expected a string, found 5\n/b: expected null, found true or false");
    items.validateJson("[1]", R"({"items": {"type": "number"}})");
    EXPECT_NE(
        failure([&] { items.validateJson("[1", "{}"); }, QRB_ERROR_ARGUMENT).find("At byte 3"),
        std::string::npos);
}

// Names may hold what separates the parts of a line.
TEST_F(Validate, TellsFindingsAsRecords) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    EXPECT_NE(failure([&] { (void)cloud.inspect(6); }, QRB_ERROR_STATE), "");
    const Findings own = cloud.metaData().findingsOfJson(
        R"({"a: b": 5, "c": "x"})",
        R"({"properties": {"a: b": {"type": "string"}, "c": {"format": "iri"}},
            "required": ["/d: e"]})");
    ASSERT_EQ(own.list.size(), 2u);
    EXPECT_EQ(own.list[0].pointer, "");
    EXPECT_EQ(own.list[0].keyword, "required");
    EXPECT_EQ(own.list[0].text, "the member \"/d: e\" is missing");
    EXPECT_EQ(own.list[1].pointer, "/a: b");
    EXPECT_EQ(own.list[1].keyword, "type");
    EXPECT_EQ(own.list[1].expected, "a string");
    EXPECT_EQ(own.list[1].found, "5");
    EXPECT_EQ(own.list[1].line, "/a: b: expected a string, found 5");
    EXPECT_EQ(own.notes, Lines{"The format \"iri\" is not checked."});

    cloud.create(file("cloud"), CreateSettings(context));
    {
        TransactionGuard transaction(cloud.transactions(), "Set", "tests");
        cloud.metaData().set("tarvo.geo_tag", R"({"crs": 5})");
        transaction.commit();
    }
    const Findings none = cloud.metaData().findings("tarvo.geo_tag", "{}");
    EXPECT_TRUE(none.list.empty() && none.notes.empty());
    const Findings all =
        cloud.management().findings(schema(R"("gone")", R"("tarvo.geo_tag")"), false);
    ASSERT_GE(all.list.size(), 2u);
    EXPECT_EQ(all.list[0].attribute, "gone");
    EXPECT_EQ(all.list[0].line, "The point attribute \"gone\" is missing.");
    EXPECT_EQ(all.list[1].item, "tarvo.geo_tag");
    EXPECT_EQ(all.list[1].pointer, "/crs");
    EXPECT_EQ(all.list[1].line, "The metadata item \"tarvo.geo_tag\": /crs: " + all.list[1].text);
    // A refusal leaves none of the findings before it.
    failure([&] { (void)cloud.metaData().findingsOfJson("[", "{}"); }, QRB_ERROR_ARGUMENT);
    failure([&] { (void)cloud.inspect(6); }, QRB_ERROR_STATE);
}

}  // namespace
