#include "benchmarks/ours.h"

#include "benchmarks/measurement.h"
#include "core/pointpages.h"
#include "qrb/loader.h"
#include "qrb/pointcloud.h"
#include "qrb/pointclouddata.h"

#include <memory>
#include <stdexcept>

namespace bench {

namespace {

using namespace tarvo;
using qrb::pointcloud::OpenSettings;
using qrb::pointcloud::QuerySelect;

constexpr std::uint32_t pageSize = 100;
constexpr std::uint32_t batchSize = 10'000'000;

std::uint64_t countAll(QuerySelect query) {
    std::uint64_t sum = 0;
    while (const std::uint32_t part = query.next(batchSize))
        sum += part;
    return sum;
}

std::uint64_t firstPage(const qrb::Pointcloud& cloud, const std::string& filter) {
    std::vector<core::PointColumn> columns;
    for (const std::string& name : cloud.pointAttributes().list())
        for (core::PointColumn& column : core::columnsOf(cloud.pointAttributes().get(name)))
            columns.push_back(std::move(column));
    core::PointPages pages(cloud, {filter, {}}, std::move(columns), pageSize);
    const std::uint32_t count = pages.next();
    std::string lines;
    for (std::uint32_t row = 0; row < count; ++row)
        for (std::size_t i = 0; i < pages.columns().size(); ++i) {
            pages.appendText(lines, row, i);
            lines += i + 1 < pages.columns().size() ? ',' : '\n';
        }
    return count;
}

template <typename Question>
void ask(const std::string& file, Question&& question) {
    std::unique_ptr<qrb::Context> context;
    std::unique_ptr<qrb::Pointcloud> cloud;
    tell("first", measured([&] {
             context = std::make_unique<qrb::Context>("OFF", "");
             cloud = std::make_unique<qrb::Pointcloud>(*context);
             cloud->open(file, OpenSettings(*context));
             return question(*cloud);
         }));
    tell("again", repeated([&] { return question(*cloud); }));
}

// The smallest cache, emptied each time: every column that the filter names is read and decoded.
void askUncached(const std::string& file, const std::string& filter) {
    const qrb::Context context("OFF", "");
    const auto data = std::make_shared<qrb::PointcloudData>(context);
    OpenSettings settings(context);
    settings.cacheSize = 1;
    data->check(qrb::functions().qrb_pointcloud_open(context.handle(), data->handle, file.c_str(),
                                                     settings.transfer()));
    tell("again", repeated([&] {
             data->check(
                 qrb::functions().qrb_pointcloud_clear_cache(context.handle(), data->handle));
             return countAll(QuerySelect(data, nullptr, filter));
         }));
}

}  // namespace

void runOurs(const std::vector<std::string>& words) {
    const std::string& task = words.at(0);
    const std::string& file = words.at(1);
    const std::string& filter = words.at(2);
    if (task == "count")
        ask(file, [&](const qrb::Pointcloud& cloud) { return countAll(cloud.select(filter)); });
    else if (task == "page")
        ask(file, [&](const qrb::Pointcloud& cloud) { return firstPage(cloud, filter); });
    else if (task == "decode")
        askUncached(file, filter);
    else
        throw std::runtime_error("no such task: " + task);
}

}  // namespace bench
