#include "view/stream.h"
#include "tests/engine/seed.h"
#include "tests/view/cloud.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <map>
#include <mutex>
#include <random>
#include <set>
#include <thread>

namespace {

using namespace tarvo::view;
using namespace tarvo::drawing;
using namespace std::chrono_literals;

class StreamTest : public tarvo::view::testing::CloudTest {
protected:
    // Waits, a minute at most, until what the stream tells satisfies the condition.
    template <typename Condition>
    StreamPicture await(PointStream& stream, const Condition& condition) {
        std::unique_lock lock(m_mutex);
        const auto end = std::chrono::steady_clock::now() + 60s;
        for (;;) {
            const StreamPicture picture = stream.picture();
            if (condition(picture))
                return picture;
            if (m_changed.wait_until(lock, end) == std::cv_status::timeout) {
                ADD_FAILURE() << "nothing came: " << picture.error;
                return picture;
            }
        }
    }
    StreamPicture awaitAll(PointStream& stream, std::size_t points) {
        return await(stream, [points](const StreamPicture& picture) {
            return picture.isComplete && picture.points == points;
        });
    }
    std::function<void()> changed() {
        return [this] {
            const std::lock_guard lock(m_mutex);
            m_changed.notify_all();
        };
    }
    StreamSettings settings() const {
        StreamSettings settings;
        settings.fileName = m_file;
        settings.colour = ColourChoice{ColourBy::Class, "kind", 0, {}};
        return settings;
    }
    Camera whole(unsigned width = 2000) const {
        Box box;
        for (const auto& point : m_points)
            box.add(point.place);
        Camera camera;
        camera.setScreen(width, width * 3 / 4);
        camera.show(box);
        return camera;
    }
    static std::map<std::uint64_t, std::pair<Vector, Colour>> pointsOf(
        const StreamPicture& picture) {
        std::map<std::uint64_t, std::pair<Vector, Colour>> points;
        for (const auto& block : picture.blocks)
            for (std::size_t i = 0; i < block->places.size(); ++i) {
                const auto& [x, y, z] = block->places[i];
                points[block->ids[i]] = {block->origin + Vector{x, y, z}, block->colours[i]};
            }
        return points;
    }

    std::mutex m_mutex;
    std::condition_variable m_changed;
};

TEST_F(StreamTest, BringsEveryPointToItsPlaceInItsColour) {
    create(120, 3);
    PointStream stream(changed());
    stream.look(whole());
    stream.show(settings());
    const auto points = pointsOf(awaitAll(stream, m_points.size()));
    ASSERT_EQ(points.size(), m_points.size());
    for (const auto& point : m_points) {
        const auto& [place, colour] = points.at(point.id);
        // Five million from 0, and yet to the millimetre.
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_NEAR(place[i], point.place[i], 2e-5);
        EXPECT_EQ(colour, paletteColour(static_cast<std::int64_t>(point.kind)));
    }
    const auto scene = stream.scene();
    ASSERT_TRUE(scene);
    EXPECT_EQ(scene->points, m_points.size());
    EXPECT_TRUE(scene->hasLevelOfDetail);
    EXPECT_EQ(scene->choices.size(), scene->choiceTexts.size());
    NodeTree tree(*m_cloud);
    const std::uint32_t id = tree.nodes().back().id;
    await(stream, [&](const StreamPicture&) { return !stream.boxOf(id).isEmpty(); });
    EXPECT_EQ(stream.boxOf(id).least,
              tree.box(static_cast<std::uint32_t>(tree.nodes().size() - 1)).least);
}

TEST_F(StreamTest, KeepsItsLimitsWhateverIsLookedAt) {
    create(200, 3);
    StreamSettings limited = settings();
    limited.points = 6'000;
    limited.memory = 12'000 * 24;
    std::mt19937_64 random(tarvo::engine::testing::seedOfRun());
    PointStream stream(changed());
    stream.show(limited);
    for (int i = 0; i < 40; ++i) {
        Camera camera = whole();
        camera.setPerspective(random() % 2 == 0);
        camera.orbit(static_cast<double>(random() % 360), -static_cast<double>(random() % 80));
        camera.zoom(static_cast<double>(1 + random() % 12), static_cast<double>(random() % 2000),
                    static_cast<double>(random() % 1500));
        stream.look(camera);
        const StreamPicture picture =
            i % 3 == 0 ? await(stream, [](const StreamPicture& p) { return p.isComplete; })
                       : stream.picture();
        EXPECT_EQ(picture.error, "");
        EXPECT_LE(picture.points, limited.points);
        std::set<std::uint32_t> nodes;
        std::uint64_t points = 0;
        for (const auto& block : picture.blocks) {
            points += block->places.size();
            EXPECT_TRUE(nodes.insert(block->node).second);
        }
        EXPECT_EQ(points, picture.points);
    }
}

TEST_F(StreamTest, HidesOrFadesWhatAFilterLeavesOut) {
    create(100, 3);
    const auto passing = static_cast<std::size_t>(
        std::count_if(m_points.begin(), m_points.end(), [](const auto& p) { return p.kind == 2; }));
    PointStream stream(changed());
    stream.look(whole());
    StreamSettings wished = settings();
    wished.filter = "kind == two";
    stream.show(wished);
    for (const auto& [id, point] : pointsOf(awaitAll(stream, passing)))
        EXPECT_EQ(m_points[id - 1].kind, 2);
    wished.unmatched = Unmatched::Faded;
    stream.show(wished);
    for (const auto& [id, point] : pointsOf(awaitAll(stream, m_points.size())))
        EXPECT_EQ(point.second.alpha == 255, m_points[id - 1].kind == 2);
    wished.filter = "kind ==";
    stream.show(wished);
    const StreamPicture failed =
        await(stream, [](const StreamPicture& picture) { return !picture.error.empty(); });
    EXPECT_TRUE(failed.blocks.empty());
    wished = settings();
    wished.single = Colour{1, 2, 3};
    stream.show(wished);
    for (const auto& [id, point] : pointsOf(awaitAll(stream, m_points.size())))
        EXPECT_EQ(point.second, (Colour{1, 2, 3}));
}

TEST_F(StreamTest, ShowsTheStateThatIsAskedForAndWhatIsNew) {
    create(60, 0);
    const std::size_t before = m_points.size();
    const std::uint32_t old = m_cloud->transactions().current();
    PointStream stream(changed());
    stream.look(whole());
    stream.show(settings());
    awaitAll(stream, before);
    {
        tarvo::qrb::pointcloud::TransactionGuard transaction(m_cloud->transactions(), "more",
                                                             "tests");
        std::vector<tarvo::view::testing::CloudPoint> more{
            {before + 1, {east + 10, north + 10, 5}, 1}};
        insert(more);
        // What is not committed is nobody else's.
        stream.reload();
        awaitAll(stream, before);
        transaction.commit();
    }
    stream.reload();
    awaitAll(stream, before + 1);
    StreamSettings earlier = settings();
    earlier.transaction = old;
    stream.show(earlier);
    awaitAll(stream, before);
}

TEST_F(StreamTest, TellsWhyNothingComesAndGoesOnAfterwards) {
    create(40, 0);
    PointStream stream(changed());
    StreamSettings wished = settings();
    wished.fileName = file("none.qrbx");
    stream.look(whole());
    stream.show(wished);
    await(stream, [](const StreamPicture& picture) { return !picture.error.empty(); });
    EXPECT_FALSE(stream.scene());
    stream.show(settings());
    awaitAll(stream, m_points.size());
    // A file that is damaged while it is looked at is told, too.
    m_cloud.reset();
    std::filesystem::resize_file(m_file, 5000);
    stream.reload();
    await(stream, [](const StreamPicture& picture) { return !picture.error.empty(); });
}

TEST_F(StreamTest, EndsAtOnceWhateverItDoes) {
    create(150, 3, 40);
    std::mt19937_64 random(tarvo::engine::testing::seedOfRun());
    for (int i = 0; i < 60; ++i) {
        PointStream stream(changed());
        if (i % 4 != 0)
            stream.show(settings());
        stream.look(whole());
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20'000));
        if (i % 3 == 0)
            stream.reload();
    }
}

}  // namespace
