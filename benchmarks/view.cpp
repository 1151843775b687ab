// How long people wait for a picture, beside the time that reading all points takes.
//   bench_view LIBRARY DATABASE
#include "benchmarks/measurement.h"
#include "qrb/loader.h"
#include "view/picture.h"
#include "view/stream.h"

#include <condition_variable>
#include <cstdio>
#include <exception>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <vector>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

constexpr unsigned width = 1280;
constexpr unsigned height = 960;

void open(qrb::Pointcloud& cloud, const qrb::Context& context, const std::string& fileName) {
    OpenSettings settings(context);
    settings.readOnly = true;
    cloud.open(fileName, settings);
}

// Places and identifiers of all points, as a picture of them takes at least.
std::uint64_t readAll(const std::string& fileName) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    open(cloud, context, fileName);
    constexpr std::uint32_t batch = 100'000;
    std::vector<double> places(3 * batch);
    QuerySelect query = cloud.select();
    query.bind(cloud.pointAttributes().primaryAttributeName(), DataType::DOUBLE, places.data(), 24);
    std::uint64_t points = 0;
    while (const std::uint32_t count = query.next(batch))
        points += count;
    return points;
}

// From the wish to see a file until the picture is as far as the condition says; its points.
std::uint64_t stream(const std::string& fileName,
                     const std::function<bool(const view::StreamPicture&)>& isEnough) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    open(cloud, context, fileName);
    drawing::Camera camera;
    camera.setScreen(width, height);
    camera.show(view::CloudSpace::of(cloud).extent);
    std::mutex mutex;
    std::condition_variable changed;
    view::PointStream points([&] {
        const std::lock_guard lock(mutex);
        changed.notify_all();
    });
    view::StreamSettings settings;
    settings.fileName = fileName;
    points.look(camera);
    points.show(settings);
    std::unique_lock lock(mutex);
    for (;;) {
        const view::StreamPicture picture = points.picture();
        if (!picture.error.empty())
            throw std::runtime_error(picture.error);
        if (isEnough(picture))
            return picture.points;
        changed.wait(lock);
    }
}

std::uint64_t draw(const std::string& fileName, bool everyPoint) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    open(cloud, context, fileName);
    view::PictureSettings settings;
    settings.width = width;
    settings.height = height;
    settings.everyPoint = everyPoint;
    return view::drawPicture(cloud, settings).points;
}

void compare(const std::string& fileName) {
    const bench::Measurement all = bench::repeated([&] { return readAll(fileName); });
    std::printf("%-22s %12s %10s %8s\n", "", "points", "ms", "ratio");
    const auto tell = [&](const char* name, const bench::Measurement& one) {
        std::printf("%-22s %12llu %10.1f %8.3f\n", name,
                    static_cast<unsigned long long>(one.answer), one.wall * 1e3,
                    one.wall / all.wall);
    };
    tell("all points read", all);
    tell("first picture", bench::repeated([&] {
             return stream(fileName,
                           [](const view::StreamPicture& picture) { return picture.points > 0; });
         }));
    tell("complete picture", bench::repeated([&] {
             return stream(fileName,
                           [](const view::StreamPicture& picture) { return picture.isComplete; });
         }));
    tell("drawn to a file", bench::repeated([&] { return draw(fileName, false); }));
    tell("drawn of every point", bench::repeated([&] { return draw(fileName, true); }));
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::fprintf(stderr, "bench_view LIBRARY DATABASE\n");
        return 2;
    }
    try {
        qrb::loadLibrary(arguments[1]);
        compare(arguments[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
