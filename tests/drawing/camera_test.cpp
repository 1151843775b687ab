#include "drawing/camera.h"
#include "tests/engine/seed.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

using namespace tarvo::drawing;

constexpr Side sides[] = {Side::Top,  Side::Bottom, Side::Front, Side::Back,
                          Side::Left, Side::Right,  Side::Corner};

class CameraTest : public testing::Test {
protected:
    double number(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(m_random);
    }
    Vector place(double reach) {
        return {number(-reach, reach), number(-reach, reach), number(-reach, reach)};
    }
    // Looks at somewhere near a place that is as far from 0 as maps go.
    Camera camera(const Vector& far) {
        Camera camera;
        camera.setScreen(200 + m_random() % 1000, 200 + m_random() % 1000);
        camera.look(sides[m_random() % std::size(sides)]);
        camera.orbit(number(-400, 400), number(-40, 40));
        camera.setPerspective(m_random() % 2 == 0);
        Box box;
        box.add(far + place(50));
        box.add(far + place(50));
        camera.show(box);
        return camera;
    }

    std::mt19937_64 m_random{tarvo::engine::testing::seedOfRun()};
};

TEST_F(CameraTest, LooksFromItsSidesWithNorthUpAndTheNearestInFront) {
    struct Case {
        Side side;
        Vector right, up, back;
    };
    const Case cases[] = {{Side::Top, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
                          {Side::Bottom, {1, 0, 0}, {0, -1, 0}, {0, 0, -1}},
                          {Side::Front, {1, 0, 0}, {0, 0, 1}, {0, -1, 0}},
                          {Side::Back, {-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
                          {Side::Left, {0, -1, 0}, {0, 0, 1}, {-1, 0, 0}},
                          {Side::Right, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}}};
    for (const Case& one : cases) {
        Camera camera;
        camera.setScreen(100, 100);
        camera.look(one.side);
        // Exactly, so that pictures don't depend on the machine.
        EXPECT_EQ(camera.right(), one.right);
        EXPECT_EQ(camera.up(), one.up);
        EXPECT_EQ(camera.back(), one.back);
        EXPECT_LT(camera.project(one.back)->depth, camera.project({})->depth);
    }
    Camera corner;
    corner.look(Side::Corner);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(std::abs(corner.back()[i]), std::sqrt(1 / 3.0), 1e-12);
}

TEST_F(CameraTest, FindsBackWhatItProjects) {
    for (int i = 0; i < 2000; ++i) {
        const Vector far{number(-6e6, 6e6), number(-6e6, 6e6), number(-9e3, 9e3)};
        const Camera seen = camera(far);
        const Vector place = far + this->place(60);
        const auto pixel = seen.project(place);
        if (!pixel)
            continue;
        const Vector found = seen.unproject(pixel->x, pixel->y, pixel->depth);
        for (std::size_t axis = 0; axis < 3; ++axis)
            EXPECT_NEAR(found[axis], place[axis], 1e-6);
    }
}

TEST_F(CameraTest, ShowsTheWholeBoxAndKnowsWhatItCannotShow) {
    for (int i = 0; i < 3000; ++i) {
        Camera seen = camera(place(1e6));
        Box box;
        const Vector middle = place(1e6);
        box.add(middle + place(300));
        box.add(middle + place(300));
        // Seen from anywhere: a corner on the screen is a part that may be seen.
        const auto isOnScreen = [&seen](const Vector& place) {
            const auto pixel = seen.project(place);
            return pixel && pixel->x >= 0 && pixel->x < seen.width() && pixel->y >= 0 &&
                   pixel->y < seen.height();
        };
        const auto somewhere = [&] {
            Vector inside = box.least;
            for (std::size_t axis = 0; axis < 3; ++axis)
                inside[axis] += box.size()[axis] * number(0, 1);
            return inside;
        };
        seen.pan(number(-300, 300), number(-300, 300));
        for (int n = 0; n < 20; ++n)
            if (isOnScreen(somewhere()))
                EXPECT_TRUE(seen.mayShow(box));
        seen.show(box);
        int corners = 0;
        for (unsigned corner = 0; corner < 8; ++corner)
            corners += isOnScreen(box.corner(corner));
        EXPECT_EQ(corners, 8);
        EXPECT_TRUE(seen.mayShow(box));
        if (!seen.isPerspective()) {
            // Beside the screen.
            seen.pan(4.0 * seen.width(), 0);
            EXPECT_FALSE(seen.mayShow(box));
        }
    }
}

TEST_F(CameraTest, ZoomsToThePlaceUnderTheCursorAndPansWithIt) {
    for (int i = 0; i < 2000; ++i) {
        Camera seen = camera(place(1e6));
        const double x = number(0, seen.width());
        const double y = number(0, seen.height());
        const double depth = seen.isPerspective() ? number(-0.4, 0.4) * seen.distance() : 0;
        const Vector under = seen.unproject(x, y, depth);
        const double before = seen.unitsPerPixel();
        seen.zoom(1.25, x, y, depth);
        EXPECT_NEAR(seen.unitsPerPixel() * 1.25, before, before * 1e-12);
        auto after = seen.project(under);
        ASSERT_TRUE(after);
        EXPECT_NEAR(after->x, x, 1e-3);
        EXPECT_NEAR(after->y, y, 1e-3);
        const Vector middle = seen.middle();
        seen.pan(30, -20);
        after = seen.project(middle);
        EXPECT_NEAR(after->x, seen.width() / 2.0 + 30, 1e-6);
        EXPECT_NEAR(after->y, seen.height() / 2.0 - 20, 1e-6);
    }
    // Neither end is ever passed.
    Camera camera;
    for (int i = 0; i < 500; ++i)
        camera.zoom(10, 0.5, 0.5);
    EXPECT_GT(camera.extent(), 0);
    for (int i = 0; i < 500; ++i)
        camera.zoom(0.1, 0.5, 0.5);
    EXPECT_TRUE(std::isfinite(camera.extent()));
}

TEST_F(CameraTest, TakesASinglePlaceAndNoPlace) {
    Camera camera;
    camera.setScreen(0, 0);
    EXPECT_EQ(camera.width(), 1U);
    camera.show(Box());
    EXPECT_EQ(camera.extent(), 1);
    Box box;
    box.add(Vector{5, 6, 7});
    camera.show(box);
    EXPECT_EQ(camera.middle(), (Vector{5, 6, 7}));
    EXPECT_GT(camera.extent(), 0);
    EXPECT_TRUE(camera.mayShow(box));
    EXPECT_FALSE(camera.mayShow(Box()));
}

}  // namespace
