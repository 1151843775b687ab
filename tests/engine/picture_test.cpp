// The picture of a report, pixel by pixel: where points stand, what fills the gaps between them,
// and what the colours are spread over.
#include "tests/engine/database.h"

#include "engine/report/picture.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <optional>

namespace tarvo::engine {
namespace {

using namespace testing;
using drawing::Colour;
using report::Colouring;
using report::Picture;

constexpr double lost = 250.5;  // a coordinate that is none, among those that are

std::array<int, 4> rgba(const Colour& colour) {
    return {colour.red, colour.green, colour.blue, colour.alpha};
}
std::array<int, 4> ramp(double place) {
    return rgba(drawing::rampColour(place));
}

using Places = std::vector<std::array<double, 3>>;

class Pictures : public ::testing::Test {
protected:
    void create(std::uint32_t dimensions, std::uint32_t leafSize = 100'000,
                const std::optional<schema::AttributeRecord>& colours = {}) {
        m_session.reset();
        std::filesystem::remove(m_file);
        session::CreateSettings created = settings(1, leafSize);
        created.primaryAttribute.length = dimensions;
        created.primaryAttribute.invalidValue = lost;
        session::Session::create(
            m_file, created, "test",
            colours ? std::vector{*colours} : std::vector<schema::AttributeRecord>());
        m_session = std::make_unique<session::Session>(m_file, session::OpenSettings(), "test");
    }
    void add(const Places& places, const std::vector<std::array<double, 3>>& colours = {}) {
        m_session->begin("points", "test", "", "");
        query::InsertQuery query(*m_session);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, places.data(), sizeof places[0]);
        if (!colours.empty())
            for (std::size_t e = 0; e < 3; ++e)
                query.bind("tarvo.rgba[" + std::to_string(e) + "]", QRB_DATA_TYPE_DOUBLE,
                           &colours[0][e], sizeof colours[0]);
        query.next(static_cast<std::uint32_t>(places.size()));
        query::commit(*m_session);
    }
    Picture draw(std::uint64_t step = 1) {
        std::optional<Picture> picture =
            report::drawPicture(*m_session, report::gatherFacts(*m_session), step);
        EXPECT_TRUE(picture.has_value());
        return picture ? *picture : Picture{drawing::Image(1, 1), Colouring::Count, 0, 0};
    }
    static std::size_t painted(Picture& picture) {
        std::size_t count = 0;
        for (unsigned y = 0; y < picture.image.height(); ++y)
            for (unsigned x = 0; x < picture.image.width(); ++x)
                count += picture.image.at(x, y).alpha != 0;
        return count;
    }
    // With two points, which have these colours.
    Picture drawColours(const schema::AttributeRecord& attribute,
                        const std::vector<std::array<double, 3>>& colours) {
        create(3, 100, attribute);
        add({{0, 0, 0}, {100, 0, 50}}, colours);
        return draw();
    }

    TemporaryFolder m_folder;
    const std::string m_file = m_folder.file("a.qrbx");
    std::unique_ptr<session::Session> m_session;
};

// The fewer points, the larger the spots that stand for them; in the middle where a side is short.
TEST_F(Pictures, CloseTheGapsBetweenFewPoints) {
    struct Case {
        std::size_t points;
        int reach;
    };
    for (const bool upright : {false, true})
        for (const Case& c : {Case{2, 3}, Case{576, 3}, Case{577, 2}, Case{5760, 2}, Case{5761, 1},
                              Case{46080, 1}, Case{46081, 0}}) {
            SCOPED_TRACE(c.points);
            create(2);
            Places places(c.points, {10, 10, 0});
            places.back()[upright ? 1 : 0] = 489;
            add(places);
            Picture picture = draw();
            ASSERT_EQ(picture.image.width(), upright ? 24u : 480u);
            ASSERT_EQ(picture.image.height(), upright ? 480u : 24u);
            for (int along = 0; along < 480; ++along)
                for (int across = 0; across < 24; ++across) {
                    const int middle = upright ? 12 : 11;
                    const bool expected = std::min(along, 479 - along) <= c.reach &&
                                          std::abs(across - middle) <= c.reach;
                    const Colour& pixel =
                        picture.image.at(static_cast<unsigned>(upright ? across : along),
                                         static_cast<unsigned>(upright ? along : across));
                    EXPECT_EQ(pixel.alpha != 0, expected) << along << " " << across;
                }
        }
}

TEST_F(Pictures, FillGapsWithTheMeanOfWhatIsAround) {
    create(2);
    // Heaps of 100 and of 1, two pixels apart, and each alone.
    Places places(100, {0, 0, 0});
    places.insert(places.end(), 100, {200, 0, 0});
    places.push_back({2, 0, 0});
    places.push_back({479, 0, 0});
    add(places);
    Picture picture = draw();
    EXPECT_EQ(picture.colouring, Colouring::Count);
    EXPECT_NEAR(picture.low, 1, 1e-9);
    EXPECT_NEAR(picture.high, 100, 1e-9);
    EXPECT_EQ(rgba(picture.image.at(0, 11)), ramp(1));
    EXPECT_EQ(rgba(picture.image.at(2, 11)), ramp(0));
    // On the logarithmic way from 1 to 100.
    const double between = (std::log1p(50.5) - std::log1p(1)) / (std::log1p(100) - std::log1p(1));
    EXPECT_EQ(rgba(picture.image.at(1, 11)), ramp(between));
}

TEST_F(Pictures, LeaveTheOutermostHeightsToTheEndsOfTheRamp) {
    create(3);
    Places places;
    for (int x = 0; x < 480; ++x)
        for (int i = 0; i < 97; ++i)
            places.push_back({double(x), 0, x == 5 ? -900.0 : x == 300 ? 900.0 : x});
    for (int x = 0; x < 480; ++x) {
        places.push_back({lost, 0, 500});
        places.push_back({double(x), lost, 500});
        places.push_back({double(x), 0, lost});
    }
    add(places);
    Picture picture = draw();
    EXPECT_EQ(picture.colouring, Colouring::Height);
    EXPECT_NEAR(picture.low, 9, 1e-9);
    EXPECT_NEAR(picture.high, 471, 1e-9);
    EXPECT_EQ(painted(picture), 480u);
    for (unsigned x = 0; x < 480; ++x) {
        const double z = x == 5 ? -900.0 : x == 300 ? 900.0 : x;
        EXPECT_EQ(rgba(picture.image.at(x, 11)), ramp((z - 9) / 462)) << x;
    }
}

TEST_F(Pictures, OfOneHeightOrOnePlaceAreInTheMiddleOfTheRamp) {
    create(3);
    add({{0, 0, 7}, {100, 50, 7}});
    Picture flat = draw();
    EXPECT_EQ(rgba(flat.image.at(0, flat.image.height() - 1)), ramp(0.5));
    EXPECT_EQ(flat.low, 7);
    EXPECT_EQ(flat.high, 7);
    create(3);
    add({{3, 4, 5}});
    Picture one = draw();
    EXPECT_EQ(one.image.width(), 24u);
    EXPECT_EQ(one.image.height(), 24u);
    EXPECT_EQ(painted(one), 49u);
    EXPECT_EQ(rgba(one.image.at(12, 11)), ramp(0.5));
}

TEST_F(Pictures, ShowNumbersOfPointsWhereThereAreNoHeights) {
    create(3);
    add({{0, 0, lost}, {0, 0, lost}, {0, 0, lost}, {100, 0, lost}});
    Picture picture = draw();
    EXPECT_EQ(picture.colouring, Colouring::Count);
    EXPECT_NEAR(picture.high, 3, 1e-9);
    create(3);
    add({{lost, 1, 1}, {lost, 2, 2}});
    EXPECT_FALSE(report::drawPicture(*m_session, report::gatherFacts(*m_session), 1));
}

TEST_F(Pictures, TakeColoursThatDifferAsTheyAre) {
    schema::AttributeRecord words = record("tarvo.rgba", 0, 65535, 1, 4);
    // 8 bits in fields of 16; the mean of what falls on one pixel, rounded.
    Picture picture = drawColours(words, {{255, 2, 1}, {10, 20, 30}});
    EXPECT_EQ(picture.colouring, Colouring::TrueColour);
    EXPECT_EQ(rgba(picture.image.at(0, 11)), (std::array{255, 2, 1, 255}));
    EXPECT_EQ(rgba(picture.image.at(479, 11)), (std::array{10, 20, 30, 255}));
    create(3, 100, words);
    add({{0, 0, 0}, {0, 0, 0}, {100, 0, 0}}, {{10, 20, 255}, {11, 20, 0}, {0, 0, 1}});
    picture = draw();
    EXPECT_EQ(rgba(picture.image.at(0, 11)), (std::array{11, 20, 128, 255}));

    picture = drawColours(words, {{65535, 32768, 256}, {0, 0, 0}});
    EXPECT_EQ(rgba(picture.image.at(0, 11)), (std::array{255, 128, 1, 255}));
    // Three bytes without alpha; blue alone differs.
    const schema::AttributeRecord bytes = record("tarvo.rgba", 0, 255, 1, 3);
    picture = drawColours(bytes, {{9, 9, 9}, {9, 9, 10}});
    EXPECT_EQ(rgba(picture.image.at(479, 11)), (std::array{9, 9, 10, 255}));

    EXPECT_EQ(drawColours(bytes, {{9, 9, 9}, {9, 9, 9}}).colouring, Colouring::Height);
    EXPECT_EQ(drawColours(record("tarvo.rgba", 0, 255, 0, 3), {{1, 2, 3}, {4, 5, 6}}).colouring,
              Colouring::Height);
}

TEST_F(Pictures, OfASampleShowTheLeavesThatWereRead) {
    create(2, 10);
    Places places;
    for (int i = 0; i < 400; ++i)
        places.push_back({double(i), double(i), 0});
    add(places);
    Picture all = draw();
    Picture some = draw(4);
    Picture first = draw(1'000'000);
    EXPECT_GT(painted(all), painted(some));
    EXPECT_GT(painted(some), painted(first));
    // The sample begins with the first leaf.
    EXPECT_NE(first.image.at(0, 479).alpha, 0);
    EXPECT_EQ(first.image.at(479, 0).alpha, 0);
}

}  // namespace
}  // namespace tarvo::engine
