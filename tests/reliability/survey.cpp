#include "tests/reliability/survey.h"

#include <map>
#include <random>
#include <vector>

namespace tarvo::trial {

using qrb::pointcloud::DataType;
using qrb::pointcloud::PointAttribute;

namespace {

// States that are kept beside the first one.
constexpr std::size_t keptStates = 3;

PointAttribute attribute(const char* name, double largest, double resolution,
                         std::uint32_t length) {
    PointAttribute result;
    result.name = result.title = name;
    result.length = length;
    result.minimumValue = 0;
    result.maximumValue = largest;
    result.resolution = resolution;
    result.storageClass = PointAttribute::VARIABLE;
    return result;
}

struct Point {
    double xyz[3];
    std::uint32_t group;
};

}  // namespace

void Survey::create(const std::string& file) {
    const qrb::Context context("OFF", "");
    qrb::pointcloud::CreateSettings settings(context);
    settings.primaryAttribute = attribute("xyz", 1000, 0.001, 3);
    settings.chunkMode = 1;
    settings.chunkSize = 100;
    qrb::Pointcloud cloud(context);
    cloud.create(file, settings);
    qrb::pointcloud::TransactionGuard guard(cloud.transactions(), "attributes", "trial");
    cloud.pointAttributes().add(attribute("group", 4'000'000'000, 1, 1));
    guard.commit();
}

Survey::Survey(const std::string& file) : m_cloud(qrb::Context("OFF", "")) {
    m_cloud.open(file, qrb::pointcloud::OpenSettings(m_cloud.context()));
}

void Survey::addGroup(std::uint32_t group) {
    std::mt19937 random(group);
    std::vector<Point> points(groupSize);
    for (Point& point : points)
        point = {{random() % 1000 / 1.0, random() % 1000 / 1.0, random() % 100 / 1.0}, group};
    qrb::pointcloud::QueryInsert query = m_cloud.insert();
    query.bind("xyz", DataType::DOUBLE, points[0].xyz, sizeof(Point));
    query.bind("group", DataType::UINT32, &points[0].group, sizeof(Point));
    query.next(groupSize);
    query.close();
}

void Survey::removeGroup(std::uint32_t group) {
    std::vector<std::uint64_t> ids(groupSize);
    qrb::pointcloud::QuerySelect select = m_cloud.select("group == " + std::to_string(group));
    select.bind("tarvo.id", DataType::UINT64, ids.data(), sizeof ids[0]);
    const std::uint32_t count = select.next(groupSize);
    select.close();
    if (count == 0)
        return;
    qrb::pointcloud::QueryRemove remove = m_cloud.remove();
    remove.bind(DataType::UINT64, ids.data(), sizeof ids[0]);
    remove.next(count);
    remove.close();
}

std::uint64_t Survey::number(const std::string& name) const {
    return std::stoull(m_cloud.metaData().get(name, "0"));
}

void Survey::setNumber(const std::string& name, std::uint64_t value) {
    m_cloud.metaData().set(name, std::to_string(value));
}

void Survey::setLargeItem(std::size_t bytes, std::uint64_t seed) {
    std::mt19937_64 random(seed);
    std::string text(bytes, '"');
    for (std::size_t i = 1; i + 1 < bytes; ++i)
        text[i] = static_cast<char>('A' + random() % 26);
    m_cloud.metaData().set("large", text);
}

std::uint64_t Survey::groups(std::string& wrong) const {
    constexpr std::uint32_t batch = 500;
    std::vector<Point> points(batch);
    std::map<std::uint32_t, std::uint32_t> sizes;
    qrb::pointcloud::QuerySelect query = m_cloud.select();
    query.bind("xyz", DataType::DOUBLE, points[0].xyz, sizeof(Point));
    query.bind("group", DataType::UINT32, &points[0].group, sizeof(Point));
    while (const std::uint32_t count = query.next(batch))
        for (std::uint32_t i = 0; i < count; ++i)
            ++sizes[points[i].group];
    for (const auto& [group, size] : sizes)
        if (size != groupSize)
            wrong = "group " + std::to_string(group) + " has " + std::to_string(size) + " points";
    return sizes.size();
}

void Survey::forgetOld() {
    std::vector<std::uint32_t> ids = m_cloud.transactions().list();
    const std::uint32_t current = m_cloud.transactions().current();
    std::erase(ids, current);
    if (ids.size() <= keptStates + 1)
        return;
    ids.erase(ids.begin());
    ids.resize(ids.size() - keptStates);
    m_cloud.transactions().discard(ids);
}

}  // namespace tarvo::trial
