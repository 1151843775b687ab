#include "copy/creationsettings.h"
#include "copy/databasecopy.h"
#include "copy/newdatabase.h"
#include "tests/qrb/library.h"

#include <cmath>
#include <fstream>
#include <map>
#include <stdexcept>
#include <vector>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

// A source with attributes of every kind, and what must come back from copies of it.
class Copy : public LibraryTest {
protected:
    struct Point {
        double p[2] = {};
        std::uint8_t kind = 0;
        double fine = 0;  // needs more digits than single precision has
        double raw = 0;   // any double
        double part[3] = {};
        std::uint8_t same = 0;  // one value for the whole file
        bool operator==(const Point&) const = default;
    };
    using Table = std::map<std::uint64_t, Point>;  // by point id

    Copy() : m_context("OFF", ""), m_source(m_context) {
        CreateSettings settings(m_context);
        settings.primaryAttribute = attribute("p", -1000, 1000, 0.01, 2);
        settings.chunkSize = 100;
        settings.compressionLevel = 30;
        m_source.create(file("source.qrbx"), settings);
        TransactionGuard transaction(m_source.transactions(), "Begin", "tests");
        auto& attributes = m_source.pointAttributes();
        attributes.add(attribute("kind", 0, 200, 1));
        attributes.add(attribute("fine", -1e6, 1e6, 1e-6));
        attributes.add(attribute("raw", -1e300, 1e300, 0));
        auto part = attribute("part", -5, 5, 0.5, 3);
        part.invalidValue = -5;
        attributes.add(part);
        auto same = attribute("same", 0, 9, 1);
        same.storageClass = PointAttribute::CONSTANT;
        attributes.add(same);
        std::vector<Point> points(3000);
        std::vector<std::uint64_t> ids(points.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            const auto n = static_cast<double>(i);
            points[i] = {{std::fmod(n * 37, 2000) / 4 - 250, n / 4},
                         std::uint8_t(i % 7),
                         std::round(n * 333.3333337e6) / 1e6,
                         std::sqrt(n) * 1e200,
                         {double(i % 5), -5, 0.5},
                         4};
            ids[i] = 7 + 3 * i;
        }
        auto query = m_source.insert();
        bind(query, points[0]);
        query.bind("tarvo.id", DataType::UINT64, ids.data(), 8);
        EXPECT_EQ(query.next(3000), 3000u);
        query.close();
        m_source.metaData().set("one", "{\"a\": 1}");
        m_source.metaData().set("two", "plain");
        transaction.commit();
        for (std::size_t i = 0; i < points.size(); ++i)
            m_table[ids[i]] = points[i];
    }

    template <typename Query>
    static void bind(Query& query, Point& point) {
        query.bind("p", DataType::DOUBLE, point.p, sizeof(Point));
        query.bind("kind", DataType::UINT8, &point.kind, sizeof(Point));
        query.bind("fine", DataType::DOUBLE, &point.fine, sizeof(Point));
        query.bind("raw", DataType::DOUBLE, &point.raw, sizeof(Point));
        query.bind("part", DataType::DOUBLE, point.part, sizeof(Point));
        query.bind("same", DataType::UINT8, &point.same, sizeof(Point));
    }

    static Table read(const qrb::Pointcloud& cloud, const std::string& filter = {}) {
        Table table;
        Point point;
        std::uint64_t id = 0;
        auto query = cloud.select(filter);
        bind(query, point);
        query.bind("tarvo.id", DataType::UINT64, &id, 8);
        while (query.next(1))
            table[id] = point;
        return table;
    }

    copy::Selection everything() const {
        copy::Selection result;
        result.attributes = m_source.pointAttributes().list();
        result.metaData = m_source.metaData().list();
        return result;
    }

    // A copy that is published, opened again.
    std::unique_ptr<qrb::Pointcloud> copied(const copy::Selection& what,
                                            const CreateSettings& settings) {
        copy::NewDatabase target(m_context, file("target.qrbx"), true);
        target.create(settings);
        TransactionGuard transaction(target.cloud().transactions(), "Copy", "tests");
        copyDatabase(m_source, target.cloud(), what);
        transaction.commit();
        target.publish();
        auto cloud = std::make_unique<qrb::Pointcloud>(m_context);
        cloud->open(file("target.qrbx"), OpenSettings(m_context));
        return cloud;
    }

    CreateSettings settings() const { return copy::creationSettings(m_source).value(); }

    qrb::Context m_context;
    qrb::Pointcloud m_source;
    Table m_table;
};

TEST_F(Copy, HoldsAllThatTheSourceHolds) {
    const auto cloud = copied(everything(), settings());
    EXPECT_TRUE(read(*cloud) == m_table);
    EXPECT_EQ(cloud->pointAttributes().list(), m_source.pointAttributes().list());
    for (const std::string& name : m_source.pointAttributes().list())
        EXPECT_EQ(cloud->pointAttributes().get(name).toJson(),
                  m_source.pointAttributes().get(name).toJson());
    EXPECT_EQ(cloud->metaData().get("one"), "{\"a\": 1}");
    EXPECT_EQ(cloud->metaData().get("two"), "plain");
    EXPECT_EQ(copy::creationSettings(*cloud)->compressionLevel, 30);
    EXPECT_NE(cloud->getUuid(), m_source.getUuid());
}

TEST_F(Copy, HoldsOnlyWhatIsSelected) {
    copy::Selection what = everything();
    what.filter = "kind == 3";
    what.metaData = {"two"};
    EXPECT_TRUE(read(*copied(what, settings())) == read(m_source, "kind == 3"));

    IndexNode root;
    m_source.stat().index(root);
    ASSERT_FALSE(root.children.empty());
    const IndexNode* leaf = &root;
    while (!leaf->children.empty())
        leaf = &leaf->children.front();
    what.filter.clear();
    what.nodes = {leaf->id};
    const auto cloud = copied(what, settings());
    EXPECT_EQ(read(*cloud).size(), static_cast<std::size_t>(leaf->pointCountNode));
    EXPECT_EQ(cloud->metaData().list(), std::vector<std::string>{"two"});

    what.nodes.reset();
    what.attributes = {"p"};  // the points are numbered anew
    const auto bare = copied(what, settings());
    EXPECT_EQ(bare->pointAttributes().list(), (std::vector<std::string>{"p", "tarvo.id"}));
    EXPECT_EQ(bare->inspect(2).find("\"kind\""), std::string::npos);
}

TEST_F(Copy, TakesTheDefinitionsOfTheTarget) {
    CreateSettings coarse = settings();
    coarse.primaryAttribute.resolution = 1;
    const Table table = read(*copied(everything(), coarse));
    ASSERT_EQ(table.size(), m_table.size());
    for (const auto& [id, point] : m_table)
        EXPECT_NEAR(table.at(id).p[0], point.p[0], 0.5);

    CreateSettings narrow = settings();
    narrow.primaryAttribute.maximumValue = 10;
    EXPECT_THROW(copied(everything(), narrow), qrb::Error);

    copy::Selection what = everything();
    std::erase(what.attributes, "p");
    EXPECT_NE(failure([&] { copied(what, settings()); }, 0).find("primary attribute \"p\""),
              std::string::npos);
}

TEST_F(Copy, CancelledOrFailedLeavesTheFileThatWasThere) {
    copied(everything(), settings())->close();
    const auto size = std::filesystem::file_size(file("target.qrbx"));
    const auto cancelled = [&] {
        copy::NewDatabase target(m_context, file("target.qrbx"), true);
        target.create(settings());
        TransactionGuard transaction(target.cloud().transactions(), "Copy", "tests");
        copyDatabase(m_source, target.cloud(), everything(),
                     [](int) { throw std::runtime_error("Cancelled."); });
    };
    EXPECT_THROW(cancelled(), std::runtime_error);
    EXPECT_EQ(std::filesystem::file_size(file("target.qrbx")), size);
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(m_folder))
        files += entry.path().filename().string().find("target") == 0 ? 1 : 0;
    EXPECT_EQ(files, 1u);
    EXPECT_TRUE(read(m_source) == m_table);
}

TEST_F(Copy, NewDatabaseReplacesOnlyWhatItMay) {
    std::ofstream(file("there.qrbx")) << "text";
    EXPECT_NE(failure([&] { copy::NewDatabase(m_context, file("there.qrbx"), false); }, 0)
                  .find("exists already"),
              std::string::npos);
    EXPECT_NE(failure([&] { copy::NewDatabase(m_context, file("no/such.qrbx"), false); }, 0)
                  .find("folder"),
              std::string::npos);
    copy::NewDatabase target(m_context, file("new.qrbx"), false);
    target.create(settings());
    std::ofstream(file("new.qrbx")) << "somebody was faster";
    failure([&] { target.publish(); }, 0);
    EXPECT_EQ(std::filesystem::file_size(file("new.qrbx")), 19u);
}

}  // namespace
