// A database beside a plain model in memory, through thousands of random operations: whatever is
// done, in whatever order, both must read the same afterwards.
#include "tests/engine/database.h"
#include "tests/engine/treecheck.h"

#include "engine/query/commit.h"
#include "engine/query/fill.h"
#include "engine/query/redefine.h"
#include "engine/query/remove.h"
#include "engine/query/update.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>

namespace tarvo::engine {
namespace {

using namespace testing;

constexpr double none = std::numeric_limits<double>::quiet_NaN();

using Values = std::map<std::string, double>;  // by attribute; coordinates are "xyz[0]" to "[2]"

struct ModelState {
    std::map<std::uint64_t, Values> points;
    std::map<std::string, schema::AttributeRecord> attributes;  // beside xyz and the point id
    std::map<std::string, double> constants;                    // of the constant ones with a value
    std::map<std::string, std::string> metaData;
    std::set<std::string> signedItems;
    std::uint64_t nextId = 1;
};

bool isConstant(const schema::AttributeRecord& record) {
    return record.storageClass == 1;
}

const session::Signer signer{1, {1, 2, 3}, {}};

class Play {
public:
    Play(std::uint32_t seed, std::uint32_t chunkSize, bool multiPass) : m_random(seed) {
        session::CreateSettings created = settings(1, chunkSize);
        created.pointInsertMode = multiPass ? "multi-pass" : "single-pass";
        m_file = m_folder.file("a.qrbx");
        schema::AttributeRecord quality = record("quality", -5, 100);
        quality.invalidValue = -5;
        quality.defaultValue = 7;
        quality.storageClass = 3;
        const std::vector<schema::AttributeRecord> extra{record("amplitude", 0, 65535), quality,
                                                         record("flag", 0, 1)};
        session::Session::create(m_file, created, "test", extra);
        for (const schema::AttributeRecord& attribute : extra)
            m_now.attributes[attribute.name] = attribute;
        m_history[1] = m_now;
        open();
    }

    void run(int steps) {
        for (m_step = 0; m_step < steps && !::testing::Test::HasFailure(); ++m_step) {
            const std::string what = step();
            SCOPED_TRACE("step " + std::to_string(m_step) + ": " + what);
            compare();
        }
    }

private:
    std::uint32_t below(std::uint32_t limit) { return m_random() % limit; }
    bool chance(std::uint32_t oneIn) { return below(oneIn) == 0; }

    void open() {
        m_session = std::make_unique<session::Session>(m_file, session::OpenSettings{0}, "test");
    }

    std::string step() {
        if (!m_session->pending() && !chance(3)) {
            m_id = m_session->begin("step " + std::to_string(m_step), "test", "", "");
            m_before = m_now;
        }
        if (!m_session->pending())
            return betweenTransactions();
        switch (below(17)) {
            case 0:
            case 1:
            case 2:
                return insertPoints();
            case 3:
            case 4:
                return updatePoints();
            case 5:
            case 6:
                return removePoints();
            case 7:
                return fill();
            case 8:
                return invert();
            case 9:
                return changeMetaData();
            case 10:
                return addAttribute();
            case 11:
                return changeAttribute();
            case 12:
                return endTransaction(true);
            case 13:
                return endTransaction(chance(2));
            case 14:
                return levelOfDetail();
            case 15:
                return chance(4) ? crash() : reopen();
            default:
                return "nothing";
        }
    }

    std::string betweenTransactions() {
        const std::vector<std::uint32_t> ids = m_session->history().transactions();
        const std::uint32_t picked = ids[below(static_cast<std::uint32_t>(ids.size()))];
        switch (below(6)) {
            case 0:
                m_session->restore(picked);
                m_now = m_history.at(picked);
                return "restore " + std::to_string(picked);
            case 1:
                if (picked == ids.front() || picked == m_session->current()) {
                    EXPECT_THROW(m_session->history().discard({picked}), Failure);
                    return "discard refused";
                }
                EXPECT_GT(m_session->history().size({picked}), 0u);
                m_session->history().discard({picked});
                m_history.erase(picked);
                return "discard " + std::to_string(picked);
            case 2:
                m_session->history().vacuum();
                return "vacuum";
            case 3:
                if (chance(4)) {
                    m_session->history().finalize();
                    const std::uint32_t now = m_session->current();
                    std::erase_if(m_history, [&](const auto& entry) {
                        return entry.first != ids.front() && entry.first != now;
                    });
                    return "finalize";
                }
                return "nothing";
            case 4:
                return crash();
            default:
                return reopen();
        }
    }

    std::string insertPoints() {
        const bool ownIds = chance(3);
        const std::uint32_t count = 1 + below(chance(4) ? 300 : 30);
        std::vector<double> xyz(count * 3);
        std::vector<std::uint64_t> ids(count);
        std::set<std::uint64_t> used;
        for (std::uint32_t i = 0; i < count; ++i) {
            const double spread = chance(3) ? 1000 : 3;
            for (int d = 0; d < 3; ++d)
                xyz[i * 3 + d] = std::round((below(2000) / 1000.0 - 1) * spread * 1000) / 1000;
            do
                ids[i] = ownIds ? 1 + below(100'000) : m_now.nextId + i;
            while (!used.insert(ids[i]).second || m_now.points.count(ids[i]) > 0);
        }
        query::InsertQuery query(*m_session);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
        if (ownIds)
            query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
        std::map<std::string, std::vector<double>> bound;
        for (const auto& [name, attribute] : m_now.attributes) {
            if (chance(3))
                continue;
            std::vector<double>& column = bound[name];
            const double one = constantFor(name);
            for (std::uint32_t i = 0; i < count; ++i)
                column.push_back(isConstant(attribute) ? one : valueFor(attribute));
            query.bind(name, QRB_DATA_TYPE_DOUBLE, column.data(), 8);
        }
        query.next(count);
        for (const auto& [name, attribute] : m_now.attributes)
            if (isConstant(attribute) && m_now.constants.count(name) == 0)
                m_now.constants[name] = bound.count(name) ? bound[name][0] : attribute.defaultValue;
        for (std::uint32_t i = 0; i < count; ++i) {
            Values& values = m_now.points[ids[i]];
            for (int d = 0; d < 3; ++d)
                values["xyz[" + std::to_string(d) + "]"] = xyz[i * 3 + d];
            for (const auto& [name, attribute] : m_now.attributes)
                if (!isConstant(attribute))
                    values[name] = bound.count(name) ? bound[name][i] : attribute.defaultValue;
            m_now.nextId = std::max(m_now.nextId, ids[i] + 1);
        }
        if (ownIds) {
            // One of them again: refused, and nothing of it is taken.
            query::InsertQuery again(*m_session);
            again.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
            again.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
            EXPECT_THROW(again.next(1), Failure);
        }
        return "insert " + std::to_string(count) + (ownIds ? " with ids" : "");
    }

    // What a constant attribute has, or may be given while it has nothing.
    double constantFor(const std::string& name) {
        const auto found = m_now.constants.find(name);
        return found != m_now.constants.end() ? found->second : double(below(10));
    }

    double valueFor(const schema::AttributeRecord& attribute) {
        if (!std::isnan(attribute.invalidValue) && chance(5))
            return attribute.invalidValue;
        const auto range =
            static_cast<std::uint32_t>(attribute.maximumValue - attribute.minimumValue);
        return attribute.minimumValue + below(range + 1);
    }

    std::vector<std::uint64_t> someIds() {
        std::vector<std::uint64_t> ids;
        const std::uint32_t share = 1 + below(20);
        for (const auto& [id, values] : m_now.points)
            if (chance(share))
                ids.push_back(id);
        ids.push_back(200'000 + below(10));  // not there
        std::shuffle(ids.begin(), ids.end(), m_random);
        return ids;
    }

    std::string updatePoints() {
        const std::vector<std::uint64_t> ids = someIds();
        const bool moves = chance(3);
        std::vector<double> x(ids.size()), other(ids.size());
        std::optional<schema::AttributeRecord> attribute;
        for (const auto& [name, candidate] : m_now.attributes)
            if (!isConstant(candidate) && chance(2))
                attribute = candidate;
        query::UpdateQuery query(*m_session);
        query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
        for (std::size_t i = 0; i < ids.size(); ++i) {
            x[i] = std::round((below(2000) / 1000.0 - 1) * 1000);
            other[i] = attribute ? valueFor(*attribute) : 0;
        }
        if (moves)
            query.bind("xyz[0]", QRB_DATA_TYPE_DOUBLE, x.data(), 8);
        if (attribute)
            query.bind(attribute->name, QRB_DATA_TYPE_DOUBLE, other.data(), 8);
        EXPECT_EQ(query.next(static_cast<std::uint32_t>(ids.size())), ids.size() - 1);
        for (std::size_t i = 0; i < ids.size(); ++i)
            if (const auto point = m_now.points.find(ids[i]); point != m_now.points.end()) {
                if (moves)
                    point->second["xyz[0]"] = x[i];
                if (attribute)
                    point->second[attribute->name] = other[i];
            }
        return "update " + std::to_string(ids.size()) + (moves ? " positions" : "");
    }

    std::string removePoints() {
        const std::vector<std::uint64_t> ids = someIds();
        query::RemoveQuery query(*m_session);
        query.bind(QRB_DATA_TYPE_UINT64, ids.data(), 8);
        EXPECT_EQ(query.next(static_cast<std::uint32_t>(ids.size())), ids.size() - 1);
        for (const std::uint64_t id : ids)
            m_now.points.erase(id);
        if (m_now.points.empty())
            m_now.constants.clear();
        return "remove " + std::to_string(ids.size());
    }

    std::string fill() {
        const auto attribute = m_now.attributes.find("quality");
        if (attribute == m_now.attributes.end())
            return "nothing to fill";
        const double value = valueFor(attribute->second);
        const double bound = double(below(2000)) - 1000;
        query::FillQuery query(*m_session, {}, "xyz[0] > " + std::to_string(bound));
        query.bind("quality", QRB_DATA_TYPE_DOUBLE, &value);
        std::uint64_t done = 0;
        while (const std::uint32_t count = query.next(1 + below(50)))
            done += count;
        std::uint64_t expected = 0;
        for (auto& [id, values] : m_now.points)
            if (values["xyz[0]"] > bound) {
                values["quality"] = value;
                ++expected;
            }
        EXPECT_EQ(done, expected);
        EXPECT_EQ(query.progress(), 100u);
        return "fill";
    }

    std::string invert() {
        const bool all = chance(2);
        if (m_now.attributes.count("flag") == 0)
            return "nothing to invert";
        query::FillQuery query(*m_session, {}, all ? "" : "flag == 1 || xyz[2] < 0");
        query.invert("flag");
        while (query.next(1000)) {
        }
        for (auto& [id, values] : m_now.points)
            if (all || values["flag"] == 1 || values["xyz[2]"] < 0)
                values["flag"] = 1 - values["flag"];
        return "invert";
    }

    std::string changeMetaData() {
        const std::string name = "item " + std::to_string(below(5));
        if (chance(4)) {
            if (m_now.metaData.erase(name) == 0) {
                EXPECT_THROW(m_session->metaData().remove(name), Failure);
            } else {
                m_session->metaData().remove(name);
                m_now.signedItems.erase(name);
            }
            return "remove metadata";
        }
        if (chance(3) && m_now.metaData.count(name) > 0) {
            const bool signs = chance(2);
            m_session->metaData().sign(name, signs ? signer : session::Signer());
            signs ? void(m_now.signedItems.insert(name)) : void(m_now.signedItems.erase(name));
            return "sign metadata";
        }
        const std::string value = "{\"value\": " + std::to_string(below(1000)) + "}";
        m_session->metaData().set(name, value);
        m_now.metaData[name] = value;
        m_now.signedItems.erase(name);
        return "set metadata";
    }

    std::string addAttribute() {
        schema::AttributeRecord attribute =
            record("extra_" + std::to_string(below(3)), 0, 10 + below(1000));
        attribute.storageClass = static_cast<std::uint8_t>(1 + below(3));
        attribute.defaultValue = below(10);
        if (m_now.attributes.count(attribute.name) > 0) {
            EXPECT_THROW(m_session->addAttribute(attribute), Failure);
            return "add attribute again";
        }
        m_session->addAttribute(attribute);
        give(attribute);
        return "add attribute";
    }

    // A new attribute in the model: every point has the default value.
    void give(const schema::AttributeRecord& attribute) {
        m_now.attributes[attribute.name] = attribute;
        m_now.constants.erase(attribute.name);
        for (auto& [id, values] : m_now.points) {
            values.erase(attribute.name);
            if (!isConstant(attribute))
                values[attribute.name] = attribute.defaultValue;
        }
        if (isConstant(attribute) && !m_now.points.empty())
            m_now.constants[attribute.name] = attribute.defaultValue;
    }

    std::string changeAttribute() {
        const std::string name = "extra_" + std::to_string(below(3));
        const auto found = m_now.attributes.find(name);
        if (found == m_now.attributes.end()) {
            EXPECT_THROW(query::removeAttribute(*m_session, name), Failure);
            return "remove unknown attribute";
        }
        switch (below(4)) {
            case 0:
                query::removeAttribute(*m_session, name);
                m_now.attributes.erase(name);
                m_now.constants.erase(name);
                for (auto& [id, values] : m_now.points)
                    values.erase(name);
                return "remove attribute";
            case 1:
                query::discardAttribute(*m_session, name);
                give(schema::AttributeRecord(found->second));
                return "discard attribute";
            case 2:
                return duplicate(found->second);
            default:
                return redefine(found->second);
        }
    }

    std::string duplicate(const schema::AttributeRecord& from) {
        schema::AttributeRecord copy = from;
        copy.name = "extra_" + std::to_string(below(3));
        if (m_now.attributes.count(copy.name) > 0) {
            EXPECT_THROW(query::duplicateAttribute(*m_session, from.name, copy.name), Failure);
            return "duplicate attribute again";
        }
        query::duplicateAttribute(*m_session, from.name, copy.name);
        m_now.attributes[copy.name] = copy;
        if (const auto value = m_now.constants.find(from.name); value != m_now.constants.end())
            m_now.constants[copy.name] = value->second;
        for (auto& [id, values] : m_now.points)
            if (!isConstant(from))
                values[copy.name] = values[from.name];
        return "duplicate attribute";
    }

    std::string redefine(const schema::AttributeRecord& from) {
        schema::AttributeRecord to = from;
        to.maximumValue = 10 + below(500);
        to.resolution = chance(2) ? 1 : 0.5;
        to.invalidValue = chance(2) ? none : -1;
        to.defaultValue = below(10);
        to.storageClass = static_cast<std::uint8_t>(1 + below(3));
        const double lost = std::isnan(to.invalidValue) ? to.defaultValue : to.invalidValue;
        const auto convert = [&](double value) {
            return value == from.invalidValue || value > to.maximumValue || value < to.minimumValue
                       ? lost
                       : std::round(value / to.resolution) * to.resolution;
        };
        std::set<double> different;
        for (const auto& [id, values] : m_now.points)
            if (!isConstant(from))
                different.insert(values.at(from.name));
        if (isConstant(to) && different.size() > 1) {
            EXPECT_THROW(query::putAttribute(*m_session, to), Failure);
            return "redefine refused";
        }
        query::putAttribute(*m_session, to);
        const double before = isConstant(from) && !m_now.points.empty()
                                  ? m_now.constants.at(from.name)
                                  : (different.empty() ? 0 : *different.begin());
        for (auto& [id, values] : m_now.points) {
            const double value = isConstant(from) ? before : values.at(from.name);
            values.erase(from.name);
            if (!isConstant(to))
                values[from.name] = convert(value);
        }
        m_now.constants.erase(from.name);
        if (isConstant(to) && !m_now.points.empty())
            m_now.constants[from.name] = convert(before);
        m_now.attributes[to.name] = to;
        return "redefine attribute";
    }

    std::string levelOfDetail() {
        const std::uint32_t mode = 1 + below(2);
        m_session->setLevelOfDetail(mode, chance(3) ? 0 : 1 + below(mode == 1 ? 60 : 4));
        return "level of detail";
    }

    std::string endTransaction(bool keep) {
        if (keep) {
            if (chance(2))
                m_session->changelog().append("message of step " + std::to_string(m_step));
            query::commit(*m_session, {}, chance(2) ? signer : session::Signer());
            m_history[m_id] = m_now;
            EXPECT_EQ(m_folder.names(), "a.qrbx ");
            return "commit";
        }
        m_session->rollback();
        m_now = m_before;
        return "rollback";
    }

    std::string reopen() {
        const bool pending = m_session->pending();
        m_session.reset();
        if (pending)
            m_now = m_before;
        open();
        return "reopen";
    }

    // Another process changes the database and is killed: nothing of what it did not commit stays,
    // and what it was committing is there as a whole or not at all.
    std::string crash() {
        const bool pending = m_session->pending();
        m_session.reset();
        if (pending)
            m_now = m_before;
        // At this percentage of its commit; 100 comes behind it.
        const int end = chance(3) ? 100 : static_cast<int>(below(100));
        const ::pid_t child = ::fork();
        if (child == 0) {
            session::Session session(m_file, session::OpenSettings{0}, "test");
            session.begin("crash", "test", "", "");
            session.metaData().set("item 0", "\"crashed\"");
            insert(session, std::vector<Point>(500, Point{1, 2, 3, 4}));
            query::commit(session, [end](int percent) {
                if (percent >= end)
                    ::raise(SIGKILL);
                return true;
            });
            ::_exit(0);
        }
        ::waitpid(child, nullptr, 0);
        open();
        if (end == 100) {
            m_now.metaData["item 0"] = "\"crashed\"";
            m_now.signedItems.erase("item 0");
            for (int i = 0; i < 500; ++i) {
                Values& values = m_now.points[m_now.nextId++];
                values = {{"xyz[0]", 1}, {"xyz[1]", 2}, {"xyz[2]", 3}};
                for (const auto& [name, attribute] : m_now.attributes)
                    if (!isConstant(attribute))
                        values[name] = name == "amplitude" ? 4 : attribute.defaultValue;
            }
            for (const auto& [name, attribute] : m_now.attributes)
                if (isConstant(attribute))
                    m_now.constants.try_emplace(name, attribute.defaultValue);
            m_history[m_session->current()] = m_now;
        }
        return "crash at " + std::to_string(end) + " % of a commit";
    }

    std::map<std::uint64_t, Values> readPoints(const std::string& filter) {
        query::SelectQuery query(*m_session, {}, filter);
        constexpr std::uint32_t page = 333;
        std::vector<std::uint64_t> ids(page);
        std::map<std::string, std::vector<double>> columns;
        for (int d = 0; d < 3; ++d)
            columns["xyz[" + std::to_string(d) + "]"].resize(page);
        for (const auto& [name, attribute] : m_now.attributes)
            columns[name].resize(page);
        query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
        for (auto& [name, column] : columns)
            query.bind(name, QRB_DATA_TYPE_DOUBLE, column.data(), 8);
        std::map<std::uint64_t, Values> result;
        while (const std::uint32_t count = query.next(page))
            for (std::uint32_t i = 0; i < count; ++i) {
                Values& values = result[ids[i]];
                EXPECT_TRUE(values.empty()) << "point " << ids[i] << " is there twice";
                for (const auto& [name, column] : columns)
                    values[name] = column[i];
            }
        return result;
    }

    void comparePoints(const std::string& filter, const std::map<std::uint64_t, Values>& read,
                       const std::function<bool(const Values&)>& passes) {
        std::uint64_t expected = 0;
        for (const auto& [id, stored] : m_now.points) {
            Values values = stored;
            for (const auto& [name, value] : m_now.constants)
                values[name] = value;
            if (!passes(values))
                continue;
            ++expected;
            const auto found = read.find(id);
            if (found == read.end()) {
                ADD_FAILURE() << "point " << id << " is missing, filter " << filter;
                return;
            }
            for (const auto& [name, value] : values)
                if (std::abs(found->second.at(name) - value) > 1e-6) {
                    ADD_FAILURE() << "point " << id << ", " << name << ": "
                                  << found->second.at(name) << " in place of " << value;
                    return;
                }
        }
        EXPECT_EQ(read.size(), expected) << filter;
    }

    void compare() {
        comparePoints("", readPoints(""), [](const Values&) { return true; });
        const double bound = double(below(2000)) - 1000;
        const std::string filter =
            "xyz[1] >= " + std::to_string(bound) + " && xyz[0] < " + std::to_string(bound + 500);
        comparePoints(filter, readPoints(filter), [&](const Values& values) {
            return values.at("xyz[1]") >= bound && values.at("xyz[0]") < bound + 500;
        });
        TreeCheck(*m_session, m_now.points.size()).run();

        const auto state = m_session->state();
        std::set<std::string> names;
        for (const schema::Attribute& attribute : state->attributes.all())
            names.insert(attribute.record.name);
        EXPECT_EQ(names.size(), m_now.attributes.size() + 2);
        for (const auto& [name, attribute] : m_now.attributes)
            EXPECT_EQ(names.count(name), 1u) << name;
        EXPECT_EQ(state->metaData.size(), m_now.metaData.size());
        for (const auto& [name, value] : m_now.metaData) {
            EXPECT_EQ(m_session->metaData().get(name), value);
            EXPECT_EQ(m_session->metaData().verify(name, signer),
                      m_now.signedItems.count(name) > 0);
            EXPECT_EQ(m_session->metaData().verify(name, {}), m_now.signedItems.count(name) > 0);
        }
        if (!m_session->pending()) {
            std::vector<std::uint32_t> kept;
            for (const auto& [id, then] : m_history)
                kept.push_back(id);
            EXPECT_EQ(m_session->history().transactions(), kept);
        }
    }

    std::mt19937 m_random;
    TemporaryFolder m_folder;
    std::string m_file;
    std::unique_ptr<session::Session> m_session;
    ModelState m_now;
    ModelState m_before;  // of the pending transaction
    std::map<std::uint32_t, ModelState> m_history;
    std::uint32_t m_id = 0;
    int m_step = 0;
};

TEST(Model, AndDatabaseReadTheSameWhateverIsDone) {
    const char* given = std::getenv("QRB_SEED");
    const std::uint32_t seed = given ? static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10))
                                     : std::random_device{}();
    std::printf("QRB_SEED=%u replays this run\n", seed);
    Play(seed, 20, false).run(1200);
    Play(seed + 1, 300, true).run(1200);
}

}  // namespace
}  // namespace tarvo::engine
