// What changes the points of a database and of its model.
#include "tests/engine/modelplay.h"

#include "engine/query/fill.h"
#include "engine/query/remove.h"
#include "engine/query/update.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace tarvo::engine::testing {

std::string Play::insertPoints() {
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

double Play::constantFor(const std::string& name) {
    const auto found = m_now.constants.find(name);
    return found != m_now.constants.end() ? found->second : double(below(10));
}

double Play::valueFor(const schema::AttributeRecord& attribute) {
    if (!std::isnan(attribute.invalidValue) && chance(5))
        return attribute.invalidValue;
    const auto range = static_cast<std::uint32_t>(attribute.maximumValue - attribute.minimumValue);
    return attribute.minimumValue + below(range + 1);
}

std::vector<std::uint64_t> Play::someIds() {
    std::vector<std::uint64_t> ids;
    const std::uint32_t share = 1 + below(20);
    for (const auto& [id, values] : m_now.points)
        if (chance(share))
            ids.push_back(id);
    ids.push_back(200'000 + below(10));  // not there
    std::shuffle(ids.begin(), ids.end(), m_random);
    return ids;
}

std::string Play::updatePoints() {
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

std::string Play::removePoints() {
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

std::string Play::fill() {
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

std::string Play::invert() {
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

}  // namespace tarvo::engine::testing
