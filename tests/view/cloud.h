// A cloud of points in a hill of small leaves, to be looked at.
#pragma once

#include "tests/qrb/library.h"
#include "view/nodetree.h"

#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::view::testing {

using namespace tarvo::qrb::pointcloud;

struct CloudPoint {
    std::uint64_t id = 0;
    drawing::Vector place{};
    double kind = 0;
};

class CloudTest : public LibraryTest {
protected:
    // As far from 0 as maps are.
    static constexpr double east = 600'000;
    static constexpr double north = 5'000'000;

    CloudTest() : m_context("OFF", "") {}

    // Makes the file; lod: edge of the cells of the level of detail, 0: none.
    void create(int side, std::uint32_t lod, std::uint32_t chunkSize = 200) {
        CreateSettings settings(m_context);
        settings.primaryAttribute = attribute("place", -1e7, 1e7, 0.001, 3);
        settings.chunkSize = chunkSize;
        settings.lodMode = 2;
        settings.chunkSizeLOD = lod;
        m_cloud = std::make_unique<qrb::Pointcloud>(m_context);
        m_cloud->create(m_file, settings);
        PointAttribute kind = attribute("kind", 0, 20, 1);
        kind.namedValues = "1=one\n2=two\n5=five\n18=far";
        kind.invalidValue = 20;
        TransactionGuard transaction(m_cloud->transactions(), "points", "tests");
        m_cloud->pointAttributes().add(kind);
        for (int x = 0; x < side; ++x)
            for (int y = 0; y < side; ++y) {
                const double height = 20 * std::sin(x * 0.05) * std::cos(y * 0.07);
                m_points.push_back(
                    {m_points.size() + 1,
                     {east + x * 0.5, north + y * 0.5, std::round(height * 1e3) / 1e3},
                     static_cast<double>((x / 10 + y / 10) % 6)});
            }
        insert(m_points);
        transaction.commit();
    }
    void insert(const std::vector<CloudPoint>& points) {
        QueryInsert query = m_cloud->insert();
        constexpr std::int32_t stride = sizeof(CloudPoint);
        query.bind(m_cloud->pointAttributes().pointIdName(), DataType::UINT64, &points[0].id,
                   stride);
        query.bind("place", DataType::DOUBLE, points[0].place.data(), stride);
        query.bind("kind", DataType::DOUBLE, &points[0].kind, stride);
        ASSERT_EQ(query.next(static_cast<std::uint32_t>(points.size())), points.size());
    }

    qrb::Context m_context;
    const std::string m_file = file("cloud.qrbx");
    std::unique_ptr<qrb::Pointcloud> m_cloud;
    std::vector<CloudPoint> m_points;
};

}  // namespace tarvo::view::testing
