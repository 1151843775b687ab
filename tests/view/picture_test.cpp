#include "view/picture.h"
#include "core/error.h"
#include "tests/view/cloud.h"

#include <algorithm>
#include <map>
#include <vector>

namespace {

using namespace tarvo::view;
using namespace tarvo::drawing;

class PictureTest : public tarvo::view::testing::CloudTest {};

TEST_F(PictureTest, ShowsPointsWhereTheCameraSeesThem) {
    create(60, 0);
    PictureSettings settings;
    settings.width = 900;
    settings.height = 700;
    settings.colour = readColour(*m_cloud, "kind");
    for (const Side side : {Side::Top, Side::Front, Side::Left, Side::Corner}) {
        settings.from = side;
        const Picture picture = drawPicture(*m_cloud, settings);
        EXPECT_EQ(picture.points, m_points.size());
        Camera camera;
        camera.setScreen(settings.width, settings.height);
        camera.look(side);
        camera.show(CloudSpace::of(*m_cloud).extent);
        EXPECT_EQ(picture.unitsPerPixel, camera.unitsPerPixel());
        // The plain way: the nearest of all points in each pixel.
        std::map<std::pair<unsigned, unsigned>, std::pair<double, double>> nearest;
        for (const auto& point : m_points) {
            const auto seen = camera.project(point.place);
            const std::pair pixel(static_cast<unsigned>(seen->x), static_cast<unsigned>(seen->y));
            const auto [found, isNew] = nearest.try_emplace(pixel, seen->depth, point.kind);
            if (!isNew && seen->depth < found->second.first)
                found->second = {seen->depth, point.kind};
        }
        for (const auto& [pixel, point] : nearest)
            EXPECT_EQ(picture.image.at(pixel.first, pixel.second),
                      paletteColour(static_cast<std::int64_t>(point.second)));
    }
}

TEST_F(PictureTest, ShowsWhatPassesTheFilterInTheRangeThatIsAskedFor) {
    create(60, 0);
    PictureSettings settings;
    settings.width = 400;
    settings.height = 400;
    settings.filter = "kind == 2";
    settings.colour = readColour(*m_cloud, "height");
    settings.colour->range = Range{-1, 1};
    const Picture picture = drawPicture(*m_cloud, settings);
    const auto wanted = std::count_if(m_points.begin(), m_points.end(),
                                      [](const auto& point) { return point.kind == 2; });
    EXPECT_EQ(picture.points, static_cast<std::uint64_t>(wanted));
    EXPECT_EQ(picture.colouring.range(), (Range{-1, 1}));
    EXPECT_EQ(picture.colouring.colour({1.5, 0, 0}), rampColour(1));
    // The same picture with every point, and with the level of detail.
    const auto pixels = [](const Picture& drawn) {
        return std::vector<Colour>(
            drawn.image.pixels(),
            drawn.image.pixels() + std::size_t(drawn.image.width()) * drawn.image.height());
    };
    settings.everyPoint = true;
    EXPECT_EQ(pixels(drawPicture(*m_cloud, settings)), pixels(picture));
}

TEST_F(PictureTest, ColoursByWhatTheDatabaseHas) {
    create(40, 3);
    const auto text = [this](const std::string& name) {
        return colourText(*m_cloud, readColour(*m_cloud, name));
    };
    EXPECT_EQ(text("height"), "height");
    EXPECT_EQ(text("place[1]"), "place[1]");
    EXPECT_EQ(text("place"), "place[0]");
    EXPECT_EQ(text("kind"), "kind");
    for (const char* wrong : {"rgb", "place[3]", "kin", "", "kind[0]"})
        EXPECT_THROW((void)readColour(*m_cloud, wrong), tarvo::core::Failure) << wrong;
    NodeTree tree(*m_cloud);
    const Colouring kinds(*m_cloud, tree, readColour(*m_cloud, "kind"));
    ASSERT_EQ(kinds.legend().size(), 3U);  // nothing of the value that no point has
    EXPECT_EQ(kinds.legend()[1].text, "2 two");
    EXPECT_EQ(kinds.legend()[1].colour, paletteColour(2));
    const ViewNode node;
    const double invalid = 20;
    EXPECT_EQ(kinds.colour(kinds.shade(&invalid, node)), colourOfNothing);
    const Colouring revisions(*m_cloud, tree, readColour(*m_cloud, "transaction"));
    ASSERT_EQ(revisions.legend().size(), 1U);
    EXPECT_EQ(revisions.legend()[0].text, std::to_string(tree.nodes()[0].revision));
    // Every choice that is offered can be drawn.
    PictureSettings settings;
    settings.width = settings.height = 50;
    for (const ColourChoice& choice : colourChoices(*m_cloud)) {
        settings.colour = choice;
        EXPECT_GT(drawPicture(*m_cloud, settings).points, 0U);
    }
}

TEST_F(PictureTest, RefusesWhatCannotBeDrawn) {
    create(10, 0);
    PictureSettings settings;
    settings.width = 100'000;
    EXPECT_THROW((void)drawPicture(*m_cloud, settings), tarvo::core::Failure);
    settings.width = 0;
    EXPECT_THROW((void)drawPicture(*m_cloud, settings), tarvo::core::Failure);
    tarvo::qrb::pointcloud::CreateSettings small(m_context);
    small.primaryAttribute = attribute("p", 0, 10, 1, 2);
    tarvo::qrb::Pointcloud empty(m_context);
    empty.create(file("empty.qrbx"), small);
    EXPECT_THROW((void)drawPicture(empty, {}), tarvo::core::Failure);
    small.primaryAttribute = attribute("p", 0, 10, 1, 1);
    tarvo::qrb::Pointcloud line(m_context);
    line.create(file("line.qrbx"), small);
    EXPECT_THROW((void)drawPicture(line, {}), tarvo::core::Failure);
}

}  // namespace
