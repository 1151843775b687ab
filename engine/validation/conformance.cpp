#include "engine/validation/conformance.h"

#include "catalogue/catalogue.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <cmath>

namespace tarvo::engine::validation {

namespace {

std::string plain(double value) {
    return std::isnan(value) ? "none" : numbers::numberText(value);
}

struct TypeLimits {
    const char* name;
    int bits;  // of magnitude that it holds exactly
    bool negative;
    bool fraction;
};

const TypeLimits& limitsOf(std::uint32_t type) {
    static constexpr TypeLimits limits[] = {
        {"NONE", 0, false, false},    {"UINT8", 8, false, false},   {"INT8", 7, true, false},
        {"UINT16", 16, false, false}, {"INT16", 15, true, false},   {"UINT32", 32, false, false},
        {"INT32", 31, true, false},   {"UINT64", 64, false, false}, {"INT64", 63, true, false},
        {"SINGLE", 24, true, true},   {"DOUBLE", 53, true, true}};
    return limits[type];
}

// Whether every value of one type is a value of the other.
bool holds(const TypeLimits& wide, const TypeLimits& narrow) {
    return wide.bits >= narrow.bits && (wide.negative || !narrow.negative) &&
           (wide.fraction || !narrow.fraction);
}

class Comparison {
public:
    Comparison(session::Session& session, const FileSchema& schema)
        : m_session(session),
          m_schema(schema),
          m_state(session.state()),
          m_root(session.blobs().rootNode(*m_state)) {}

    std::vector<Deviation> run(bool strict) {
        const FileSchema::Item* primary = m_schema.primary();
        const std::string& actual = m_state->primary().record.name;
        if (primary && actual != primary->name)
            sayOfAttribute(actual, "The primary point attribute is \"" + actual + "\", not \"" +
                                       primary->name + "\".");
        for (const FileSchema::Item& item : m_schema.attributes)
            compareAttribute(item);
        if (strict)
            for (const schema::Attribute& attribute : m_state->attributes.all())
                if (!names(m_schema.attributes, attribute.record.name) &&
                    attribute.record.name != schema::pointIdName)
                    sayOfAttribute(attribute.record.name, "The point attribute \"" +
                                                              attribute.record.name +
                                                              "\" is not part of the schema.");
        for (const FileSchema::Item& item : m_schema.metaData)
            compareMetaData(item);
        if (strict)
            for (const auto& [name, value] : m_state->metaData)
                if (!names(m_schema.metaData, name))
                    sayOfItem(name,
                              "The metadata item \"" + name + "\" is not part of the schema.");
        return std::move(m_deviations);
    }

private:
    static bool names(const std::vector<FileSchema::Item>& items, const std::string& name) {
        return std::any_of(items.begin(), items.end(),
                           [&](const FileSchema::Item& item) { return item.name == name; });
    }

    void sayOfAttribute(const std::string& name, const std::string& line) {
        m_deviations.push_back({name, "", {"", "", "", "", line}, line});
    }
    void sayOfItem(const std::string& name, const std::string& line) {
        m_deviations.push_back({"", name, {"", "", "", "", line}, line});
    }

    void compareAttribute(const FileSchema::Item& item) {
        const int index = m_state->attributes.find(item.name);
        if (index < 0) {
            if (!item.optional)
                sayOfAttribute(item.name, "The point attribute \"" + item.name + "\" is missing.");
            return;
        }
        if (!catalogue::findAttribute(item.name))
            return;
        const schema::Attribute& attribute = m_state->attributes[static_cast<std::size_t>(index)];
        const schema::AttributeRecord expected = session::defaultAttribute(item.name);
        compareDefinition(attribute.record, expected);
        if (m_state->pointCount > 0)
            compareValues(attribute, expected);
    }

    void compareDefinition(const schema::AttributeRecord& record,
                           const schema::AttributeRecord& expected) {
        // Whole sentences, so that they can be translated.
        const std::string& name = record.name;
        if (record.length != expected.length)
            sayOfAttribute(name, "The point attribute \"" + name + "\" has the length " +
                                     std::to_string(record.length) + ", not " +
                                     std::to_string(expected.length) + ".");
        if (record.unitSymbol != expected.unitSymbol)
            sayOfAttribute(name, "The point attribute \"" + name + "\" has the unit \"" +
                                     record.unitSymbol + "\", not \"" + expected.unitSymbol +
                                     "\".");
        const TypeLimits& type = limitsOf(schema::dataType(record));
        const TypeLimits& usualType = limitsOf(schema::dataType(expected));
        if (!holds(usualType, type))
            sayOfAttribute(name, "The point attribute \"" + name + "\" has the data type " +
                                     type.name + ", not " + usualType.name + ".");
        // 0 stands for floating-point numbers, finer than any grid.
        if (record.resolution > expected.resolution * (1 + 1e-9))
            sayOfAttribute(name, "The point attribute \"" + name + "\" has the resolution " +
                                     plain(record.resolution) +
                                     (expected.resolution == 0
                                          ? ", not floating-point numbers."
                                          : ", not " + plain(expected.resolution) + " or finer."));
        if (!std::isnan(record.invalidValue) && record.invalidValue != expected.invalidValue)
            sayOfAttribute(name, "The point attribute \"" + name + "\" has the invalid value " +
                                     plain(record.invalidValue) + ", not " +
                                     plain(expected.invalidValue) + ".");
    }

    void compareValues(const schema::Attribute& attribute,
                       const schema::AttributeRecord& expected) {
        const double tolerance = expected.resolution / 2;
        for (std::uint32_t e = 0; e < attribute.record.length; ++e) {
            const schema::ElementStatistics statistics = index::statisticsOf(m_root, attribute, e);
            if (!statistics.hasValid)
                continue;
            const std::string name =
                attribute.record.length == 1
                    ? "\"" + attribute.record.name + "\""
                    : "\"" + attribute.record.name + "[" + std::to_string(e) + "]\"";
            const double lowest = attribute.grid.value(statistics.minimum);
            const double highest = attribute.grid.value(statistics.maximum);
            if (lowest < expected.minimumValue - tolerance && lowest != expected.invalidValue)
                sayOfAttribute(attribute.record.name, "The point attribute " + name +
                                                          " has values down to " + plain(lowest) +
                                                          ", below the minimum " +
                                                          plain(expected.minimumValue) + ".");
            if (highest > expected.maximumValue + tolerance && highest != expected.invalidValue)
                sayOfAttribute(attribute.record.name, "The point attribute " + name +
                                                          " has values up to " + plain(highest) +
                                                          ", above the maximum " +
                                                          plain(expected.maximumValue) + ".");
        }
    }

    void compareMetaData(const FileSchema::Item& item) {
        if (!m_state->metaData.count(item.name)) {
            if (!item.optional)
                sayOfItem(item.name, "The metadata item \"" + item.name + "\" is missing.");
            return;
        }
        const catalogue::MetaDataEntry* entry = catalogue::findMetaData(item.name);
        if (!entry)
            return;
        const std::string title = "The metadata item \"" + item.name + "\": ";
        try {
            for (const Finding& finding :
                 JsonSchema(entry->schema).check(m_session.metaData().get(item.name)))
                m_deviations.push_back({"", item.name, finding, title + toLine(finding)});
        } catch (const Failure& failure) {
            // What can't be checked is told like a fault; a damaged file is no matter of schemas.
            if (failure.code() != ErrorCode::Argument)
                throw;
            sayOfItem(item.name, title + failure.what());
        }
    }

    session::Session& m_session;
    const FileSchema& m_schema;
    std::shared_ptr<const session::State> m_state;
    index::Node m_root;
    std::vector<Deviation> m_deviations;
};

}  // namespace

std::vector<std::string> placeholders(session::Session& session) {
    std::vector<std::string> lines;
    // Held: what is got from a pending transaction is a copy that nobody else keeps.
    const auto state = session.state();
    for (const std::string& name : session.metaData().placeholders(*state, session::State()))
        lines.push_back("The metadata item \"" + name +
                        "\" holds the example of the catalogue: replace it by what is true.");
    return lines;
}

std::vector<Deviation> deviations(session::Session& session, const FileSchema& schema,
                                  bool strict) {
    return Comparison(session, schema).run(strict);
}

}  // namespace tarvo::engine::validation
