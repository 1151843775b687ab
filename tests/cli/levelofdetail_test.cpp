// What the inner nodes of real and of very uneven clouds show, against a straightforward
// computation from all the points below them.

#include "tests/cli/folder.h"
#include "tests/cli/process.h"

#include "qrb/loader.h"
#include "qrb/pointcloud.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <numbers>
#include <random>

namespace {

using namespace tarvo::cli::tests;
using namespace tarvo::qrb::pointcloud;
using tarvo::qrb::Pointcloud;

struct Point {
    double xyz[3];
    double intensity;
};

constexpr const char* intensity = "tarvo.intensity";
// What the points get in its place, the more often the weaker they are.
constexpr double noIntensity = 65535;

// Points about a scanner whose density falls with the square of the distance, by eight powers of
// ten from the nearest to the farthest; the stronger the nearer.
std::string scanTable() {
    std::string table = "x,y,z,tarvo.intensity\n";
    std::mt19937 random(1);
    const auto uniform = [&random] { return static_cast<double>(random()) * 0x1p-32; };
    for (int i = 0; i < 60'000; ++i) {
        const double range = 0.1 * std::pow(10'000, uniform());
        const double angle = 2 * std::numbers::pi * uniform();
        char line[100];
        std::snprintf(line, sizeof line, "%.4f,%.4f,%.4f,%.0f\n", range * std::cos(angle),
                      range * std::sin(angle), uniform(), 5000 / (range + 1) + 100 * uniform());
        table += line;
    }
    return table;
}

// The parameter: a LAS file of the test data; "sample": a simulated scan; "scan": scanTable().
class LevelOfDetail : public testing::TestWithParam<const char*> {
protected:
    LevelOfDetail() { tarvo::qrb::loadLibrary(QRBLIB_FILE); }
    ~LevelOfDetail() override {
        m_cloud.reset();
        tarvo::qrb::freeLibrary();
    }

    // False where the data are not there.
    bool make(std::uint32_t mode, std::uint32_t size) {
        const std::string source = folder.file("source.qrbx");
        const std::string kind = GetParam();
        if (kind == "sample") {
            EXPECT_EQ(run("sample -n 60000 " + source).code, 0);
        } else if (kind == "scan") {
            const Result import =
                run("import " + folder.write("scan.csv", scanTable()) + " " + source);
            EXPECT_EQ(import.code, 0) << import.output;
        } else {
            const char* const data = std::getenv("QRB_TEST_DATA");
            if (data == nullptr || *data == 0)
                return false;
            const Result import = run("import " + std::string(data) + "/" + kind + " " + source);
            EXPECT_EQ(import.code, 0) << import.output;
        }
        const tarvo::qrb::Context context("OFF", "");
        Pointcloud cloud(context);
        cloud.open(source, OpenSettings(context));
        m_grid = cloud.pointAttributes().get("tarvo.xyz");
        m_hasIntensity = cloud.pointAttributes().exists(intensity);
        std::vector<Point> points = read(cloud, nullptr);
        CreateSettings settings(context);
        settings.primaryAttribute = m_grid;
        settings.chunkSize = leafCapacity;
        settings.lodMode = mode;
        settings.chunkSizeLOD = size;
        m_cloud = std::make_unique<Pointcloud>(context);
        m_cloud->create(folder.file("small.qrbx"), settings);
        TransactionGuard transaction(m_cloud->transactions(), "insert", "test");
        if (m_hasIntensity) {
            PointAttribute attribute = cloud.pointAttributes().get(intensity);
            attribute.maximumValue = 65534;
            attribute.invalidValue = noIntensity;
            m_cloud->pointAttributes().add(attribute);
            std::mt19937 random(1);
            for (Point& point : points)
                if (static_cast<double>(random()) * 0x1p-32 < 1 - point.intensity / 300)
                    point.intensity = noIntensity;
        }
        QueryInsert insert = m_cloud->insert();
        insert.bind("tarvo.xyz", DataType::DOUBLE, points[0].xyz, sizeof(Point));
        if (m_hasIntensity)
            insert.bind(intensity, DataType::DOUBLE, &points[0].intensity, sizeof(Point));
        insert.next(static_cast<std::uint32_t>(points.size()));
        insert.close();
        transaction.commit();
        m_cloud->stat().index(m_root);
        return true;
    }
    std::vector<Point> read(const Pointcloud& cloud,
                            const std::vector<std::uint32_t>* nodes) const {
        QuerySelect select = nodes ? cloud.select(*nodes, "") : cloud.select("");
        std::vector<Point> page(50'000);
        select.bind("tarvo.xyz", DataType::DOUBLE, page[0].xyz, sizeof(Point));
        if (m_hasIntensity)
            select.bind(intensity, DataType::DOUBLE, &page[0].intensity, sizeof(Point));
        std::vector<Point> points;
        while (const std::uint32_t count = select.next(static_cast<std::uint32_t>(page.size())))
            points.insert(points.end(), page.begin(), page.begin() + count);
        return points;
    }
    using Check =
        std::function<void(std::uint32_t node, unsigned levels, const std::vector<Point>& own,
                           const std::vector<Point>& below)>;
    // Calls the check for every inner node; levels: of nodes below it.
    void forEachInner(const Check& check) {
        std::vector<std::uint32_t> leaves;
        visit(m_root, check, leaves);
    }

    static constexpr std::uint32_t leafCapacity = 500;
    Folder folder;
    PointAttribute m_grid;
    bool m_hasIntensity = false;

private:
    unsigned visit(const IndexNode& node, const Check& check, std::vector<std::uint32_t>& leaves) {
        if (node.children.empty()) {
            leaves.push_back(node.id);
            return 0;
        }
        std::vector<std::uint32_t> mine;
        unsigned levels = 0;
        for (const IndexNode& child : node.children)
            levels = std::max(levels, visit(child, check, mine));
        const std::vector<std::uint32_t> self{node.id};
        check(node.id, levels + 1, read(*m_cloud, &self), read(*m_cloud, &mine));
        leaves.insert(leaves.end(), mine.begin(), mine.end());
        return levels + 1;
    }

    std::unique_ptr<Pointcloud> m_cloud;
    IndexNode m_root;
};

// Points in the cells of 8 x 8 over a box.
using Cells = std::array<std::size_t, 64>;
Cells cellsOf(const std::vector<Point>& points, const double (&low)[2], const double (&high)[2]) {
    Cells cells{};
    for (const Point& point : points) {
        std::size_t cell = 0;
        for (int axis = 0; axis < 2; ++axis) {
            const double place = (point.xyz[axis] - low[axis]) / (high[axis] - low[axis] + 1e-9);
            cell = cell * 8 + static_cast<std::size_t>(std::clamp(place * 8, 0.0, 7.0));
        }
        ++cells[cell];
    }
    return cells;
}

TEST_P(LevelOfDetail, OfThinoutKeepsEachPartOfANodeAlike) {
    if (!make(1, 20))
        GTEST_SKIP() << "without test data";
    int checked = 0;
    forEachInner([&](std::uint32_t node, unsigned, const std::vector<Point>& own,
                     const std::vector<Point>& below) {
        // Each of the eight children may round off one.
        const std::size_t wanted = std::clamp<std::size_t>(below.size() / 5, 1, leafCapacity);
        EXPECT_LE(own.size(), wanted);
        EXPECT_GE(own.size() + 8, wanted);
        double low[2] = {1e300, 1e300};
        double high[2] = {-1e300, -1e300};
        for (const Point& point : below)
            for (int axis = 0; axis < 2; ++axis) {
                low[axis] = std::min(low[axis], point.xyz[axis]);
                high[axis] = std::max(high[axis], point.xyz[axis]);
            }
        const Cells all = cellsOf(below, low, high);
        const Cells kept = cellsOf(own, low, high);
        for (std::size_t cell = 0; cell < all.size(); ++cell) {
            const double fair = static_cast<double>(own.size()) * static_cast<double>(all[cell]) /
                                static_cast<double>(below.size());
            // Of few points one more or less is no wonder.
            const double chance = 2 * std::sqrt(fair) + 1;
            EXPECT_GE(static_cast<double>(kept[cell]), fair / 2 - chance) << "node " << node;
            EXPECT_LE(static_cast<double>(kept[cell]), fair * 2 + chance) << "node " << node;
            if (fair >= 8) {
                EXPECT_GE(static_cast<double>(kept[cell]) + 1, fair / 2) << "node " << node;
                EXPECT_LE(static_cast<double>(kept[cell]), fair * 2) << "node " << node;
                ++checked;
            }
        }
    });
    std::cout << checked << " cells of 8 points and more\n";
    EXPECT_GT(checked, 0);
}

struct Mean {
    double sum[4] = {};
    double count = 0;
    double intensities = 0;
};

TEST_P(LevelOfDetail, OfCombineAreTheMeansOfAllPointsBelow) {
    if (!make(2, 3))
        GTEST_SKIP() << "without test data";
    std::size_t compared = 0;
    forEachInner([&](std::uint32_t node, unsigned levels, const std::vector<Point>& own,
                     const std::vector<Point>& below) {
        const auto cellOf = [&](const Point& point, unsigned shift) {
            std::array<std::uint64_t, 3> cell{};
            for (std::size_t axis = 0; axis < 3; ++axis)
                cell[axis] = static_cast<std::uint64_t>(std::llround(
                                 (point.xyz[axis] - m_grid.minimumValue) / m_grid.resolution)) >>
                             shift;
            return cell;
        };
        // Each level rounds once more.
        const double steps = 0.5 * levels + 0.01;
        // The grid that has as many cells with points as the node has.
        for (unsigned shift = 0; shift < 40; ++shift) {
            std::map<std::array<std::uint64_t, 3>, Mean> cells;
            for (const Point& point : below) {
                Mean& mean = cells[cellOf(point, shift)];
                for (int i = 0; i < 3; ++i)
                    mean.sum[i] += point.xyz[i];
                if (point.intensity != noIntensity) {
                    mean.sum[3] += point.intensity;
                    ++mean.intensities;
                }
                ++mean.count;
            }
            if (cells.size() > own.size())
                continue;
            ASSERT_EQ(cells.size(), own.size()) << "node " << node;
            for (const Point& point : own) {
                const auto found = cells.find(cellOf(point, shift));
                ASSERT_NE(found, cells.end()) << "node " << node;
                const Mean& mean = found->second;
                for (int i = 0; i < 3; ++i)
                    EXPECT_NEAR(point.xyz[i], mean.sum[i] / mean.count,
                                steps * m_grid.resolution + 1e-15 * std::abs(point.xyz[i]))
                        << "node " << node;
                if (m_hasIntensity) {
                    EXPECT_NEAR(point.intensity,
                                mean.intensities > 0 ? mean.sum[3] / mean.intensities : noIntensity,
                                steps)
                        << "node " << node;
                }
                ++compared;
            }
            break;
        }
    });
    std::cout << compared << " points compared\n";
    EXPECT_GT(compared, 0u);
}

INSTANTIATE_TEST_SUITE_P(Clouds, LevelOfDetail,
                         testing::Values("sample", "scan", "autzen_trim.las", "4_6_crop.las",
                                         "sample_c.las"));

}  // namespace
