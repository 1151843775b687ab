// What is different between any two transactions of a random history, against what reading both as
// a whole tells.
#include "tests/core/difftest.h"
#include "tests/engine/seed.h"

#include <cmath>
#include <map>
#include <set>

namespace {

using namespace tarvo;
using namespace tarvo::core::testing;

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
    for (int turn = 0; turn < 16; ++turn) {
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
                if (!ofOneFile && upTo(3) != 0)
                    continue;
                const auto diff =
                    compareDatabases(states.before(), states.after(), ofOneFile, options);
                expectTold(told, *diff.points, options.first);
            }
        }
}

}  // namespace
