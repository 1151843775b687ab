// Reports: what they tell agrees with the points, and what a file holds can't break out of them.
#include "tests/engine/database.h"

#include "engine/base/utf8.h"
#include "engine/query/levelofdetail.h"
#include "engine/report/forms.h"
#include "engine/report/report.h"
#include "engine/report/text.h"

#include "numbers/numbertext.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <png.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::engine {
namespace {

using namespace testing;

constexpr const char* hostile = "<script>alert(\"1\")</script> & 'x', \"y\"\nnext,\u2028line \x7f";

// A point with a height and a class, both of which may be invalid (NaN, 99).
struct Sighting {
    double position[3];
    double height;
    std::uint8_t kind;
    std::uint64_t stamp;
};

class ReportTest : public ::testing::Test {
protected:
    // Attributes beside the position: with an invalid value, named values, whole 64-bit numbers,
    // floats, and one value for all; every text hostile.
    void create(std::uint32_t leafSize = 100) {
        schema::AttributeRecord height = record("height", 0, 100, 0.5);
        height.invalidValue = -1;
        height.unitSymbol = hostile;
        schema::AttributeRecord kind = record("kind", 0, 99);
        kind.invalidValue = 99;
        kind.namedValues = "0=none\n 2 = a, \"quoted\" <b>\r\n=nothing\n3\n1000=far\n99=lost";
        schema::AttributeRecord stamp = record("stamp", 0, 18446744073709551616.0);
        schema::AttributeRecord noise = record("noise", -1e300, 1e300, 0);
        schema::AttributeRecord fixed = record("fixed", 0, 10);
        fixed.defaultValue = 7;
        fixed.storageClass = 1;
        for (schema::AttributeRecord* r : {&height, &kind, &stamp, &noise, &fixed})
            r->title = r->description = r->tags = hostile;
        session::CreateSettings create = settings(1, leafSize);
        create.primaryAttribute.title = hostile;
        session::Session::create(folder.file("a.qrbx"), create, "test",
                                 {height, kind, stamp, noise, fixed});
        open();
    }
    void open() {
        session = std::make_unique<session::Session>(folder.file("a.qrbx"), session::OpenSettings(),
                                                     "test");
    }
    void insertSightings(const std::vector<Sighting>& points) {
        query::InsertQuery query(*session);
        const auto* first = points.data();
        const auto bind = [&](const char* name, std::uint32_t type, const void* buffer) {
            query.bind(name, type, const_cast<void*>(buffer), sizeof(Sighting));
        };
        bind("xyz", QRB_DATA_TYPE_DOUBLE, &first->position);
        bind("height", QRB_DATA_TYPE_DOUBLE, &first->height);
        bind("kind", QRB_DATA_TYPE_UINT8, &first->kind);
        bind("stamp", QRB_DATA_TYPE_UINT64, &first->stamp);
        bind("noise", QRB_DATA_TYPE_DOUBLE, &first->position[0]);
        query.next(static_cast<std::uint32_t>(points.size()));
    }
    static std::vector<Sighting> sightings(std::size_t count) {
        std::vector<Sighting> points(count);
        for (std::size_t i = 0; i < count; ++i) {
            const auto x = static_cast<double>(i);
            points[i] = {{std::fmod(x * 37, 800), std::fmod(x * 11, 400), x / 100},
                         i % 10 == 0 ? -1 : std::fmod(x, 200) / 2,
                         static_cast<std::uint8_t>(i % 7 == 0 ? 99 : i % 3),
                         (std::uint64_t(1) << 63) + i};
        }
        return points;
    }
    std::string report(std::uint8_t format, std::uint64_t limit = report::sampledPoints) {
        return report::inspect(*session, format, limit);
    }
    // With 1000 points, a metadata item, hostile texts everywhere.
    void fill() {
        create();
        session->begin(hostile, hostile, hostile, "");
        insertSightings(sightings(1000));
        session->metaData().set(hostile, "{}");
        query::commit(*session);
    }

    TemporaryFolder folder;
    std::unique_ptr<session::Session> session;
};

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

std::string unescaped(std::string text) {
    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&#39;", "'"}, {"&amp;", "&"}})
        text = replaced(text, from, to);
    return text;
}

using CsvRow = std::vector<std::string>;

// What a reader of RFC 4180 makes of the visible text of the histogram report.
std::vector<CsvRow> csvOf(const std::string& html) {
    const std::size_t begin = html.find("<pre>") + 5;
    const std::string text = unescaped(html.substr(begin, html.find("</pre>") - begin));
    std::vector<CsvRow> rows(1, CsvRow(1));
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted && c == '"' && text[i + 1] == '"')
            rows.back().back() += text[++i];
        else if (c == '"')
            quoted = !quoted;
        else if (!quoted && c == ',')
            rows.back().emplace_back();
        else if (!quoted && c == '\n')
            rows.emplace_back(1);
        else
            rows.back().back() += c;
    }
    EXPECT_FALSE(quoted);
    for (const CsvRow& row : rows)
        EXPECT_EQ(row.size(), 7u);
    return rows;
}

// Sums of the counts by "attribute,element"; bins that are part of `bin` only, if given.
std::map<std::string, std::uint64_t> sums(const std::vector<CsvRow>& rows,
                                          const std::string& bin = {}) {
    std::map<std::string, std::uint64_t> result;
    for (std::size_t i = 1; i < rows.size(); ++i)
        if (bin.empty() || rows[i][2] == bin)
            result[rows[i][0] + "," + rows[i][1]] += std::stoull(rows[i][5]);
    return result;
}

// Whether every tag is closed in order and every "&" begins an entity.
::testing::AssertionResult isWellFormed(const std::string& html) {
    std::vector<std::string> open;
    for (std::size_t at = 0; (at = html.find_first_of("<&>", at)) != std::string::npos;) {
        const auto fail = [&](const char* what) {
            return ::testing::AssertionFailure() << what << ": " << html.substr(at, 60);
        };
        if (html[at] == '>')
            return fail("A loose >");
        const std::size_t end = html.find_first_of(html[at] == '&' ? ";" : ">", at);
        if (end == std::string::npos)
            return fail("Not closed");
        const std::string inside = html.substr(at + 1, end - at - 1);
        if (html[at] == '&') {
            if (inside.empty() || inside.find_first_not_of(
                                      "#abcdefghijklmnopqrstuvwxyz0123456789") != std::string::npos)
                return fail("No entity");
        } else if (inside[0] == '/') {
            if (open.empty() || open.back() != inside.substr(1))
                return fail("Closed in vain");
            open.pop_back();
        } else {
            if (std::count(inside.begin(), inside.end(), '"') % 2 != 0 ||
                inside.find('<') != std::string::npos)
                return fail("A broken tag");
            if (inside.back() != '/')
                open.push_back(inside.substr(0, inside.find(' ')));
        }
        at = end + 1;
    }
    if (!open.empty())
        return ::testing::AssertionFailure() << open.back() << " stays open";
    return ::testing::AssertionSuccess();
}

TEST_F(ReportTest, JsonAgreesWithThePoints) {
    fill();
    const rapidjson::Document json = parseJson(report(2), "the report");
    EXPECT_EQ(json["points"].GetUint64(), 1000u);
    EXPECT_EQ(json["database"]["transaction"].GetUint(), 2u);
    EXPECT_FALSE(json["database"]["pending"].GetBool());
    EXPECT_EQ(json["extent"]["maximum"][2].GetDouble(), 9.99);
    EXPECT_EQ(json["extent"]["size"].Size(), 3u);

    std::uint64_t leaves = 0;
    std::uint64_t points = 0;
    for (const auto& level : json["index"]["levels"].GetArray()) {
        leaves += level["leaves"].GetUint64();
        points += level["points"].GetUint64();
    }
    EXPECT_GE(leaves, 10u);
    EXPECT_EQ(leaves, json["index"]["leaves"].GetUint64());
    EXPECT_EQ(points, 1000u);

    std::uint64_t bytes = 0;
    double share = 0;
    std::map<std::string, const rapidjson::Value*> attributes;
    for (const auto& attribute : json["attributes"].GetArray()) {
        attributes[attribute["name"].GetString()] = &attribute;
        bytes += attribute["bytes"].GetUint64();
        share += attribute["share"].GetDouble();
    }
    EXPECT_EQ(bytes, json["storage"]["points"].GetUint64());
    EXPECT_NEAR(share, 100, 1e-9);
    std::uint64_t parts = 0;
    for (const auto& part : json["storage"].GetObject())
        parts += part.value.GetUint64();
    EXPECT_EQ(parts, session->fileSize());

    // Doubles would round these.
    EXPECT_EQ((*attributes.at("stamp"))["maximum"][0].GetUint64(), (std::uint64_t(1) << 63) + 999);
    EXPECT_EQ((*attributes.at("height"))["minimum"][0].GetDouble(), 0.5);
    EXPECT_TRUE((*attributes.at("height"))["has_invalid"][0].GetBool());
    EXPECT_EQ((*attributes.at("fixed"))["bytes"].GetUint64(), 0u);
    EXPECT_EQ((*attributes.at("fixed"))["maximum"][0].GetDouble(), 7);
    EXPECT_EQ(json["metadata_items"][0]["bytes"].GetUint64(), 2u);
}

TEST_F(ReportTest, HistogramsCountEveryPointOnce) {
    fill();
    const std::vector<CsvRow> rows = csvOf(report(4));
    EXPECT_EQ(rows[0], (CsvRow{"attribute", "element", "bin", "from", "to", "count", "name"}));
    const auto all = sums(rows);
    EXPECT_EQ(all.size(), 9u);
    for (const auto& [element, sum] : all)
        EXPECT_EQ(sum, 1000u) << element;
    const auto invalid = sums(rows, "invalid");
    EXPECT_EQ(invalid, (std::map<std::string, std::uint64_t>{{"height,0", 100}, {"kind,0", 143}}));

    // What the filter counts within each bin is what the bin says.
    double last = -1;
    for (const CsvRow& row : rows) {
        if (row[0] != "height" || row[2] == "invalid")
            continue;
        EXPECT_GT(std::stod(row[3]), last);
        last = std::stod(row[4]);
        EXPECT_EQ(countOf(*session, "height >= " + row[3] + " && height <= " + row[4]),
                  std::stoull(row[5]));
    }
    EXPECT_EQ(last, 99.5);
}

TEST_F(ReportTest, FewValuesHaveABinEachWithItsName) {
    fill();
    std::map<std::string, CsvRow> kinds;
    std::vector<CsvRow> stamps;
    for (const CsvRow& row : csvOf(report(4))) {
        if (row[0] == "kind")
            kinds[row[2] == "invalid" ? "invalid" : row[3]] = row;
        if (row[0] == "stamp")
            stamps.push_back(row);
    }
    EXPECT_EQ(kinds.size(), 4u);  // 3 is in the range but occurs nowhere
    EXPECT_EQ(kinds.at("0"), (CsvRow{"kind", "0", "0", "0", "0", "286", "none"}));
    EXPECT_EQ(kinds.at("2")[6], "a, \"quoted\" <b>");
    EXPECT_EQ(kinds.at("invalid")[6], "lost");
    // Shares are those of all points, in the bars, too.
    EXPECT_NE(report(3).find(">28.6 %<"), std::string::npos);
    ASSERT_FALSE(stamps.empty());
    EXPECT_LE(stamps.size(), 64u);
    EXPECT_EQ(stamps.front()[3], "9223372036854775808");
    EXPECT_EQ(stamps.back()[4], "9223372036854776807");
}

TEST_F(ReportTest, HostileTextsStayTexts) {
    fill();
    for (const std::uint8_t format : {3, 4}) {
        const std::string html = report(format);
        EXPECT_TRUE(isWellFormed(html));
        EXPECT_EQ(html.find("<script"), std::string::npos);
        EXPECT_EQ(html.find("\u2028"), std::string::npos);
        EXPECT_EQ(html.find('\x7f'), std::string::npos);
    }
    EXPECT_NE(report(3).find("&lt;script&gt;alert(&quot;1&quot;)&lt;/script&gt; &amp; &#39;x&#39;"),
              std::string::npos);

    // A text with line ends can't forge lines of the plain form.
    const std::string text = report(1);
    EXPECT_EQ(text.find("\nnext"), std::string::npos);
    EXPECT_NE(text.find("<script>"), std::string::npos);

    const rapidjson::Document json = parseJson(report(2), "the report");
    const std::string title = json["transactions"][1]["title"].GetString();
    EXPECT_EQ(title, hostile);
}

TEST_F(ReportTest, AnEmptyDatabaseHasReportsToo) {
    create();
    EXPECT_NE(report(1).find("no points"), std::string::npos);
    const rapidjson::Document json = parseJson(report(2), "the report");
    EXPECT_EQ(json["index"]["levels"].Size(), 0u);
    EXPECT_TRUE(json["extent"]["minimum"][0].IsNull());
    EXPECT_TRUE(json["attributes"][0]["bytes_per_point"].IsNull());
    const std::string html = report(3);
    EXPECT_TRUE(isWellFormed(html));
    EXPECT_EQ(html.find("<img"), std::string::npos);
    EXPECT_EQ(csvOf(report(4)).size(), 1u);
    EXPECT_THROW(report(6), Failure);
    EXPECT_THROW(report(0), Failure);
}

TEST_F(ReportTest, ThePendingStateIsReported) {
    create();
    session->begin("points", "test", "", "");
    insertSightings(sightings(30));
    const rapidjson::Document json = parseJson(report(2), "the report");
    EXPECT_EQ(json["points"].GetUint64(), 30u);
    EXPECT_TRUE(json["database"]["pending"].GetBool());
    EXPECT_EQ(json["database"]["transaction"].GetUint(), 1u);
    EXPECT_EQ(sums(csvOf(report(4))).at("height,0"), 30u);
    EXPECT_NE(report(1).find("not yet committed"), std::string::npos);
    EXPECT_TRUE(isWellFormed(report(3)));
    session->rollback();
    EXPECT_EQ(csvOf(report(4)).size(), 1u);
}

TEST_F(ReportTest, ElementsWithoutValidValuesAreCountedAsInvalid) {
    create();
    session->begin("points", "test", "", "");
    std::vector<Sighting> points = sightings(50);
    for (Sighting& point : points) {
        point.height = -1;
        point.kind = point.kind == 99 ? 99 : 2;  // one value, but not of all
    }
    insertSightings(points);
    query::commit(*session);
    const std::vector<CsvRow> rows = csvOf(report(4));
    EXPECT_EQ(sums(rows, "invalid").at("height,0"), 50u);
    EXPECT_EQ(sums(rows, "0").count("height,0"), 0u);
    EXPECT_TRUE(isWellFormed(report(3)));
    EXPECT_EQ(report(3).find("points have the value 2"), std::string::npos);
    EXPECT_NE(report(3).find("All 50 points have the value 7"), std::string::npos);
    EXPECT_NE(report(1).find("no values"), std::string::npos);
}

TEST_F(ReportTest, APrimaryAttributeOfOneDimensionHasNoPicture) {
    session::CreateSettings create = settings(1, 100);
    create.primaryAttribute = record("tarvo.id", 0, 100000);
    session::Session::create(folder.file("a.qrbx"), create, "test", amplitudeOnly());
    open();
    session->begin("points", "test", "", "");
    std::vector<std::uint16_t> amplitudes(500);
    for (std::size_t i = 0; i < amplitudes.size(); ++i)
        amplitudes[i] = static_cast<std::uint16_t>(i % 100);
    query::InsertQuery query(*session);
    query.bind("amplitude", QRB_DATA_TYPE_UINT16, amplitudes.data(), sizeof amplitudes[0]);
    query.next(500);
    query::commit(*session);
    const std::string html = report(3);
    EXPECT_TRUE(isWellFormed(html));
    EXPECT_EQ(html.find("Seen from above"), std::string::npos);
    EXPECT_NE(html.find("Histograms"), std::string::npos);
    for (const auto& [element, sum] : sums(csvOf(report(4))))
        EXPECT_EQ(sum, 500u) << element;
    const rapidjson::Document json = parseJson(report(2), "the report");
    EXPECT_EQ(json["extent"]["size"].Size(), 1u);
}

TEST_F(ReportTest, LargeDatabasesAreSampledAndSaySo) {
    fill();
    const std::vector<CsvRow> rows = csvOf(report(4, 300));
    EXPECT_EQ(rows[1][2], "sample");
    const std::uint64_t read = std::stoull(rows[1][5]);
    EXPECT_GT(read, 0u);
    EXPECT_LT(read, 600u);
    auto all = sums(rows);
    all.erase(",");
    for (const auto& [element, sum] : all)
        EXPECT_EQ(sum, read) << element;
    const std::string html = report(3, 300);
    EXPECT_NE(html.find("made from " + std::to_string(read) + " of the points"), std::string::npos);
    EXPECT_EQ(report(3).find("made from"), std::string::npos);
    const auto pictureOf = [](const std::string& text) {
        const std::size_t begin = text.find("data:image");
        return text.substr(begin, text.find('"', begin) - begin);
    };
    EXPECT_NE(pictureOf(html), pictureOf(report(3)));
}

TEST_F(ReportTest, LevelOfDetailPointsAreNoPointsOfTheFile) {
    fill();
    const auto bytesPerPoint = [this] {
        const rapidjson::Document json = parseJson(report(2), "the report");
        return json["attributes"][0]["bytes_per_point"].GetDouble();
    };
    const double before = bytesPerPoint();
    session->begin("detail", "test", "", "");
    session->setLevelOfDetail(1, 20);
    query::updateLevelOfDetail(*session, {});
    query::commit(*session);
    const rapidjson::Document json = parseJson(report(2), "the report");
    EXPECT_EQ(json["points"].GetUint64(), 1000u);
    EXPECT_GT(json["level_of_detail"]["points"].GetUint64(), 0u);
    EXPECT_GT(json["storage"]["level_of_detail"].GetUint64(), 0u);
    EXPECT_EQ(sums(csvOf(report(4))).at("xyz,0"), 1000u);
    EXPECT_EQ(bytesPerPoint(), before);
}

TEST_F(ReportTest, PointsThatTheIndexExcludesAreDamage) {
    fill();
    const report::Facts facts = report::gatherFacts(*session);
    for (std::size_t a = 0; a < facts.attributes.size(); ++a) {
        const schema::ElementStatistics& s = facts.attributes[a].elements[0];
        if (s.minimum == s.maximum)
            continue;
        for (const schema::ElementStatistics& lie :
             {schema::ElementStatistics{s.minimum + 1, s.maximum, true, true},
              schema::ElementStatistics{s.minimum, s.maximum - 1, true, true},
              schema::ElementStatistics{s.minimum, UINT64_MAX, true, true},
              schema::ElementStatistics{0, 0, false, true}}) {
            report::Facts wrong = facts;
            wrong.attributes[a].elements[0] = lie;
            // Of 64-bit numbers that is a range like any other.
            if (lie.maximum > facts.state->attributes[a].grid.maximumCode() ||
                lie.maximum != UINT64_MAX) {
                EXPECT_THROW(report::makeHistograms(*session, wrong, 1), Failure) << a;
            }
            (void)report::drawPicture(*session, wrong, 1);  // and nothing beyond its edges
        }
    }
}

// The picture as a viewer decodes it from the HTML text.
struct Decoded {
    unsigned width = 0;
    unsigned height = 0;
    std::vector<std::uint8_t> rgba;
    const std::uint8_t* at(unsigned x, unsigned y) const { return &rgba[4 * (y * width + x)]; }
};

Decoded firstPicture(const std::string& html) {
    const std::string mark = "data:image/png;base64,";
    const std::size_t begin = html.find(mark) + mark.size();
    const std::string text = html.substr(begin, html.find('"', begin) - begin);
    std::vector<std::uint8_t> png(text.size());
    EXPECT_GT(EVP_DecodeBlock(png.data(), reinterpret_cast<const unsigned char*>(text.data()),
                              static_cast<int>(text.size())),
              0);
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_TRUE(png_image_begin_read_from_memory(&image, png.data(), png.size()));
    image.format = PNG_FORMAT_RGBA;
    Decoded result{image.width, image.height, std::vector<std::uint8_t>(PNG_IMAGE_SIZE(image))};
    EXPECT_TRUE(png_image_finish_read(&image, nullptr, result.rgba.data(), 0, nullptr));
    return result;
}

TEST_F(ReportTest, ThePictureShowsTheCloudFromAbove) {
    create();
    session->begin("points", "test", "", "");
    // Low at the lower left, high at the upper right, nothing elsewhere.
    insertSightings({{{0, 0, 0}, 1, 0, 0}, {{100, 50, 80}, 1, 0, 0}});
    query::commit(*session);
    const Decoded picture = firstPicture(report(3));
    EXPECT_EQ(picture.width, 480u);
    EXPECT_NEAR(picture.height, 240, 2);
    const std::uint8_t* low = picture.at(0, picture.height - 1);
    const std::uint8_t* high = picture.at(picture.width - 1, 0);
    EXPECT_EQ(low[3], 255);
    EXPECT_GT(low[2], low[0]);  // blue
    EXPECT_EQ(high[3], 255);
    EXPECT_GT(high[0], high[2]);  // red
    EXPECT_EQ(picture.at(0, 0)[3], 0);
    EXPECT_EQ(picture.at(picture.width - 1, picture.height - 1)[3], 0);
    EXPECT_EQ(picture.at(picture.width / 2, picture.height / 2)[3], 0);
}

TEST_F(ReportTest, ThePictureTakesTheColoursOfThePoints) {
    schema::AttributeRecord colours = record("tarvo.rgba", 0, 65535, 1, 4);
    session::Session::create(folder.file("a.qrbx"), settings(1, 100), "test",
                             {record("amplitude", 0, 65535), colours});
    open();
    session->begin("points", "test", "", "");
    // Three points one above the other: an extent of nothing by nothing.
    std::vector<Point> points(3);
    const std::vector<std::uint16_t> rgba = {255, 0, 0, 0, 255, 30, 0, 0, 255, 60, 0, 0};
    query::InsertQuery query(*session);
    query.bind("xyz", QRB_DATA_TYPE_DOUBLE, &points[0].x, sizeof(Point));
    query.bind("tarvo.rgba", QRB_DATA_TYPE_UINT16, const_cast<std::uint16_t*>(rgba.data()), 8);
    query.next(3);
    query::commit(*session);
    const std::string html = report(3);
    EXPECT_NE(html.find("In the colours of the points"), std::string::npos);
    const Decoded picture = firstPicture(html);
    const std::uint8_t* spot = picture.at(picture.width / 2, picture.height / 2);
    EXPECT_EQ(spot[0], 255);  // 8 bits in a field of 16
    EXPECT_EQ(spot[1], 30);
    EXPECT_EQ(spot[3], 255);
    EXPECT_EQ(picture.at(0, 0)[3], 0);
}

TEST(ReportText, ForeignTextsAreCleaned) {
    EXPECT_EQ(validUtf8("\xc3\xa4\xf0\x9f\x98\x80"), "\xc3\xa4\xf0\x9f\x98\x80");
    // Alone, cut off, longer than needed, half of a pair, beyond the last character.
    for (const char* bytes : {"\x80", "\xc3", "\xff"})
        EXPECT_EQ(validUtf8(bytes), "\ufffd");
    for (const char* bytes : {"\xc0\x80", "\xe2\x82"})
        EXPECT_EQ(validUtf8(bytes), "\ufffd\ufffd");
    for (const char* bytes : {"\xe0\x80\x80", "\xed\xa0\x80"})
        EXPECT_EQ(validUtf8(bytes), "\ufffd\ufffd\ufffd");
    for (const char* bytes : {"\xf4\x90\x80\x80", "\xf0\x8f\xbf\xbf", "\xf5\x80\x80\x80"})
        EXPECT_EQ(validUtf8(bytes), "\ufffd\ufffd\ufffd\ufffd");
    for (const char* bytes : {"\xc2\x80", "\xe0\xa0\x80", "\xed\x9f\xbf", "\xee\x80\x80",
                              "\xf0\x90\x80\x80", "\xf4\x8f\xbf\xbf"})
        EXPECT_EQ(validUtf8(bytes), bytes);
    EXPECT_EQ(validUtf8("a\xe2\x82z\xc3"), "a\ufffd\ufffdz\ufffd");
    // A rich-text document would take these for its own.
    EXPECT_EQ(report::oneLine("a\u2028\ufdd0\ufdd1\ufffcb\xc2\xa0\x1f"), "a    b\xc2\xa0 ");
    EXPECT_EQ(report::oneLine("a\r\n\tb\x7f\xc2\x85"
                              "c\u2029"),
              "a   b  c ");
    EXPECT_EQ(report::oneLine("a\u202eb\u2066c\u200fd\u061c\u2065"), "a b c d \u2065");
    EXPECT_EQ(report::csvCell("plain text"), "plain text");
    EXPECT_EQ(report::csvCell(" a\n\"b\""), "\" a \"\"b\"\"\"");
    for (const char* quoted : {" a", "a ", "a,b"})
        EXPECT_EQ(report::csvCell(quoted), "\"" + std::string(quoted) + "\"");
    EXPECT_EQ(report::csvCell("a b'c"), "a b'c");
    EXPECT_EQ(report::csvCell(""), "");
    EXPECT_EQ(numbers::roundedText(1.0 / 3, 3), "0.333");
    EXPECT_EQ(numbers::roundedText(0.1, 40), "0.10000000000000001");
}

}  // namespace
}  // namespace tarvo::engine
