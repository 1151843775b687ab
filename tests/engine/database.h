// Databases for the engine's tests: files in a folder that goes with the test, points by their id.
#pragma once

#include "engine/query/commit.h"
#include "engine/query/insert.h"
#include "engine/query/select.h"
#include "engine/session/session.h"

#include <unistd.h>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace tarvo::engine::testing {

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "qrb-XXXXXX").string();
        m_path = ::mkdtemp(pattern.data());
    }
    ~TemporaryFolder() { std::filesystem::remove_all(m_path); }
    std::string file(const std::string& name) const { return (m_path / name).string(); }
    // What is in the folder, for messages.
    std::string names() const {
        std::string result;
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            result += entry.path().filename().string() + " ";
        return result;
    }
    std::size_t entries() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(m_path), {}));
    }

private:
    std::filesystem::path m_path;
};

inline schema::AttributeRecord record(const std::string& name, double minimum, double maximum,
                                      double resolution = 1, std::uint32_t length = 1) {
    schema::AttributeRecord result;
    result.name = name;
    result.length = length;
    result.minimumValue = minimum;
    result.maximumValue = maximum;
    result.resolution = resolution;
    result.storageClass = 2;
    return result;
}

// Coordinates in millimetres and one whole number.
struct Point {
    double x = 0, y = 0, z = 0;
    std::uint16_t amplitude = 0;
    bool operator==(const Point&) const = default;
};
using Points = std::map<std::uint64_t, Point>;  // by id

inline session::CreateSettings settings(std::uint32_t chunkMode, std::uint32_t chunkSize) {
    session::CreateSettings result;
    result.primaryAttribute = record("xyz", -1000, 1000, 0.001, 3);
    result.chunkMode = chunkMode;
    result.chunkSize = chunkSize;
    return result;
}

inline std::vector<schema::AttributeRecord> amplitudeOnly() {
    return {record("amplitude", 0, 65535)};
}

inline std::vector<Point> somePoints(std::size_t count, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::vector<Point> points(count);
    for (Point& p : points)
        p = {static_cast<double>(random() % 2000) - 1000, static_cast<double>(random() % 100),
             static_cast<double>(random() % 100) / 8, static_cast<std::uint16_t>(random() % 9000)};
    return points;
}

inline void insert(session::Session& session, std::vector<Point> points) {
    query::InsertQuery query(session);
    query.bind("xyz", QRB_DATA_TYPE_DOUBLE, &points[0].x, sizeof(Point));
    query.bind("amplitude", QRB_DATA_TYPE_UINT16, &points[0].amplitude, sizeof(Point));
    query.next(static_cast<std::uint32_t>(points.size()));
}

inline Points readAll(session::Session& session, const std::string& filter = {},
                      query::Scope scope = {}) {
    query::SelectQuery query(session, std::move(scope), filter);
    std::vector<Point> points(777);
    std::vector<std::uint64_t> ids(points.size());
    query.bind("xyz", QRB_DATA_TYPE_DOUBLE, &points[0].x, sizeof(Point));
    query.bind("amplitude", QRB_DATA_TYPE_UINT16, &points[0].amplitude, sizeof(Point));
    query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), sizeof ids[0]);
    Points result;
    while (const std::uint32_t count = query.next(static_cast<std::uint32_t>(points.size())))
        for (std::uint32_t i = 0; i < count; ++i)
            if (!result.emplace(ids[i], points[i]).second)
                throw Failure(ErrorCode::Internal, "A point was read twice.");
    return result;
}

inline std::uint64_t countOf(session::Session& session, const std::string& filter) {
    query::SelectQuery query(session, {}, filter);
    std::uint64_t sum = 0;
    while (const std::uint32_t count = query.next(10'000'000))
        sum += count;
    return sum;
}

inline void commitPoints(session::Session& session, const std::vector<Point>& points) {
    session.begin("insert", "test", "", "");
    insert(session, points);
    query::commit(session);
}

}  // namespace tarvo::engine::testing
