#include "drawing/canvas.h"
#include "drawing/image.h"

#include <gtest/gtest.h>

#include <png.h>

namespace {

using namespace tarvo::drawing;

TEST(Canvas, ShowsTheNearestPointOrTheMean) {
    Canvas nearest(3, 1, Canvas::Keep::Nearest);
    nearest.put(1, 0, 5, {10, 0, 0});
    nearest.put(1, 0, -2, {20, 0, 0});
    nearest.put(1, 0, 9, {30, 0, 0});
    nearest.put(1, 0, -2, {40, 0, 0});  // as near as one that was there
    EXPECT_EQ(nearest.shadeOf(nearest.at(1, 0)), (Shade{20, 0, 0}));
    EXPECT_EQ(nearest.at(1, 0).count, 4);
    EXPECT_EQ(nearest.at(0, 0).count, 0);
    Canvas mean(1, 1, Canvas::Keep::Mean);
    mean.put(0, 0, 1, {10, 2, 3});
    mean.put(0, 0, 0, {20, 4, 3});
    EXPECT_EQ(mean.shadeOf(mean.at(0, 0)), (Shade{15, 3, 3}));
}

TEST(Canvas, ClosesGapsFromTheNearestAround) {
    // One point in a hundred pixels: three pixels around it are filled.
    Canvas canvas(10, 10, Canvas::Keep::Nearest);
    canvas.put(0, 0, 3, {1, 0, 0});
    canvas.put(4, 0, 1, {2, 0, 0});
    canvas.closeGaps(2);
    EXPECT_EQ(canvas.at(0, 0).sum[0], 1);  // what was there stays
    EXPECT_EQ(canvas.at(2, 2).sum[0], 2);  // between both: the nearer one
    EXPECT_EQ(canvas.at(0, 3).sum[0], 1);
    EXPECT_EQ(canvas.at(0, 4).count, 0);
    EXPECT_EQ(canvas.at(8, 0).count, 0);
    // Where points are many, a hole is one.
    Canvas dense(2, 1, Canvas::Keep::Nearest);
    dense.put(0, 0, 0, {1, 0, 0});
    dense.closeGaps(100);
    EXPECT_EQ(dense.at(1, 0).count, 0);
}

TEST(Canvas, IsWrittenAsAPngWithWhatWasPainted) {
    Canvas canvas(2, 2, Canvas::Keep::Nearest);
    canvas.put(1, 0, 0, {300, -5, 127.6});
    const Image image =
        canvas.paint([&](const Pixel& pixel) { return trueColour(canvas.shadeOf(pixel)); });
    const std::vector<std::uint8_t> bytes = pngOf(image);
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    ASSERT_TRUE(png_image_begin_read_from_memory(&header, bytes.data(), bytes.size()));
    header.format = PNG_FORMAT_RGBA;
    std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(header));
    ASSERT_TRUE(png_image_finish_read(&header, nullptr, pixels.data(), 0, nullptr));
    EXPECT_EQ(pixels, (std::vector<std::uint8_t>{0, 0, 0, 0, 255, 0, 128, 255,  //
                                                 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(Range, LeavesOutliersOutAndHasAMiddleWhereItIsOneValue) {
    std::vector<double> values(100, 5);
    values[0] = -1e9;
    values[99] = 1e9;
    for (int i = 10; i < 90; ++i)
        values[static_cast<std::size_t>(i)] = i;
    EXPECT_EQ(spreadOf(values), (Range{5, 88}));
    EXPECT_EQ(spreadOf({}), Range{});
    EXPECT_EQ((Range{3, 3}.place(7)), 0.5);
    EXPECT_EQ((Range{2, 6}.place(3)), 0.25);
}

}  // namespace
