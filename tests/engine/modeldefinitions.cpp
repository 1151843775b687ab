// What changes the metadata items and the attributes of a database and of its model.
#include "tests/engine/modelplay.h"

#include "engine/query/redefine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tarvo::engine::testing {

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

}  // namespace

std::string Play::changeMetaData() {
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

std::string Play::addAttribute() {
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

void Play::give(const schema::AttributeRecord& attribute) {
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

std::string Play::changeAttribute() {
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

std::string Play::duplicate(const schema::AttributeRecord& from) {
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

std::string Play::redefine(const schema::AttributeRecord& from) {
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

}  // namespace tarvo::engine::testing
