// Every line of each form of a report, of a database with one of everything and of an empty one.
// What is told is made up here, so that the texts are the same wherever they are written.
#include "tests/engine/database.h"

#include "engine/report/chart.h"
#include "engine/report/forms.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace tarvo::engine {
namespace {

using namespace testing;
using report::Bin;
using report::Colouring;
using report::Facts;
using report::Histogram;
using report::PointFacts;
using schema::AttributeRecord;
using schema::ElementStatistics;

constexpr std::uint64_t beyondDoubles = (std::uint64_t(1) << 53) + 1;

AttributeRecord titled(AttributeRecord record, const char* title, const char* unit = "") {
    record.title = title;
    record.unitSymbol = unit;
    return record;
}

void addAttribute(Facts& facts, session::State& state, const AttributeRecord& record,
                  std::vector<ElementStatistics> elements, std::uint64_t blocks,
                  std::uint64_t bytes, std::uint64_t leafBytes) {
    state.attributes.all().emplace_back(record, state.nextUid++);
    facts.attributes.push_back({std::move(elements), blocks, bytes, leafBytes});
}

AttributeRecord position() {
    return titled(record("xyz", -1000, 1000, 0.25, 3), "Position", "m");
}

// Of a pending transaction, with foreign texts wherever a text can be.
Facts fullFacts() {
    Facts facts;
    auto state = std::make_shared<session::State>();
    state->transaction.id = 1'234'567'891;
    state->pointCount = 2000;
    state->chunkSizeLod = 20;
    facts.fileName = "/data/a & b/f\xc3\xbcnf\n<x>\x80.qrbx";
    facts.fileSize = 1'234'567;
    facts.identity.uuid = "{01234567-89ab-cdef-0123-456789abcdef}";
    facts.identity.creator = "library 1.0\nlayer 2.0";
    facts.identity.settings.primaryAttribute = position();
    facts.identity.settings.chunkSize = 32768;
    facts.pending = true;
    facts.current = 1'234'567'890;
    facts.transactions = {{1, "library 1.0", "Database creation", "maker", "", "",
                           "1999-12-31T23:59:59.000Z", "2000-01-01T00:00:00.000Z"},
                          {1'234'567'890, "library 2.0", "Points", "<agent> & \"co\"",
                           "first line\nsecond <b>line</b>", "", "2001-02-03T04:05:06.789Z",
                           "2001-02-03T04:05:07.000Z"}};
    facts.metaData = {{"a long name with '<\xff>'\n", 1500, true}, {"note", 2, false}};

    addAttribute(facts, *state, position(),
                 {{4000, 4001, true, false}, {0, 8000, true, false}, {3999, 4399, true, false}}, 30,
                 30'000, 24'000);
    addAttribute(facts, *state, titled(record("tarvo.id", 0, 18446744073709551616.0), "Id"),
                 {{1, beyondDoubles, true, false}}, 10, 2000, 2000);
    AttributeRecord kind = titled(record("kind", 0, 99), "Kind, \"of\" <thing>");
    kind.description = "What <it> is\nand was";
    kind.namedValues = "1=one";
    kind.invalidValue = 99;
    kind.storageClass = 3;
    addAttribute(facts, *state, kind, {{1, 12, true, true}}, 10, 1000, 333);
    AttributeRecord pair =
        titled(record("pair,\"quoted\"", -1e300, 1e300, 0, 2), "H\xc3\xb6hen", "<m>");
    addAttribute(facts, *state, pair,
                 {{pair.resolution == 0 ? schema::Grid(pair).code(-2.5) : 0,
                   schema::Grid(pair).code(1e300), true, true},
                  {0, 0, false, true}},
                 20, 8000, 7000);
    AttributeRecord fixed = titled(record("fixed", 0, 10), "Fixed");
    fixed.storageClass = 1;
    addAttribute(facts, *state, fixed, {{7, 7, true, false}}, 0, 0, 0);
    addAttribute(facts, *state, titled(record("many", 0, 1, 1, 18), "Many"),
                 std::vector<ElementStatistics>(18, {0, 1, true, false}), 18, 180, 180);

    facts.leaves = 7;
    facts.levels = {{0, 1, 0, 400}, {3, 1, 1500, 80}, {4, 0, 500, 0}};
    facts.pointBytes = 33'513;
    facts.levelOfDetailBytes = 7'667;
    facts.indexBytes = 999'950;
    facts.metaDataBytes = 1502;
    facts.state = std::move(state);
    return facts;
}

PointFacts fullPoints() {
    PointFacts points;
    points.step = 3;
    const auto add = [&](std::size_t attribute, std::uint32_t element, bool single,
                         std::vector<Bin> bins, std::uint64_t invalid = 0,
                         const char* invalidName = "") {
        Histogram histogram{{attribute, element},
                            single,
                            std::move(bins),
                            0,
                            invalid,
                            invalidName,
                            "-1.5",
                            "1e+300",
                            1234.56789012};
        for (const Bin& bin : histogram.bins)
            histogram.count += bin.count;
        points.histograms.push_back(std::move(histogram));
    };
    add(0, 0, true, {{"0", "0", 300, ""}, {"0.25", "0.25", 1200, ""}});
    add(0, 1, false, {{"-1000", "0", 700, ""}, {"0.25", "1000", 800, ""}});
    add(0, 2, true, {{"-0.25", "-0.25", 1500, ""}});
    add(1, 0, false, {{"1", "100", 1498, ""}, {"101", "9007199254740993", 2, ""}});
    add(2, 0, true,
        {{"1", "1", 1'000'000, "one <\"1\">"}, {"2", "2", 1, ""}, {"12", "12", 250'000, "a,b"}}, 7,
        "lost, <or> \"so\"");
    add(3, 0, false, {{"-2.5", "1", 3, ""}, {"1", "1e+300", 1, ""}}, 2);
    add(3, 1, true, {}, 1500);
    add(4, 0, true, {{"7", "7", 1500, "seven & more"}});
    add(5, 0, true, {{"1", "1", 1490, ""}}, 10);
    for (std::uint32_t e = 1; e < 18; ++e)
        add(5, e, true, {{"0", "0", 1500, ""}});
    points.picture = report::Picture{drawing::Image(2, 1), Colouring::Height, -12.3456789, 345.678};
    return points;
}

Facts emptyFacts() {
    Facts facts;
    auto state = std::make_shared<session::State>();
    state->transaction.id = 1;
    state->lodMode = 2;
    state->chunkSizeLod = 3;
    facts.fileName = "empty.qrbx";
    facts.fileSize = 999;
    facts.identity.settings.primaryAttribute = position();
    facts.identity.settings.chunkMode = 2;
    facts.identity.settings.chunkSize = 12;
    facts.current = 1;
    facts.transactions = {{1, "", "Database creation", "", "", "", "then", "now"}};
    addAttribute(facts, *state, position(), std::vector<ElementStatistics>(3), 0, 0, 0);
    addAttribute(facts, *state, titled(record("tarvo.id", 0, 100), "Id"),
                 std::vector<ElementStatistics>(1), 0, 0, 0);
    facts.state = std::move(state);
    return facts;
}

// Pictures as parts of the text depend on the library that packs them.
std::string withoutPictures(const std::string& html) {
    std::string result;
    for (std::size_t at = 0; at < html.size();) {
        const std::size_t begin = std::min(html.find("base64,", at), html.size());
        result += html.substr(at, begin - at);
        at = begin < html.size() ? html.find('"', begin) : begin;
    }
    return result;
}

void expectText(const std::string& name, const std::string& text) {
    std::ifstream file(std::string(QRB_REPORTS "/") + name, std::ios::binary);
    std::stringstream expected;
    expected << file.rdbuf();
    EXPECT_EQ(text, expected.str()) << name;
}

TEST(ReportForms, TellOfOneOfEverythingLineByLine) {
    const Facts facts = fullFacts();
    expectText("full.txt", report::textReport(facts));
    expectText("full.json", report::jsonReport(facts));
    expectText("full.html", withoutPictures(report::htmlReport(facts, fullPoints())));
    expectText("full.csv.html", report::histogramReport(facts, fullPoints()));
}

TEST(ReportForms, TellOfAnEmptyDatabaseLineByLine) {
    const Facts facts = emptyFacts();
    expectText("empty.txt", report::textReport(facts));
    expectText("empty.json", report::jsonReport(facts));
    expectText("empty.html", report::htmlReport(facts, {}));
    expectText("empty.csv.html", report::histogramReport(facts, {}));
}

TEST(ReportForms, LeaveElementsWithoutValuesOutOfTheExtent) {
    Facts facts = fullFacts();
    facts.attributes[0].elements[1] = {0, 8000, false, true};
    EXPECT_EQ(report::textReport(facts).find("-1000"), std::string::npos);
    EXPECT_EQ(report::htmlReport(facts, {}).find("-1000"), std::string::npos);
}

TEST(ReportForms, KeepTheDigitsOfLargeExtents) {
    Facts facts = fullFacts();
    facts.attributes[0].elements[0] = {1, 4'938'272, true, false};  // quarters of a metre
    EXPECT_NE(report::textReport(facts).find("1234567.75"), std::string::npos);
    EXPECT_NE(report::htmlReport(facts, {}).find("1234567.75"), std::string::npos);
}

TEST(ReportForms, SayWhatTheColoursOfThePictureMean) {
    const auto legendOf = [](Colouring colouring) {
        PointFacts points = fullPoints();
        points.picture->colouring = colouring;
        const std::string html = report::htmlReport(fullFacts(), points);
        const std::size_t begin = html.find("/></p>\n<p>") + 7;
        return html.substr(begin, html.find("<h2>", begin) - begin);
    };
    EXPECT_EQ(legendOf(Colouring::TrueColour), "<p>In the colours of the points.</p>\n");
    const std::string heights = legendOf(Colouring::Height);
    const std::string counts = legendOf(Colouring::Count);
    // From blue to red, whatever the picture shows.
    const std::string ramp = heights.substr(heights.find("<td bgcolor"));
    EXPECT_EQ(heights,
              "<p>Coloured by xyz[2]:</p>\n"
              "<table border=\"0\" cellspacing=\"0\" cellpadding=\"1\"><tr>"
              "<td>-12.3457 m&nbsp;</td>" +
                  ramp);
    EXPECT_EQ(ramp.rfind("<td bgcolor=\"#401d79\">&nbsp;</td>", 0), 0u);
    EXPECT_NE(ramp.find("<td bgcolor=\"#faf175\">&nbsp;</td><td>&nbsp;345.678 m</td></tr>"),
              std::string::npos);
    EXPECT_EQ(counts.rfind("<p>Coloured by the number of points per pixel:</p>\n", 0), 0u);
    EXPECT_NE(counts.find("<td>-12.3&nbsp;</td><td bgcolor=\"#401d79\">"), std::string::npos);
    EXPECT_NE(counts.find("<td>&nbsp;346</td>"), std::string::npos);
}

// Each pixel: a bar per bin with a gap where there is room for one, a line below all.
TEST(ReportForms, DrawBarsUpFromALine) {
    for (const std::size_t bins : {1u, 3u, 60u, 64u, 100u}) {
        SCOPED_TRACE(bins);
        Histogram histogram;
        for (std::size_t i = 0; i < bins; ++i)
            histogram.bins.push_back({"", "", i == bins / 2 ? 1000 : (i % 4) * 250, ""});
        drawing::Image image = report::drawBars(histogram);
        ASSERT_EQ(image.width(), 256u);
        ASSERT_EQ(image.height(), 65u);
        const bool gaps = bins <= 64;
        for (unsigned x = 0; x < 256; ++x) {
            const drawing::Colour& line = image.at(x, 64);
            EXPECT_EQ(std::vector({line.red, line.green, line.blue, line.alpha}),
                      (std::vector<std::uint8_t>{128, 128, 128, 255}));
            std::size_t bin = 0;
            while ((bin + 1) * 256 / bins <= x)
                ++bin;
            const bool isGap = gaps && x + 1 == (bin + 1) * 256 / bins;
            const std::uint64_t height = isGap ? 0 : histogram.bins[bin].count * 64 / 1000;
            for (unsigned y = 0; y < 64; ++y)
                EXPECT_EQ(image.at(x, y).alpha, y >= 64 - height ? 255 : 0) << x << " " << y;
        }
    }
}

}  // namespace
}  // namespace tarvo::engine
