// What is different between two databases: against what reading both as a whole tells, whatever was
// done between two transactions, and rule by rule.
#include "core/databasediff.h"

#include "core/comparedstates.h"
#include "core/difftext.h"
#include "core/error.h"
#include "core/leafpairs.h"
#include "tests/engine/seed.h"
#include "tests/qrb/library.h"

#include <cmath>
#include <filesystem>
#include <functional>
#include <map>
#include <set>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

constexpr const char* idName = "tarvo.id";

class Diff : public LibraryTest {
protected:
    Diff() : m_context("OFF", ""), m_cloud(m_context) {}

    void create(const std::string& name, std::uint32_t chunkSize = 50) {
        CreateSettings settings(m_context);
        settings.primaryAttribute = attribute("p", -1000, 1000, 0.01, 2);
        settings.chunkSize = chunkSize;
        m_cloud.create(file(name), settings);
    }
    // Makes one transaction.
    void change(const std::function<void()>& work) {
        TransactionGuard transaction(m_cloud.transactions(), "change", "tests");
        work();
        transaction.commit();
    }
    void insert(const std::vector<std::uint64_t>& ids, const std::string& name,
                const std::vector<double>& values) {
        std::vector<double> places;
        for (const std::uint64_t id : ids) {
            // Neighbours are near each other, so that leaves are left alone.
            places.push_back(static_cast<double>(id % 400) * 5 - 1000);
            places.push_back(static_cast<double>(id % 10));
        }
        auto query = m_cloud.insert();
        query.bind(idName, DataType::UINT64, ids.data(), 8);
        query.bind("p", DataType::DOUBLE, places.data(), 16);
        if (!name.empty())
            query.bind(name, DataType::DOUBLE, values.data(), 8);
        ASSERT_EQ(query.next(static_cast<std::uint32_t>(ids.size())), ids.size());
        query.close();
    }
    void update(const std::vector<std::uint64_t>& ids, const std::string& name,
                const std::vector<double>& values) {
        auto query = m_cloud.update();
        query.bind(idName, DataType::UINT64, ids.data(), 8);
        query.bind(name, DataType::DOUBLE, values.data(), 8);
        query.next(static_cast<std::uint32_t>(ids.size()));
        query.close();
    }
    void remove(const std::vector<std::uint64_t>& ids) {
        auto query = m_cloud.remove();
        query.bind(DataType::UINT64, ids.data(), 8);
        query.next(static_cast<std::uint32_t>(ids.size()));
        query.close();
    }
    void fill(const std::string& name, double value, const std::string& filter = {}) {
        auto query = m_cloud.fill(filter);
        query.bind(name, DataType::DOUBLE, &value);
        while (query.next(1000)) {
        }
        query.close();
    }
    core::DatabaseDiff compare(core::StateName before, core::StateName after,
                               const core::DiffOptions& options = {}) const {
        const core::ComparedStates states(m_context, before, after);
        return compareDatabases(states.before(), states.after(), states.areOfOneFile(), options);
    }

    qrb::Context m_context;
    qrb::Pointcloud m_cloud;
};

// A database as it reads: definitions, and the values of each point by its id.
struct Snapshot {
    std::map<std::string, PointAttribute> attributes;
    std::map<std::uint64_t, std::map<std::string, std::vector<double>>> points;
};

Snapshot snapshotOf(const qrb::Pointcloud& cloud) {
    Snapshot all;
    std::map<std::string, std::vector<double>> row;
    std::uint64_t id = 0;
    auto query = cloud.select();
    query.bind(idName, DataType::UINT64, &id, 8);
    for (const std::string& name : cloud.pointAttributes().list()) {
        all.attributes[name] = cloud.pointAttributes().get(name);
        if (name == idName)
            continue;
        row[name].resize(all.attributes[name].length);
        query.bind(name, DataType::DOUBLE, row[name].data(), 0);
    }
    while (query.next(1))
        all.points[id] = row;
    return all;
}

bool differs(const PointAttribute& a, const PointAttribute& b, double x, double y) {
    const bool alike = a.resolution == b.resolution && a.minimumValue == b.minimumValue &&
                       a.maximumValue == b.maximumValue &&
                       (a.invalidValue == b.invalidValue ||
                        (std::isnan(a.invalidValue) && std::isnan(b.invalidValue)));
    if (alike)
        return x != y;
    if (x == a.invalidValue || y == b.invalidValue)
        return !(x == a.invalidValue && y == b.invalidValue);
    return std::fabs(x - y) > std::min(a.resolution, b.resolution) / 2 + 1e-9;
}

// What must be told of the points, without the texts.
struct Told {
    std::set<std::uint64_t> added, removed, changed;
    std::map<std::string, std::set<std::uint64_t>> values;  // of attributes that both have
};

Told expectedOf(const Snapshot& before, const Snapshot& after) {
    Told told;
    for (const auto& [id, row] : after.points)
        if (!before.points.contains(id))
            told.added.insert(id);
    for (const auto& [id, row] : before.points) {
        const auto found = after.points.find(id);
        if (found == after.points.end()) {
            told.removed.insert(id);
            continue;
        }
        for (const auto& [name, values] : row) {
            const auto now = found->second.find(name);
            if (now == found->second.end() || now->second.size() != values.size())
                continue;
            for (std::size_t e = 0; e < values.size(); ++e)
                if (differs(before.attributes.at(name), after.attributes.at(name), values[e],
                            now->second[e])) {
                    told.values[name].insert(id);
                    told.changed.insert(id);
                }
        }
    }
    return told;
}

template <typename Examples>
std::vector<std::uint64_t> idsOf(const Examples& examples) {
    std::vector<std::uint64_t> ids;
    for (const auto& one : examples)
        ids.push_back(one.id);
    return ids;
}

void expectTold(const Told& told, const core::PointsDiff& diff, std::size_t first) {
    const auto firstOf = [&](const std::set<std::uint64_t>& all) {
        std::vector<std::uint64_t> ids(all.begin(), all.end());
        ids.resize(std::min(ids.size(), first));
        return ids;
    };
    EXPECT_EQ(diff.added, told.added.size());
    EXPECT_EQ(diff.removed, told.removed.size());
    EXPECT_EQ(diff.changed, told.changed.size());
    EXPECT_EQ(idsOf(diff.firstAdded), firstOf(told.added));
    EXPECT_EQ(idsOf(diff.firstRemoved), firstOf(told.removed));
    for (const core::ValuesDiff& one : diff.values) {
        const auto found = told.values.find(one.attribute);
        const std::set<std::uint64_t> ids =
            found == told.values.end() ? std::set<std::uint64_t>() : found->second;
        EXPECT_EQ(one.points, ids.size()) << one.attribute;
        EXPECT_EQ(idsOf(one.first), firstOf(ids)) << one.attribute;
    }
}

// Whatever transactions do, leaves that are passed over hide nothing, and ranges of ids that fit
// into little memory lose nothing.
TEST_F(Diff, OfAnyTwoTransactionsIsWhatReadingBothTells) {
    const std::uint64_t seed = engine::testing::seedOfRun();
    std::mt19937_64 random(seed);
    const auto upTo = [&](std::uint64_t most) { return random() % (most + 1); };
    create("a.qrbx", 40);
    const auto variable = [&](double resolution, double defaultValue) {
        PointAttribute result = attribute("v", -10, 1000, resolution);
        result.defaultValue = defaultValue;
        if (upTo(1))
            result.invalidValue = upTo(1) ? -10 : -11;
        return result;
    };
    const auto constant = [&](double value) {
        PointAttribute result = attribute("c", 0, 200, 1);
        result.storageClass = PointAttribute::CONSTANT;
        result.defaultValue = value;
        return result;
    };
    std::map<std::uint32_t, Snapshot> kept;
    kept[1] = snapshotOf(m_cloud);
    std::uint64_t nextId = 1;
    const auto newIds = [&](std::uint64_t count) {
        std::vector<std::uint64_t> ids;
        while (ids.size() < count)
            ids.push_back(nextId++);
        return ids;
    };
    change([&] { insert(newIds(400), {}, {}); });
    kept[2] = snapshotOf(m_cloud);
    const auto someIds = [&](std::size_t most) {
        std::vector<std::uint64_t> ids;
        const std::uint64_t first = upTo(nextId);
        for (std::uint64_t id = first; id < first + most; ++id)
            if (kept.rbegin()->second.points.contains(id) && upTo(2))
                ids.push_back(id);
        return ids;
    };
    const auto has = [&](const char* name) { return m_cloud.pointAttributes().exists(name); };
    const auto varies = [&](const char* name) {
        return has(name) &&
               m_cloud.pointAttributes().get(name).storageClass != PointAttribute::CONSTANT;
    };
    const auto act = [&] {
        auto& attributes = m_cloud.pointAttributes();
        const Snapshot now = snapshotOf(m_cloud);
        switch (upTo(12)) {
            case 0:
            case 1:
                nextId += upTo(2) << 40;  // gaps
                insert(newIds(1 + upTo(60)), {}, {});
                break;
            case 2: {
                const auto ids = someIds(20);
                std::vector<std::uint64_t> there;
                for (const std::uint64_t id : ids)
                    if (now.points.contains(id))
                        there.push_back(id);
                if (!there.empty())
                    remove(there);
                break;
            }
            case 3:
            case 4: {
                std::vector<std::uint64_t> ids;
                for (const std::uint64_t id : someIds(20))
                    if (now.points.contains(id))
                        ids.push_back(id);
                if (!ids.empty() && varies("v"))
                    update(ids, "v", std::vector<double>(ids.size(), double(upTo(50))));
                break;
            }
            case 5:
                if (varies("v"))
                    fill("v", double(upTo(20)), "p[0] < " + std::to_string(int(upTo(2000)) - 1000));
                break;
            case 6:
                if (has("c"))
                    fill("c", double(upTo(3)));
                break;
            case 7:  // the same name, another attribute
                for (const char* name : {"v", "c"})
                    if (has(name) && upTo(1))
                        attributes.remove(name);
                if (!has("v"))
                    attributes.add(variable(upTo(1) ? 1 : 0.25, double(upTo(2))));
                if (!has("c"))
                    attributes.add(constant(double(upTo(2))));
                break;
            case 8:
                if (has("v") && upTo(1)) {
                    PointAttribute other = attributes.get("v");
                    other.resolution = upTo(1) ? 1 : 0.25;
                    other.maximumValue = 1000 + double(upTo(1));
                    other.storageClass =
                        upTo(1) ? PointAttribute::VARIABLE : PointAttribute::DYNAMIC;
                    other.defaultValue = double(upTo(1));
                    attributes.put(other);
                } else if (has("v")) {
                    attributes.discard("v");
                }
                break;
            case 9: {  // to other leaves
                std::vector<double> places;
                std::vector<std::uint64_t> ids;
                for (const std::uint64_t id : someIds(10))
                    if (now.points.contains(id)) {
                        ids.push_back(id);
                        places.insert(places.end(), {double(upTo(2000)) - 1000, 5});
                    }
                if (ids.empty())
                    break;
                auto query = m_cloud.update();
                query.bind(idName, DataType::UINT64, ids.data(), 8);
                query.bind("p", DataType::DOUBLE, places.data(), 16);
                query.next(static_cast<std::uint32_t>(ids.size()));
                query.close();
                break;
            }
            case 10:  // the value of the whole file becomes one of each point, or the reverse
                if (has("c") && !now.points.empty()) {
                    PointAttribute other = attributes.get("c");
                    fill("c", double(upTo(2)));
                    other.storageClass =
                        upTo(1) ? PointAttribute::CONSTANT : PointAttribute::VARIABLE;
                    attributes.put(other);
                }
                break;
            case 11:  // a name that comes back with what another attribute had
                if (has("v") && has("c")) {
                    attributes.remove("v");
                    attributes.duplicate("c", "v");
                }
                break;
            default:
                m_cloud.management().setChunkSizeLOD(static_cast<std::uint32_t>(upTo(30)));
        }
    };
    for (int turn = 0; turn < 20; ++turn) {
        if (upTo(4) == 0) {
            auto at = kept.begin();
            std::advance(at, upTo(kept.size() - 1));
            m_cloud.transactions().restore(at->first);
        }
        change([&] {
            for (std::uint64_t i = 0; i <= upTo(2); ++i)
                act();
        });
        kept[m_cloud.transactions().current()] = snapshotOf(m_cloud);
    }
    std::size_t common = 0;
    for (const auto& [from, before] : kept)
        for (const auto& [to, after] : kept) {
            SCOPED_TRACE("from " + std::to_string(from) + " to " + std::to_string(to));
            core::DiffOptions options;
            options.first = upTo(6);
            options.memory = upTo(1) ? options.memory : 2000 + upTo(5000);
            const core::ComparedStates states(m_context, {file("a.qrbx"), from},
                                              {file("a.qrbx"), to});
            ASSERT_TRUE(states.areOfOneFile());
            const Told told = expectedOf(before, after);
            for (const bool ofOneFile : {true, false}) {
                const auto diff =
                    compareDatabases(states.before(), states.after(), ofOneFile, options);
                expectTold(told, *diff.points, options.first);
            }
            if (from != to)
                common += core::pairLeaves(states.before(), states.after()).common.size();
        }
    EXPECT_GT(common, kept.size());  // some were passed over
}

// Copies of a file that went different ways have leaves of the same number and revision.
TEST_F(Diff, OfTwoFilesPassesNothingOver) {
    create("a.qrbx");
    change([&] {
        m_cloud.pointAttributes().add(attribute("v", 0, 100, 1));
        insert({1, 2, 3}, "v", {5, 6, 7});
    });
    m_cloud.close();
    std::filesystem::copy_file(file("a.qrbx"), file("b.qrbx"));
    std::filesystem::create_hard_link(file("a.qrbx"), file("c.qrbx"));
    for (const auto& [name, value] : {std::pair{"a.qrbx", 8.0}, {"b.qrbx", 9.0}}) {
        m_cloud.open(file(name), OpenSettings(m_context));
        change([&, id = value] { update({2}, "v", {id}); });
        m_cloud.close();
    }
    const core::ComparedStates linked(m_context, {file("a.qrbx"), 2}, {file("c.qrbx")});
    EXPECT_TRUE(linked.areOfOneFile());
    EXPECT_EQ(linked.nameAfter().transaction, 3u);
    const core::ComparedStates copied(m_context, {file("a.qrbx")}, {file("b.qrbx")});
    EXPECT_FALSE(copied.areOfOneFile());
    const auto diff =
        core::compareDatabases(copied.before(), copied.after(), copied.areOfOneFile());
    ASSERT_EQ(diff.points->changed, 1u);
    EXPECT_EQ(core::diffText(diff),
              "Points (3 -> 3)\n"
              "  * 1 point changed\n"
              "    v: 1 point\n"
              "      id 2: 8 -> 9\n");
}

TEST_F(Diff, TellsDefinitionsAndItemsFieldByField) {
    create("a.qrbx");
    change([&] {
        for (const char* name : {"same", "longer", "gone"})
            m_cloud.pointAttributes().add(attribute(name, 0, 100, 1));
        insert({1, 2}, "same", {1, 2});
        for (const char* item : {"kept", "changed", "signed", "dropped"})
            m_cloud.metaData().set(item, "1");
    });
    change([&] {
        PointAttribute other = m_cloud.pointAttributes().get("longer");
        other.length = 2;
        other.title = "two\nlines";
        m_cloud.pointAttributes().put(other);
        m_cloud.pointAttributes().remove("gone");
        m_cloud.pointAttributes().add(attribute("new", 0, 1, 1));
        m_cloud.metaData().set("changed", "2");
        m_cloud.metaData().createSignature("signed", 1, {1, 2, 3});
        m_cloud.metaData().remove("dropped");
        m_cloud.metaData().set("made", "1");
        m_cloud.management().setChunkSizeLOD(20);
    });
    m_cloud.close();
    EXPECT_EQ(core::diffText(compare({file("a.qrbx"), 2}, {file("a.qrbx"), 3})),
              "Settings\n"
              "  * chunk_size_lod: 0 -> 20\n"
              "Point attributes\n"
              "  + new\n"
              "  - gone\n"
              "  * longer\n"
              "      title: longer -> two lines\n"
              "      length: 1 -> 2\n"
              "Metadata items\n"
              "  + made\n"
              "  - dropped\n"
              "  * changed: another value\n"
              "  * signed: now signed\n"
              "Points (2 -> 2)\n"
              "    longer: not compared, because the lengths differ\n");
    core::DiffOptions options;
    options.attributes = {"none"};
    EXPECT_THROW(compare({file("a.qrbx")}, {file("a.qrbx")}, options), core::Failure);
}

// Whole numbers of 64 bits, values that lie on no grid, and those that are none.
TEST_F(Diff, ComparesValuesByTheirDefinitions) {
    const auto make = [&](const char* name, const PointAttribute& definition,
                          const std::vector<double>& values) {
        create(name);
        change([&] {
            m_cloud.pointAttributes().add(definition);
            std::vector<std::uint64_t> ids;
            for (std::size_t i = 0; i < values.size(); ++i)
                ids.push_back(i + 1);
            insert(ids, "v", values);
        });
        m_cloud.close();
    };
    struct Case {
        const char* what;
        PointAttribute before, after;
        std::vector<double> old, now;
        std::vector<std::uint64_t> different;
    };
    const double nan = std::nan("");
    const auto with = [](PointAttribute definition, double invalid) {
        definition.invalidValue = invalid;
        return definition;
    };
    const double large = 4611686018427387904.0;  // 2^62
    const Case cases[] = {
        {"any double",
         attribute("v", -1e300, 1e300, 0),
         attribute("v", -1e300, 1e300, 0),
         {1, 0.1, 5},
         {1, 0.1, std::nextafter(5.0, 6)},
         {3}},
        {"not a number",
         with(attribute("v", 0, 10, 0), nan),
         with(attribute("v", 0, 10, 0), nan),
         {1, 2},
         {1, 3},
         {2}},
        {"finer grid",
         attribute("v", -10, 10, 0.1),
         attribute("v", -10, 10, 0.01),
         {1.2, 1.2, -3},
         {1.2, 1.21, -3},
         {2}},
        {"none of either",
         with(attribute("v", 0, 10, 1), 0),
         with(attribute("v", 0, 20, 0.5), 20),
         {0, 0, 5, 4},
         {20, 4, 20, 4},
         {2, 3}},
        {"whole and real",
         attribute("v", 0, 9e18, 1),
         attribute("v", 0, 9e18, 0),
         {large, large, 3},
         {large, large + 1024, 3.25},
         {2, 3}},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.what);
        for (const char* name : {"x.qrbx", "y.qrbx"})
            std::filesystem::remove(file(name));
        make("x.qrbx", one.before, one.old);
        make("y.qrbx", one.after, one.now);
        core::DiffOptions options;
        options.attributes = {"v"};
        const auto diff = compare({file("x.qrbx")}, {file("y.qrbx")}, options);
        ASSERT_EQ(diff.points->values.size(), 1u);
        EXPECT_EQ(idsOf(diff.points->values[0].first), one.different);
    }
}

}  // namespace
