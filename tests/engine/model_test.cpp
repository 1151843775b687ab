// A database beside a plain model in memory, through thousands of random operations: whatever is
// done, in whatever order, both must read the same afterwards.
#include "tests/engine/modelplay.h"

#include "tests/engine/treecheck.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace tarvo::engine::testing {

Play::Play(std::uint32_t seed, std::uint32_t chunkSize, bool multiPass) : m_random(seed) {
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

void Play::run(int steps) {
    for (m_step = 0; m_step < steps && !::testing::Test::HasFailure(); ++m_step) {
        const std::string what = step();
        SCOPED_TRACE("step " + std::to_string(m_step) + ": " + what);
        compare();
    }
}

void Play::open() {
    m_session = std::make_unique<session::Session>(m_file, session::OpenSettings{0}, "test");
}

std::string Play::step() {
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

std::map<std::uint64_t, Values> Play::readPoints(const std::string& filter) {
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

void Play::comparePoints(const std::string& filter, const std::map<std::uint64_t, Values>& read,
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
                ADD_FAILURE() << "point " << id << ", " << name << ": " << found->second.at(name)
                              << " in place of " << value;
                return;
            }
    }
    EXPECT_EQ(read.size(), expected) << filter;
}

void Play::compare() {
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
        EXPECT_EQ(m_session->metaData().verify(name, signer), m_now.signedItems.count(name) > 0);
        EXPECT_EQ(m_session->metaData().verify(name, {}), m_now.signedItems.count(name) > 0);
    }
    if (!m_session->pending()) {
        std::vector<std::uint32_t> kept;
        for (const auto& [id, then] : m_history)
            kept.push_back(id);
        EXPECT_EQ(m_session->history().transactions(), kept);
    }
}

namespace {

TEST(Model, AndDatabaseReadTheSameWhateverIsDone) {
    const char* given = std::getenv("QRB_SEED");
    const std::uint32_t seed = given ? static_cast<std::uint32_t>(std::strtoul(given, nullptr, 10))
                                     : std::random_device{}();
    std::printf("QRB_SEED=%u replays this run\n", seed);
    Play(seed, 20, false).run(1200);
    Play(seed + 1, 300, true).run(1200);
}

}  // namespace
}  // namespace tarvo::engine::testing
