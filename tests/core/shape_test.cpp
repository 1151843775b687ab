#include "core/shape.h"
#include "core/areatext.h"
#include "core/error.h"
#include "tests/engine/seed.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace tarvo::core;

// Whole numbers, so that no rule is blurred by rounding.
bool enclosesPlainly(const std::vector<Polygon>& polygons, double x, double y) {
    bool isInside = false;
    for (const Polygon& polygon : polygons) {
        int crossings = 0;
        for (const Ring& ring : polygon)
            for (std::size_t i = 0; i < ring.size(); ++i) {
                const Vertex& a = ring[i];
                const Vertex& b = ring[i + 1 == ring.size() ? 0 : i + 1];
                const double side = (b.x - a.x) * (y - a.y) - (x - a.x) * (b.y - a.y);
                const double along = (x - a.x) * (x - b.x) + (y - a.y) * (y - b.y);
                if (side == 0 && along <= 0)
                    return true;
                if ((a.y > y) != (b.y > y))
                    crossings += (side > 0) == (b.y > a.y);
            }
        isInside |= crossings % 2 != 0;
    }
    return isInside;
}

std::string wkt(const std::vector<Polygon>& polygons, bool closed) {
    std::string text;
    for (const Polygon& polygon : polygons) {
        text += text.empty() ? "MultiPolygon Z((" : ",(";
        for (std::size_t r = 0; r < polygon.size(); ++r) {
            text += r == 0 ? "(" : ", (";
            for (std::size_t i = 0; i < polygon[r].size() + (closed ? 1 : 0); ++i) {
                const Vertex& corner = polygon[r][i % polygon[r].size()];
                text += (i == 0 ? "" : ",") + std::to_string(corner.x) + " " +
                        std::to_string(corner.y) + " 5";
            }
            text += ")";
        }
        text += ")";
    }
    return text + ")\n";
}

TEST(Area, EnclosesWhatAPlainLoopSays) {
    std::mt19937_64 random(tarvo::engine::testing::seedOfRun());
    const auto number = [&](int most) { return static_cast<int>(random() % (most + 1u)); };
    for (int round = 0; round < 400; ++round) {
        std::vector<Polygon> polygons(1 + number(3));
        const int size = 2 + number(round % 4 == 0 ? 4 : 30);
        for (Polygon& polygon : polygons) {
            polygon.resize(1 + number(2));
            for (Ring& ring : polygon)
                for (int i = 3 + number(round % 10 == 0 ? 300 : 8); i > 0; --i)
                    ring.push_back({double(number(size) - size / 2), double(number(size))});
        }
        for (Polygon& polygon : polygons)  // closed in the text
            for (Ring& ring : polygon)
                while (ring.front().x == ring.back().x && ring.front().y == ring.back().y)
                    ring.back().x += 1;
        const Area area = areaFromText(wkt(polygons, round % 2 == 0), "text");
        for (int i = 0; i < 500; ++i) {
            const double x = (number(2 * size + 4) - size - 2) / 2.0;
            const double y = (number(2 * size + 4) - 2) / 2.0;
            ASSERT_EQ(area.contains(x, y), enclosesPlainly(polygons, x, y))
                << round << ": " << x << " " << y << "\n"
                << wkt(polygons, true);
        }
    }
}

TEST(Area, OfNeighboursHasNoGapAndReadsGeoJson) {
    const Area both = areaFromText(
        R"({"type": "FeatureCollection", "features": [
            {"type": "Feature", "properties": {}, "geometry": null},
            {"type": "Feature", "geometry": {"type": "Polygon", "coordinates":
                [[[0.1, 0.3, 7], [10.7, 20.9], [0.1, 20.9]]]}},
            {"type": "Feature", "geometry": {"type": "MultiPolygon", "coordinates":
                [[[[10.7, 20.9], [0.1, 0.3], [10.7, 0.3], [10.7, 20.9]],
                  [[8, 1], [9, 1], [9, 2], [8, 2], [8, 1]]]]}}]})",
        "text");
    for (int i = 0; i <= 1000; ++i)
        EXPECT_TRUE(both.contains(0.1 + 10.6 * i / 1000, 0.3 + 20.599 * i / 1000)) << i;
    EXPECT_FALSE(both.contains(8.5, 1.5));
    EXPECT_TRUE(both.contains(8, 1.5));
    EXPECT_FALSE(both.contains(std::nan(""), 1.5));
    EXPECT_EQ(both.least().x, 0.1);
    EXPECT_EQ(both.most().y, 20.9);
}

TEST(Area, TellsWhatIsWrongWithItsText) {
    const auto expectFault = [](const std::string& text, const std::string& fault) {
        try {
            areaFromText(text, "a.wkt");
            ADD_FAILURE() << text;
        } catch (const Failure& failure) {
            const std::string told = failure.what();
            EXPECT_TRUE(told.starts_with("The area in a.wkt can't be read: ")) << told;
            EXPECT_NE(told.find(fault), std::string::npos) << told;
            EXPECT_NE(failure.details().find("GeoJSON"), std::string::npos);
        }
    };
    expectFault("", "neither POLYGON nor MULTIPOLYGON");
    expectFault("LINESTRING (0 0, 1 1)", "it is a LINESTRING");
    expectFault("POLYGON EMPTY", "there is no polygon");
    expectFault("POLYGON ((0 0, 1 0, 0 0))", "ring 1 of polygon 1 has fewer than 3 corners");
    expectFault("POLYGON ((0 0, 1 0, 1 1), (0 0, 1 0))", "ring 2 of polygon 1");
    expectFault("POLYGON ((0 0, 1 0, 1))", "a number is expected at byte 22, not \"))\"");
    expectFault("POLYGON ((0 0, 1 0, 1 1)", "\",\" or \")\" is expected at byte 25, where");
    expectFault("POLYGON ((0 0, 1 0, 1 1)) x", "the end is expected");
    expectFault("POLYGON ((0 0, 1 0, inf 1))", "farther than 1e150");
    expectFault("POLYGON ((-1e155 0, 1 0, 0 1))", "farther than 1e150");
    expectFault("{", "it is no JSON");
    expectFault("{}", "lacks its \"type\"");
    expectFault(R"({"type": "Point", "coordinates": [1, 2]})", "it holds a \"Point\"");
    expectFault(R"({"type": "Polygon"})", "is no array");
    expectFault(R"({"type": "Polygon", "coordinates": [[[0, 0], [1], [2, 2]]]})", "no two numbers");
    expectFault(R"({"type": "FeatureCollection", "features": []})", "there is no polygon");
    expectFault(R"({"type": "FeatureCollection", "features": [3]})", "lacks its \"type\"");
    expectFault(std::string(200000, '('), "neither");
    expectFault("{\"type\": " + std::string(200000, '['), "it is no JSON");
    const std::string good = wkt({{{{0, 0}, {4, 0}, {4, 4}}}}, true);
    for (std::size_t size = 0; size + 2 < good.size(); ++size)
        EXPECT_THROW(areaFromText(good.substr(0, size), "cut"), Failure) << size;
}

TEST(Bounds, AreReadOrToldWhy) {
    const Bounds flat = boundsFromText("-1.5, 2,3,4e2");
    EXPECT_EQ(flat.least[0], -1.5);
    EXPECT_EQ(flat.most[1], 400);
    EXPECT_TRUE(std::isinf(flat.least[2]) && std::isinf(flat.most[2]));
    EXPECT_EQ(boundsFromText("1,2,3,4,5,6").most[2], 6);
    for (const char* text : {"", "1,2,3", "1,2,3,4,5", "1,2,3,4,", "1,2,x,4", "1,2,3,4 5",
                             "3,2,1,4", "nan,2,3,4", "1,2,inf,4", "1,2,9,4,5,6", "1;2;3;4"})
        EXPECT_THROW(boundsFromText(text), Failure) << text;
}

// Batches of any size leave the same points.
TEST(Shaper, LeavesWhatAPlainLoopLeaves) {
    std::mt19937_64 random(tarvo::engine::testing::seedOfRun());
    for (int round = 0; round < 60; ++round) {
        const double distance = round % 3 == 0 ? 0 : std::ldexp(1.0, int(random() % 40) - 20);
        const double origin = round % 4 == 0 ? 1e6 : round % 4 == 1 ? 3e15 : 0;
        Shape shape;
        shape.distance = distance;
        shape.every = random() % 4;
        const double extent = (distance > 0 ? distance : 1) * 8;
        if (round % 2 == 0)
            shape.bounds = {{origin - extent / 2, origin, origin},
                            {origin + extent, origin + extent / 2, origin + extent}};
        std::vector<double> places;
        std::uniform_real_distribution<double> within(-extent, extent);
        for (int i = 0; i < 3 * 1500; ++i) {
            double place = within(random);
            if (i % 5 == 0)  // exactly on a multiple of the distance
                place = std::round(place / extent * 16) * extent / 16;
            places.push_back(origin + place);
        }
        std::vector<std::uint32_t> expected;
        std::uint64_t seen = 0;
        for (std::uint32_t i = 0; i < 1500; ++i) {
            const double* const p = &places[3 * i];
            bool stays = true;
            for (int axis = 0; axis < 3; ++axis)
                stays &= !shape.bounds || (p[axis] >= shape.bounds->least[axis] &&
                                           p[axis] <= shape.bounds->most[axis]);
            if (stays && shape.every > 1)
                stays = seen++ % shape.every == 0;
            for (std::size_t k = 0; stays && distance > 0 && k < expected.size(); ++k) {
                const double* const q = &places[3 * expected[k]];
                const double square = (p[0] - q[0]) * (p[0] - q[0]) +
                                      (p[1] - q[1]) * (p[1] - q[1]) + (p[2] - q[2]) * (p[2] - q[2]);
                stays = square >= distance * distance;
            }
            if (stays)
                expected.push_back(i);
        }
        Shaper shaper(shape);
        for (int pass = 0; pass < 2; ++pass) {
            shaper.restart();
            std::vector<std::uint32_t> found;
            std::vector<std::uint32_t> rows;
            for (std::uint32_t begin = 0; begin < 1500;) {
                const auto count =
                    std::min<std::uint32_t>(1 + std::uint32_t(random() % 400), 1500 - begin);
                const double* const p = &places[3 * begin];
                shaper.pick(count, p, rows);
                for (const std::uint32_t row : rows)
                    found.push_back(begin + row);
                begin += count;
            }
            ASSERT_EQ(found, expected) << round << " " << distance;
        }
    }
}

TEST(Shape, NarrowsAFilterToWhatItMayLeave) {
    Shape shape;
    EXPECT_EQ(shape.narrowed("a < 1", "p"), "a < 1");
    shape.bounds = boundsFromText("0,-2,8,4");
    EXPECT_EQ(shape.narrowed(" find fullest leaf", "p"), " find fullest leaf");
    const std::string wide = shape.narrowed("a || b", "p");
    EXPECT_TRUE(wide.starts_with("(a || b) && p[0] >= -1e-300 && p[0] <= 8.0000")) << wide;
    EXPECT_EQ(wide.find("p[2]"), std::string::npos) << wide;
    shape.area = std::make_shared<const Area>(areaFromText("POLYGON ((5 0, 9 0, 9 3))", "text"));
    EXPECT_NE(shape.narrowed("", "p").find("p[0] >= 4.9999"), std::string::npos);
    EXPECT_NE(shape.narrowed("", "p").find("p[1] <= 3.0000"), std::string::npos);
}

}  // namespace
