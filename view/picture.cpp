#include "view/picture.h"

#include "core/error.h"
#include "view/nodechoice.h"
#include "view/nodereader.h"

#include <cmath>

namespace tarvo::view {

namespace {

// Every leaf, in the order of the tree.
std::vector<ChosenNode> allLeaves(const NodeTree& tree) {
    std::vector<ChosenNode> chosen;
    for (std::uint32_t i = 0; i < tree.nodes().size(); ++i)
        if (tree.nodes()[i].children == 0)
            chosen.push_back({i, 1});
    return chosen;
}

void put(drawing::Canvas& canvas, const drawing::Camera& camera, const PointBatch& batch) {
    for (std::size_t i = 0; i < batch.places.size(); ++i) {
        const auto seen = camera.project(batch.places[i]);
        if (!seen || !(seen->x >= 0 && seen->x < camera.width() && seen->y >= 0 &&
                       seen->y < camera.height()))
            continue;
        canvas.put(static_cast<unsigned>(seen->x), static_cast<unsigned>(seen->y), seen->depth,
                   batch.shades[i]);
    }
}

}  // namespace

Picture drawPicture(const qrb::Pointcloud& database, const PictureSettings& settings,
                    const std::function<void(double)>& progress) {
    if (settings.width < 1 || settings.height < 1 ||
        std::uint64_t(settings.width) * settings.height > mostPixels)
        throw core::Failure("The picture has no size that can be drawn.",
                            "Each side has at least one pixel, and all of it at most " +
                                std::to_string(mostPixels) + ".");
    NodeTree tree(database);
    if (tree.space().extent.isEmpty())
        throw core::Failure("The database has no points to draw.",
                            "Points that lie farther than 1e100 from 0 can't be seen.");
    Colouring colouring(database, tree,
                        settings.colour ? *settings.colour : colourChoices(database).front());
    drawing::Camera camera;
    camera.setScreen(settings.width, settings.height);
    camera.look(settings.from);
    camera.show(tree.space().extent);

    const std::vector<ChosenNode> chosen =
        settings.everyPoint ? allLeaves(tree) : chooseNodes(tree, camera, {});
    std::uint64_t all = 0;
    for (const ChosenNode& one : chosen)
        all += tree.nodes()[one.node].points;

    drawing::Canvas canvas(settings.width, settings.height, drawing::Canvas::Keep::Nearest);
    const NodeReader reader(database, tree, colouring);
    std::uint64_t points = 0;
    std::uint64_t passed = 0;
    for (const ChosenNode& one : chosen) {
        reader.read(one.node, settings.filter, [&](const PointBatch& batch) {
            points += batch.places.size();
            put(canvas, camera, batch);
        });
        passed += tree.nodes()[one.node].points;
        if (progress)
            progress(static_cast<double>(passed) / static_cast<double>(all));
    }
    canvas.closeGaps(points);
    drawing::Image image = canvas.paint(
        [&](const drawing::Pixel& pixel) { return colouring.colour(canvas.shadeOf(pixel)); });
    return {std::move(image), std::move(colouring), points, camera.unitsPerPixel()};
}

drawing::Image onGround(const drawing::Image& image, const drawing::Colour& ground) {
    drawing::Image result(image.width(), image.height());
    for (unsigned y = 0; y < image.height(); ++y)
        for (unsigned x = 0; x < image.width(); ++x)
            result.at(x, y) = image.at(x, y).alpha == 0 ? ground : image.at(x, y);
    return result;
}

}  // namespace tarvo::view
