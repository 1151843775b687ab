#include "engine/report/forms.h"
#include "engine/report/text.h"
#include "numbers/numbertext.h"
#include "numbers/sizetext.h"

#include <algorithm>

namespace tarvo::engine::report {

namespace {

// Characters, not bytes.
std::size_t displayWidth(const std::string& text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xc0) != 0x80; }));
}

// Columns as wide as their widest cell.
class TextTable {
public:
    explicit TextTable(std::vector<std::string> header) { add(std::move(header)); }

    void add(std::vector<std::string> cells) {
        m_widths.resize(std::max(m_widths.size(), cells.size()));
        for (std::size_t i = 0; i < cells.size(); ++i) {
            cells[i] = oneLine(cells[i]);
            m_widths[i] = std::max(m_widths[i], displayWidth(cells[i]));
        }
        m_rows.push_back(std::move(cells));
    }
    void alignRight(std::vector<std::size_t> columns) { m_right = std::move(columns); }

    std::string text() const {
        std::string out;
        for (const std::vector<std::string>& row : m_rows) {
            std::string line;
            for (std::size_t i = 0; i < row.size(); ++i) {
                const std::string gap(m_widths[i] - displayWidth(row[i]), ' ');
                const bool right = std::find(m_right.begin(), m_right.end(), i) != m_right.end();
                line += "  " + (right ? gap + row[i] : row[i] + gap);
            }
            line.erase(line.find_last_not_of(' ') + 1);
            out += line + "\n";
        }
        return out;
    }

private:
    std::vector<std::vector<std::string>> m_rows;
    std::vector<std::size_t> m_widths;
    std::vector<std::size_t> m_right;
};

std::string pairLine(const std::string& name, const std::string& value) {
    return "  " + name + std::string(name.size() < 20 ? 20 - name.size() : 1, ' ') +
           oneLine(value) + "\n";
}

std::string identityText(const Facts& facts) {
    const session::State& state = *facts.state;
    const session::CreateSettings& settings = facts.identity.settings;
    std::string out = "DATABASE\n";
    out += pairLine("UUID", facts.identity.uuid);
    out += pairLine("File", facts.fileName);
    out += pairLine("Size", std::to_string(facts.fileSize) + " bytes");
    out += pairLine("Creator", facts.identity.creator);
    out += pairLine("Points", std::to_string(state.pointCount));
    out += pairLine("Transaction", "#" + std::to_string(facts.current));
    if (facts.pending)
        out += pairLine("Pending", "#" + std::to_string(state.transaction.id) +
                                       ", not yet committed; the report includes its changes");
    out += pairLine("Primary attribute", state.primary().record.name);
    out += pairLine("Chunk size", chunkText(settings, false));
    out += pairLine("Level of detail", levelOfDetailText(state));
    out += pairLine("Compression level", std::to_string(settings.compressionLevel) + " %");
    return out;
}

std::string extentText(const Facts& facts) {
    const schema::Attribute& primary = facts.state->primary();
    TextTable table({"Element", "Minimum", "Maximum", "Size", "Unit"});
    table.alignRight({1, 2, 3});
    for (std::uint32_t e = 0; e < primary.record.length; ++e)
        if (const schema::ElementStatistics& s = facts.attributes[0].elements[e]; s.hasValid)
            table.add({elementName(primary.record, e), valueText(primary.grid, s.minimum),
                       valueText(primary.grid, s.maximum),
                       numbers::roundedText(extentSize(primary.grid, s), 12),
                       primary.record.unitSymbol});
    return "\nEXTENT\n" + (facts.state->pointCount == 0 ? "  no points\n" : table.text());
}

std::string attributesText(const Facts& facts) {
    TextTable table({"Attribute", "Title", "Type", "Storage", "Minimum", "Maximum", "Unit",
                     "Bytes/point", "Share"});
    table.alignRight({4, 5, 7, 8});
    const std::uint64_t all = facts.pointBytes + facts.levelOfDetailBytes;
    for (std::size_t a = 0; a < facts.attributes.size(); ++a) {
        const schema::Attribute& attribute = facts.state->attributes[a];
        const schema::AttributeRecord& record = attribute.record;
        const AttributeFacts& attributeFacts = facts.attributes[a];
        for (std::uint32_t e = 0; e < record.length; ++e) {
            const schema::ElementStatistics& s = attributeFacts.elements[e];
            const bool first = e == 0;
            table.add({elementName(record, e), first ? record.title : "",
                       first ? std::string(typeName(record)) : "",
                       first ? std::string(storageName(record)) : "",
                       s.hasValid ? valueText(attribute.grid, s.minimum) : "no values",
                       s.hasValid ? valueText(attribute.grid, s.maximum) : "",
                       record.unitSymbol + (s.hasInvalid ? " (some invalid)" : ""),
                       first ? bytesPerPointText(facts, a) : "",
                       first ? percentText(attributeFacts.bytes, all) : ""});
        }
    }
    return "\nPOINT ATTRIBUTES\n" + table.text();
}

std::string storageText(const Facts& facts) {
    TextTable table({"Part", "Size", "Share"});
    table.alignRight({1, 2});
    for (const auto& [name, bytes] : storageParts(facts))
        table.add({name, numbers::sizeText(bytes), percentText(bytes, facts.fileSize)});
    return "\nSTORAGE\n" + table.text();
}

std::string indexText(const Facts& facts) {
    TextTable table({"Depth", "Leaves", "Points", "Inner nodes", "Level of detail points"});
    table.alignRight({0, 1, 2, 3, 4});
    for (std::size_t depth = 0; depth < facts.levels.size(); ++depth) {
        const LevelFacts& level = facts.levels[depth];
        table.add({std::to_string(depth), std::to_string(level.leaves),
                   std::to_string(level.points), std::to_string(level.innerNodes),
                   std::to_string(level.levelOfDetailPoints)});
    }
    return "\nINDEX\n" + (facts.levels.empty() ? "  empty\n" : table.text());
}

std::string transactionsText(const Facts& facts) {
    std::string out = "\nTRANSACTIONS\n";
    for (const session::TransactionRecord& t : facts.transactions) {
        out += pairLine("#" + std::to_string(t.id) + (t.id == facts.current ? " (current)" : ""),
                        t.stop + "  " + t.title + "  [" + t.agent + "]");
        if (!t.comments.empty())
            out += pairLine("", t.comments);
    }
    return out;
}

std::string metaDataText(const Facts& facts) {
    TextTable table({"Item", "Size", ""});
    table.alignRight({1});
    for (const ItemFacts& item : facts.metaData)
        table.add({item.name, numbers::sizeText(item.bytes), item.isSigned ? "signed" : ""});
    return "\nMETADATA\n" + (facts.metaData.empty() ? "  none\n" : table.text());
}

}  // namespace

std::string textReport(const Facts& facts) {
    return identityText(facts) + extentText(facts) + storageText(facts) + attributesText(facts) +
           indexText(facts) + transactionsText(facts) + metaDataText(facts);
}

}  // namespace tarvo::engine::report
