#include "engine/base/json.h"
#include "engine/base/utf8.h"
#include "engine/report/forms.h"
#include "engine/report/text.h"

#include <cmath>

namespace tarvo::engine::report {

namespace {

using PrettyWriter = rapidjson::PrettyWriter<rapidjson::StringBuffer, rapidjson::UTF8<>,
                                             rapidjson::UTF8<>, rapidjson::CrtAllocator>;

// Writes members; numbers that JSON has no words for become null.
class ReportWriter {
public:
    ReportWriter() : m_writer(m_buffer) { m_writer.SetIndent(' ', 4); }

    std::string text() const { return {m_buffer.GetString(), m_buffer.GetSize()}; }

    // Calls write between the brackets; name: null within an array.
    template <typename Write>
    void object(const char* name, Write write) {
        key(name);
        m_writer.StartObject();
        write();
        m_writer.EndObject();
    }
    template <typename Write>
    void array(const char* name, Write write) {
        key(name);
        m_writer.StartArray();
        write();
        m_writer.EndArray();
    }
    void member(const char* name, std::string_view text) {
        key(name);
        const std::string valid = validUtf8(text);
        m_writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
    }
    void member(const char* name, std::uint64_t value) {
        key(name);
        m_writer.Uint64(value);
    }
    void member(const char* name, double value) {
        key(name);
        if (std::isfinite(value))
            m_writer.Double(value);
        else
            m_writer.Null();
    }
    void flag(const char* name, bool value) {
        key(name);
        m_writer.Bool(value);
    }
    // The value of a code; whole numbers exactly.
    void value(const schema::Grid& grid, std::uint64_t code) {
        if (grid.kind() == schema::Grid::Kind::Integer) {
            const std::string text = valueText(grid, code);
            m_writer.RawValue(text.data(), text.size(), rapidjson::kNumberType);
        } else {
            member(nullptr, grid.value(code));
        }
    }
    void null() { m_writer.Null(); }
    void copy(const char* name, const rapidjson::Value& value) {
        key(name);
        value.Accept(m_writer);
    }

private:
    void key(const char* name) {
        if (name)
            m_writer.Key(name);
    }

    rapidjson::StringBuffer m_buffer;
    PrettyWriter m_writer;
};

// An array with a number per element, null where there are no values.
template <typename Write>
void elementArray(ReportWriter& out, const char* name, const AttributeFacts& facts, Write write) {
    out.array(name, [&] {
        for (const schema::ElementStatistics& s : facts.elements)
            if (s.hasValid)
                write(s);
            else
                out.null();
    });
}

void writeRanges(ReportWriter& out, const schema::Grid& grid, const AttributeFacts& facts) {
    elementArray(out, "minimum", facts, [&](const auto& s) { out.value(grid, s.minimum); });
    elementArray(out, "maximum", facts, [&](const auto& s) { out.value(grid, s.maximum); });
}

void writeDatabase(ReportWriter& out, const Facts& facts) {
    out.member("uuid", facts.identity.uuid);
    out.member("file", facts.fileName);
    out.member("size", facts.fileSize);
    out.member("creator", facts.identity.creator);
    out.member("transaction", std::uint64_t(facts.current));
    out.flag("pending", facts.pending);
}

void writeExtent(ReportWriter& out, const Facts& facts) {
    const schema::Attribute& primary = facts.state->primary();
    out.member("attribute", primary.record.name);
    out.member("unit", primary.record.unitSymbol);
    writeRanges(out, primary.grid, facts.attributes[0]);
    elementArray(out, "size", facts.attributes[0],
                 [&](const auto& s) { out.member(nullptr, extentSize(primary.grid, s)); });
}

void writeIndex(ReportWriter& out, const Facts& facts) {
    std::uint64_t inner = 0;
    for (const LevelFacts& level : facts.levels)
        inner += level.innerNodes;
    out.member("nodes", facts.leaves + inner);
    out.member("leaves", facts.leaves);
    out.array("levels", [&] {
        for (const LevelFacts& level : facts.levels)
            out.object(nullptr, [&] {
                out.member("leaves", level.leaves);
                out.member("inner_nodes", level.innerNodes);
                out.member("points", level.points);
                out.member("level_of_detail_points", level.levelOfDetailPoints);
            });
    });
}

void writeStorage(ReportWriter& out, const Facts& facts) {
    out.member("points", facts.pointBytes);
    out.member("level_of_detail", facts.levelOfDetailBytes);
    out.member("index", facts.indexBytes);
    out.member("metadata", facts.metaDataBytes);
    out.member("other", facts.otherBytes());
}

void writeTransaction(ReportWriter& out, const session::TransactionRecord& transaction) {
    out.member("id", std::uint64_t(transaction.id));
    out.member("title", transaction.title);
    out.member("agent", transaction.agent);
    out.member("comments", transaction.comments);
    out.member("start", transaction.start);
    out.member("stop", transaction.stop);
    out.member("library", transaction.qrb);
}

void writeAttribute(ReportWriter& out, const Facts& facts, std::size_t index) {
    const schema::Attribute& attribute = facts.state->attributes[index];
    const AttributeFacts& attributeFacts = facts.attributes[index];
    out.member("name", attribute.record.name);
    out.member("title", attribute.record.title);
    out.member("description", attribute.record.description);
    out.member("unit", attribute.record.unitSymbol);
    out.member("type", typeName(attribute.record));
    out.member("length", std::uint64_t(attribute.record.length));
    out.member("resolution", attribute.record.resolution);
    out.member("storage_class", storageName(attribute.record));
    writeRanges(out, attribute.grid, attributeFacts);
    out.array("has_invalid", [&] {
        for (const schema::ElementStatistics& s : attributeFacts.elements)
            out.flag(nullptr, s.hasInvalid);
    });
    out.member("blocks", attributeFacts.blocks);
    out.member("bytes", attributeFacts.bytes);
    const auto ratio = [](std::uint64_t part, std::uint64_t whole) {
        return static_cast<double>(part) / static_cast<double>(whole);
    };
    const std::uint64_t all = facts.pointBytes + facts.levelOfDetailBytes;
    out.member("share", all == 0 ? 0.0 : 100 * ratio(attributeFacts.bytes, all));
    out.member("bytes_per_point", ratio(attributeFacts.leafBytes, facts.state->pointCount));
}

}  // namespace

std::string jsonReport(const Facts& facts) {
    const session::State& state = *facts.state;
    ReportWriter out;
    out.object(nullptr, [&] {
        out.object("database", [&] { writeDatabase(out, facts); });
        out.member("points", state.pointCount);
        out.object("extent", [&] { writeExtent(out, facts); });
        out.copy("settings", parseJson(validUtf8(toJson(facts.identity.settings)), "The settings",
                                       ErrorCode::Internal));
        out.object("level_of_detail", [&] {
            out.member("mode", std::uint64_t(state.lodMode));
            out.member("size", std::uint64_t(state.chunkSizeLod));
            std::uint64_t points = 0;
            for (const LevelFacts& level : facts.levels)
                points += level.levelOfDetailPoints;
            out.member("points", points);
        });
        out.object("index", [&] { writeIndex(out, facts); });
        out.object("storage", [&] { writeStorage(out, facts); });
        out.array("transactions", [&] {
            for (const session::TransactionRecord& transaction : facts.transactions)
                out.object(nullptr, [&] { writeTransaction(out, transaction); });
        });
        out.array("attributes", [&] {
            for (std::size_t a = 0; a < facts.attributes.size(); ++a)
                out.object(nullptr, [&] { writeAttribute(out, facts, a); });
        });
        out.array("metadata", [&] {
            for (const ItemFacts& item : facts.metaData)
                out.member(nullptr, item.name);
        });
        out.array("metadata_items", [&] {
            for (const ItemFacts& item : facts.metaData)
                out.object(nullptr, [&] {
                    out.member("name", item.name);
                    out.member("bytes", item.bytes);
                    out.flag("signed", item.isSigned);
                });
        });
    });
    return out.text();
}

}  // namespace tarvo::engine::report
