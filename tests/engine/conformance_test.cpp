// Databases against file schemas and the catalogue: each thing that does not agree, and nothing
// else.
#include "engine/validation/conformance.h"
#include "tests/engine/hostile.h"

#include <cmath>

namespace tarvo::engine::validation {
namespace {

using namespace testing;
using schema::AttributeRecord;

class Conformance : public ::testing::Test {
protected:
    // A file of these attributes beside its positions.
    void create(const std::vector<AttributeRecord>& attributes,
                const std::vector<std::pair<std::string, std::string>>& items = {}) {
        std::filesystem::remove(m_file);
        session::Session::create(m_file, settings(1, 100), "test", attributes, items);
    }
    // Points whose attribute has these values.
    void fill(const std::string& attribute, std::vector<double> values) {
        session::Session session(m_file, {}, "test");
        session.begin("fill", "test", "", "");
        const double xyz[3] = {1, 2, 3};
        query::InsertQuery query(session);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz, 0);
        query.bind(attribute, QRB_DATA_TYPE_DOUBLE, values.data(), 8);
        query.next(static_cast<std::uint32_t>(values.size()));
        query::commit(session);
    }
    std::string deviationsFrom(const std::string& attributes, const std::string& items = "",
                               bool strict = false) {
        session::Session session(m_file, {}, "test");
        std::string text;
        for (const Deviation& one :
             deviations(session,
                        readFileSchema(R"({"identifier":"i","extension":"e","attributes":[)" +
                                       attributes + R"(],"metadata":[)" + items + "]}"),
                        strict))
            text += one.line + "\n";
        return text;
    }

    TemporaryFolder m_folder;
    const std::string m_file = m_folder.file("a.qrbx");
};

TEST_F(Conformance, TellsWhatADefinitionHoldsOtherwise) {
    struct Case {
        const char* name;
        std::function<void(AttributeRecord&)> change;
        const char* told;
    };
    const auto range = [](double minimum, double maximum, double resolution) {
        return [=](AttributeRecord& record) {
            record.minimumValue = record.defaultValue = minimum;
            record.maximumValue = maximum;
            record.resolution = resolution;
            record.invalidValue = std::nan("");
        };
    };
    const auto invalid = [](double value) {
        return [=](AttributeRecord& record) { record.invalidValue = value; };
    };
    const Case cases[] = {
        {"tarvo.class", range(0, 65535, 1), ""},
        {"tarvo.class", range(0, 255, 1), ""},
        {"tarvo.class", range(-1, 100, 1), "data type INT8, not UINT16"},
        {"tarvo.class", range(0, 65536, 1), "data type UINT32, not UINT16"},
        {"tarvo.class", range(0, 1, 0.5), "data type SINGLE, not UINT16"},
        {"tarvo.event_index", range(0, 100, 0.5), "data type SINGLE, not UINT32"},
        {"tarvo.accelerometer_raw", range(-2147483648.0, 2147483647, 1), ""},
        {"tarvo.accelerometer_raw", range(0, 2147483647, 1), "data type UINT32, not INT32"},
        {"tarvo.accelerometer_raw", range(0, 65535, 1), ""},
        {"tarvo.accelerometer_raw", range(-1, 1, 0.5), "data type SINGLE, not INT32"},
        {"tarvo.deviation", range(-1, 32767, 1), ""},
        {"tarvo.deviation", range(0, 65535, 1), "data type UINT16, not INT16"},
        {"tarvo.deviation", range(-1, 32768, 1), "data type INT32, not INT16"},
        {"tarvo.echo_first", range(0, 9, 1), ""},
        {"tarvo.echo_first", range(-9, 9, 1), "data type INT8, not UINT64"},
        {"tarvo.amplitude", range(-300, 300, 0.01), ""},
        {"tarvo.amplitude", range(-300, 300, 0.010000000001), ""},
        {"tarvo.amplitude", range(-300, 300, 0.0125), "resolution 0.0125, not 0.01 or finer"},
        {"tarvo.amplitude", range(-100, 100, 1), "resolution 1, not 0.01 or finer"},
        {"tarvo.amplitude", range(0, 70000, 0.001), "data type DOUBLE, not SINGLE"},
        {"tarvo.amplitude", range(0, 16777216, 1),
         "data type UINT32, not SINGLE|resolution 1, not 0.01 or finer"},
        {"tarvo.selected", range(0, 255, 1), ""},
        {"tarvo.selected", range(-1, 1, 1), "data type INT8, not UINT8"},
        {"tarvo.selected", range(0, 256, 1), "data type UINT16, not UINT8"},
        {"tarvo.covariances", range(-1, 1, 0), ""},
        {"tarvo.covariances", range(0, 4294967295, 1), "resolution 1, not floating-point numbers"},
        {"tarvo.covariances", range(0, 18446744073709551616.0, 1),
         "data type UINT64, not DOUBLE|resolution 1, not floating-point numbers"},
        {"tarvo.covariances", range(-1, 1, 0.5), "resolution 0.5, not floating-point numbers"},
        {"tarvo.covariances", [](AttributeRecord& record) { record.length = 5; },
         "length 5, not 6"},
        {"tarvo.amplitude", [](AttributeRecord& record) { record.unitSymbol = "m"; },
         "unit \"m\", not \"dB\""},
        {"tarvo.deviation", invalid(7), "invalid value 7, not -1"},
        {"tarvo.deviation", invalid(std::nan("")), ""},
        {"tarvo.amplitude", invalid(7), "invalid value 7, not none"},
    };
    for (const Case& one : cases) {
        AttributeRecord changed = session::defaultAttribute(one.name);
        one.change(changed);
        create({changed});
        std::string expected;
        const std::string told = one.told;
        for (std::size_t begin = 0; begin < told.size();) {
            const std::size_t end = std::min(told.find('|', begin), told.size());
            expected += std::string("The point attribute \"") + one.name + "\" has the " +
                        told.substr(begin, end - begin) + ".\n";
            begin = end + 1;
        }
        EXPECT_EQ(deviationsFrom("\"" + std::string(one.name) + "\"", "", false), expected);
    }
}

TEST_F(Conformance, TellsValuesBeyondThePlannedRangeFromTheFirstStep) {
    AttributeRecord amplitude = session::defaultAttribute("tarvo.amplitude");
    amplitude.minimumValue = -400;
    amplitude.maximumValue = 400;
    amplitude.resolution = 0.001;
    const auto told = [&](const AttributeRecord& record, const std::vector<double>& values) {
        create({record});
        EXPECT_EQ(deviationsFrom("\"" + record.name + "\""), "");  // no values yet
        fill(record.name, values);
        return deviationsFrom("\"" + record.name + "\"");
    };
    const std::string name = "The point attribute \"tarvo.amplitude\" has values ";
    EXPECT_EQ(told(amplitude, {-327.684, 327.674}), "");
    EXPECT_EQ(told(amplitude, {-327.686, 0}),
              name + "down to -327.686, below the minimum -327.68.\n");
    EXPECT_EQ(told(amplitude, {-400, 327.676}),
              name + "down to -400, below the minimum -327.68.\n" + name +
                  "up to 327.676, above the maximum 327.67.\n");
    // Points without a value have none that is too small.
    AttributeRecord angle = session::defaultAttribute("tarvo.angle_of_incidence");
    angle.minimumValue = -1000;
    EXPECT_EQ(told(angle, {-1, -1}), "");
    EXPECT_EQ(told(angle, {-1, -2}),
              "The point attribute \"tarvo.angle_of_incidence\" has values down to -2, below the "
              "minimum 0.\n");
    // Nor where the file itself does not know that number as none.
    angle.invalidValue = std::nan("");
    EXPECT_EQ(told(angle, {-1, 5}), "");
    AttributeRecord temperature = session::defaultAttribute("tarvo.temperature");
    temperature.maximumValue = 5000;
    temperature.invalidValue = std::nan("");
    EXPECT_EQ(told(temperature, {20, 4001}), "");
    EXPECT_EQ(told(temperature, {4001, 4002}),
              "The point attribute \"tarvo.temperature\" has values up to 4002, above the maximum "
              "4000.\n");
}

TEST_F(Conformance, TellsWhatIsMissingAndTooMuchInTheOrderOfTheSchema) {
    create({record("own", 0, 1), session::defaultAttribute("tarvo.class")},
           {{"own", "1"}, {"tarvo.geo_tag", "{\"crs\": 5}"}});
    EXPECT_EQ(deviationsFrom(R"("xyz*", "own?", "tarvo.class")", R"("own?")", false), "");
    const std::string strict =
        deviationsFrom(R"("b", "c?", "own*", "a")", R"("z", "y?", "x")", true);
    EXPECT_EQ(strict,
              "The primary point attribute is \"xyz\", not \"own\".\n"
              "The point attribute \"b\" is missing.\n"
              "The point attribute \"a\" is missing.\n"
              "The point attribute \"xyz\" is not part of the schema.\n"
              "The point attribute \"tarvo.class\" is not part of the schema.\n"
              "The metadata item \"z\" is missing.\n"
              "The metadata item \"x\" is missing.\n"
              "The metadata item \"own\" is not part of the schema.\n"
              "The metadata item \"tarvo.geo_tag\" is not part of the schema.\n");
    EXPECT_EQ(deviationsFrom("", R"("tarvo.geo_tag")")
                  .find("The metadata item \"tarvo.geo_tag\": /crs: expected "),
              0u);
    // What is wrong with the file is no matter of schemas.
    {
        session::Session session(m_file, {}, "test");
        session.begin("wrong", "test", "", "");
        session.change().metaData["tarvo.geo_tag"].value.checksum ^= 1;
        query::commit(session);
    }
    EXPECT_EQ(outcomeOf([&] { (void)deviationsFrom("", R"("tarvo.geo_tag?")"); }).code,
              ErrorCode::Damaged);
    EXPECT_EQ(deviationsFrom("", R"("own")"), "");
}

TEST(FileSchemas, AreReadWhole) {
    const FileSchema schema = readFileSchema(
        R"({"identifier":"i","extension":"e","attributes":["a","b?","c*","d\u0000?"],"metadata":["m?"]})");
    std::string text = schema.identifier + " " + schema.extension + ":";
    for (const auto* items : {&schema.attributes, &schema.metaData})
        for (const FileSchema::Item& item : *items)
            text += " " + item.name + (item.optional ? "?" : "") + (item.primary ? "*" : "");
    EXPECT_EQ(text, std::string("i e: a b? c* d\0? m?", 19));
    EXPECT_EQ(schema.primary(), &schema.attributes[2]);
    EXPECT_FALSE(
        readFileSchema(R"({"identifier":"","extension":"","attributes":["a"],"metadata":[]})")
            .primary());
    const auto refusal = [](const std::string& attributes, const std::string& items = "") {
        return outcomeOf([&] {
                   (void)readFileSchema(R"({"identifier":"i","extension":"e","attributes":[)" +
                                        attributes + R"(],"metadata":[)" + items + "]}");
               })
            .text;
    };
    const std::string start = "The file schema is not valid: ";
    EXPECT_EQ(refusal(R"("a", 1)"), start + "in \"attributes\", element 1 is no text.");
    EXPECT_EQ(refusal(R"("a", "?")"), start + "in \"attributes\", element 1 is no name.");
    EXPECT_EQ(refusal("", R"("")"), start + "in \"metadata\", element 0 is no name.");
    EXPECT_EQ(refusal(R"("a*", "a")"), start + "in \"attributes\", \"a\" stands twice.");
    EXPECT_EQ(refusal(R"("a", "c*", "b*", "d*")"),
              start + "it has two primary attributes, \"c\" and \"b\".");
    EXPECT_EQ(
        refusal(R"("a*")", R"("m*")"),
        start + "the metadata item \"m\" is marked as primary, which only attributes can be.");
}

}  // namespace
}  // namespace tarvo::engine::validation
