#include "engine/report/chart.h"
#include "engine/report/forms.h"
#include "engine/report/text.h"
#include "engine/report/png.h"
#include "numbers/numbertext.h"
#include "numbers/sizetext.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace tarvo::engine::report {

namespace {

// Of an attribute with more elements the rest stands in the histogram report only.
constexpr std::uint32_t maximumShownElements = 16;
constexpr unsigned longestBar = 160;  // pixels

// A piece of markup; what it holds of foreign texts is escaped.
using Markup = std::string;

Markup tag(const char* name, const Markup& inside, const char* attributes = "") {
    return "<" + std::string(name) + (*attributes ? " " : "") + attributes + ">" + inside + "</" +
           name + ">";
}

Markup heading(const char* anchor, const char* text) {
    return "<h2><a name=\"" + std::string(anchor) + "\"></a>" + text + "</h2>\n";
}

Markup picture(const std::string& uri, unsigned width, unsigned height, const char* alternative) {
    return "<img src=\"" + uri + "\" width=\"" + std::to_string(width) + "\" height=\"" +
           std::to_string(height) + "\" alt=\"" + alternative + "\" />";
}

class HtmlTable {
public:
    enum class Align { Left, Right };

    void header(const std::vector<const char*>& cells) { m_header = cells; }
    void begin() {
        m_rows += "<tr>";
        m_column = 0;
    }
    void end() { m_rows += "</tr>\n"; }
    void cell(const Markup& inside, Align align = Align::Left) {
        if (align == Align::Right)
            m_rightColumns.insert(m_column);
        ++m_column;
        m_rows += tag("td", inside, align == Align::Right ? "align=\"right\"" : "");
    }
    void number(const Markup& inside) { cell(inside, Align::Right); }
    void pair(const char* name, const Markup& inside) {
        begin();
        cell(tag("b", name));
        cell(inside);
        end();
    }
    Markup markup() const {
        return tag("table", "\n" + headerRow() + m_rows,
                   "border=\"1\" cellspacing=\"0\" cellpadding=\"4\""
                   " style=\"border-collapse:collapse; border-color:#808080\"") +
               "\n";
    }

private:
    // Titles of columns with numbers stand to the right, above those.
    Markup headerRow() const {
        Markup row;
        for (std::size_t column = 0; column < m_header.size(); ++column)
            row += tag("th", m_header[column],
                       m_rightColumns.count(column) ? "align=\"right\"" : "align=\"left\"");
        return m_header.empty() ? row : "<tr>" + row + "</tr>\n";
    }

    std::vector<const char*> m_header;
    Markup m_rows;
    std::size_t m_column = 0;
    std::set<std::size_t> m_rightColumns;
};

std::string baseName(const std::string& fileName) {
    return fileName.substr(fileName.find_last_of("/\\") + 1);
}

Markup withUnit(const std::string& number, const std::string& unit) {
    return number + (unit.empty() ? "" : " " + escaped(unit));
}

Markup identityPart(const Facts& facts) {
    const session::State& state = *facts.state;
    HtmlTable table;
    table.pair("File", escaped(facts.fileName));
    table.pair("Size", numbers::sizeText(facts.fileSize) + " (" +
                           numbers::groupedText(facts.fileSize) + " B)");
    table.pair("UUID", escaped(facts.identity.uuid));
    table.pair("Creator", escaped(facts.identity.creator));
    table.pair("Points", numbers::groupedText(state.pointCount));
    table.pair("Transaction", "#" + std::to_string(facts.current));
    if (facts.pending)
        table.pair("Pending", "#" + std::to_string(state.transaction.id) +
                                  ", not yet committed; the report includes its changes");
    table.pair("Primary attribute", escaped(state.primary().record.name));
    table.pair("Chunk size", chunkText(facts.identity.settings, true));
    table.pair("Level of detail", levelOfDetailText(state));
    table.pair("Compression level",
               std::to_string(facts.identity.settings.compressionLevel) + " %");
    return table.markup();
}

// Numbers of an attribute, all with as many digits behind the mark as its resolution, or as the one
// with the most.
std::vector<std::string> alike(std::vector<std::string> numbers,
                               const schema::AttributeRecord& record) {
    const std::size_t places =
        std::max(mostPlaces(numbers), mostPlaces({numbers::numberText(record.resolution)}));
    for (std::string& number : numbers)
        number = withPlaces(std::move(number), places);
    return numbers;
}

Markup extentPart(const Facts& facts) {
    const schema::Attribute& primary = facts.state->primary();
    if (facts.state->pointCount == 0)
        return tag("p", "The database holds no points.") + "\n";
    HtmlTable table;
    table.header({"Element", "Minimum", "Maximum", "Size"});
    for (std::uint32_t e = 0; e < primary.record.length; ++e) {
        const schema::ElementStatistics& s = facts.attributes[0].elements[e];
        if (!s.hasValid)
            continue;
        const std::string& unit = primary.record.unitSymbol;
        table.begin();
        table.cell(escaped(elementName(primary.record, e)));
        for (const std::string& number :
             alike({valueText(primary.grid, s.minimum), valueText(primary.grid, s.maximum),
                    numbers::roundedText(extentSize(primary.grid, s), 12)},
                   primary.record))
            table.number(withUnit(number, unit));
        table.end();
    }
    return table.markup();
}

Markup legend(const Facts& facts, const Picture& cloud) {
    if (cloud.colouring == Colouring::TrueColour)
        return tag("p", "In the colours of the points.") + "\n";
    const schema::AttributeRecord& primary = facts.state->primary().record;
    const bool height = cloud.colouring == Colouring::Height;
    const auto end = [&](double value) {
        return height ? withUnit(numbers::roundedText(value, 6), primary.unitSymbol)
                      : numbers::roundedText(value, 3);
    };
    constexpr int steps = 16;
    Markup cells = tag("td", end(cloud.low) + "&nbsp;");
    for (int i = 0; i < steps; ++i) {
        const drawing::Colour colour = drawing::rampColour(i / (steps - 1.0));
        char hexadecimal[24];
        std::snprintf(hexadecimal, sizeof hexadecimal, "bgcolor=\"#%02x%02x%02x\"", colour.red,
                      colour.green, colour.blue);
        cells += tag("td", "&nbsp;", hexadecimal);
    }
    cells += tag("td", "&nbsp;" + end(cloud.high));
    return tag("p", height ? "Coloured by " + escaped(elementName(primary, 2)) + ":"
                           : std::string("Coloured by the number of points per pixel:")) +
           "\n" +
           tag("table", tag("tr", cells), "border=\"0\" cellspacing=\"0\" cellpadding=\"1\"") +
           "\n";
}

Markup picturePart(const Facts& facts, const PointFacts& points) {
    if (!points.picture)
        return {};
    const Picture& cloud = *points.picture;
    const schema::AttributeRecord& primary = facts.state->primary().record;
    return heading("picture", "Seen from above") +
           tag("p", escaped(elementName(primary, 0)) + " to the right, " +
                        escaped(elementName(primary, 1)) + " upwards.") +
           "\n" +
           tag("p", picture(dataUri(cloud.image), cloud.image.width(), cloud.image.height(),
                            "the point cloud from above")) +
           "\n" + legend(facts, cloud);
}

Markup storagePart(const Facts& facts) {
    HtmlTable table;
    table.header({"Part", "Size", "Share"});
    for (const auto& [name, bytes] : storageParts(facts)) {
        table.begin();
        table.cell(name);
        table.number(numbers::sizeText(bytes));
        table.number(percentText(bytes, facts.fileSize));
        table.end();
    }
    return heading("storage", "Storage") + table.markup();
}

Markup attributesPart(const Facts& facts) {
    HtmlTable table;
    table.header({"Attribute", "Title", "Type", "Storage", "Resolution", "Minimum", "Maximum",
                  "Unit", "Bytes per point", "Share"});
    const std::uint64_t all = facts.pointBytes + facts.levelOfDetailBytes;
    std::vector<std::string> bytes;
    for (std::size_t a = 0; a < facts.attributes.size(); ++a)
        bytes.push_back(bytesPerPointText(facts, a));
    const std::size_t places = mostPlaces(bytes);
    for (std::size_t a = 0; a < facts.attributes.size(); ++a) {
        const schema::Attribute& attribute = facts.state->attributes[a];
        const schema::AttributeRecord& record = attribute.record;
        for (std::uint32_t e = 0; e < record.length; ++e) {
            const schema::ElementStatistics& s = facts.attributes[a].elements[e];
            table.begin();
            table.cell(escaped(elementName(record, e)));
            // What elements have in common stands at the first.
            table.cell(e == 0 ? escaped(record.title) : Markup());
            table.cell(e == 0 ? Markup(typeName(record)) : Markup());
            table.cell(e == 0 ? Markup(storageName(record)) : Markup());
            table.number(e == 0 && record.resolution > 0 ? numbers::numberText(record.resolution)
                                                         : Markup());
            const auto ends = s.hasValid ? alike({valueText(attribute.grid, s.minimum),
                                                  valueText(attribute.grid, s.maximum)},
                                                 record)
                                         : std::vector<std::string>{"no values", ""};
            table.number(ends[0]);
            table.number(ends[1]);
            table.cell(escaped(record.unitSymbol));
            table.number(e == 0 ? withPlaces(bytes[a], places) : "");
            table.number(e == 0 ? percentText(facts.attributes[a].bytes, all) : "");
            table.end();
        }
    }
    return heading("attributes", "Point attributes") + table.markup();
}

Markup valueBars(const Histogram& histogram) {
    static const std::string bar = dataUri(drawBarPixel());
    const bool named = std::any_of(histogram.bins.begin(), histogram.bins.end(),
                                   [](const Bin& bin) { return !bin.name.empty(); });
    std::uint64_t most = 1;
    for (const Bin& bin : histogram.bins)
        most = std::max(most, bin.count);
    std::vector<std::string> values;
    for (const Bin& bin : histogram.bins)
        values.push_back(bin.from);
    const std::size_t places = mostPlaces(values);
    HtmlTable table;
    named ? table.header({"Value", "Name", "Points", "Share", ""})
          : table.header({"Value", "Points", "Share", ""});
    for (const Bin& bin : histogram.bins) {
        table.begin();
        table.number(withPlaces(bin.from, places));
        if (named)
            table.cell(escaped(bin.name));
        table.number(numbers::groupedText(bin.count));
        table.number(percentText(bin.count, histogram.count + histogram.invalid));
        const double length =
            static_cast<double>(bin.count) / static_cast<double>(most) * longestBar;
        table.cell(picture(bar, std::max(1u, static_cast<unsigned>(length)), 10, ""));
        table.end();
    }
    return table.markup();
}

Markup rangeBars(const Histogram& histogram, const std::string& unit) {
    std::uint64_t most = 0;
    for (const Bin& bin : histogram.bins)
        most = std::max(most, bin.count);
    const drawing::Image image = drawBars(histogram);
    const std::size_t places = mostPlaces({histogram.minimum, histogram.maximum});
    const Markup ends =
        tag("td", withUnit(withPlaces(histogram.minimum, places), unit)) +
        tag("td", withUnit(withPlaces(histogram.maximum, places), unit), "align=\"right\"");
    return tag("table",
               "\n" +
                   tag("tr",
                       tag("td",
                           picture(dataUri(image), image.width(), image.height(), "histogram"),
                           "colspan=\"2\"")) +
                   "\n" + tag("tr", ends) + "\n",
               "border=\"0\" cellspacing=\"0\" cellpadding=\"1\"") +
           "\n" +
           tag("p", std::to_string(histogram.bins.size()) + " bins, the highest bar stands for " +
                        numbers::groupedText(most) + " points.") +
           "\n";
}

Markup histogramOf(const schema::AttributeRecord& record, const Histogram& histogram) {
    Markup out = record.length > 1
                     ? tag("h4", escaped(elementName(record, histogram.column.element))) + "\n"
                     : Markup();
    if (histogram.bins.size() == 1 && histogram.invalid == 0) {
        const Bin& bin = histogram.bins.front();
        return out +
               tag("p", "All " + numbers::groupedText(histogram.count) + " points have the value " +
                            withUnit(bin.from, record.unitSymbol) +
                            (bin.name.empty() ? "" : " (" + escaped(bin.name) + ")") + ".") +
               "\n";
    }
    Markup line = numbers::groupedText(histogram.count) + " values";
    // Of names there is no mean.
    if (histogram.count > 0 && record.namedValues.empty())
        line += ", mean " + withUnit(numbers::roundedText(histogram.mean, 8), record.unitSymbol);
    if (histogram.invalid > 0)
        line += ", " + numbers::groupedText(histogram.invalid) + " invalid" +
                (histogram.invalidName.empty() ? "" : " (" + escaped(histogram.invalidName) + ")");
    out += tag("p", line) + "\n";
    if (histogram.count > 0)
        out +=
            histogram.singleValues ? valueBars(histogram) : rangeBars(histogram, record.unitSymbol);
    return out;
}

Markup histogramsPart(const Facts& facts, const PointFacts& points) {
    if (facts.state->pointCount == 0)
        return {};
    Markup out = heading("histograms", "Histograms");
    for (const Histogram& histogram : points.histograms) {
        const schema::AttributeRecord& record =
            facts.state->attributes[histogram.column.attribute].record;
        const std::uint32_t element = histogram.column.element;
        if (element == 0) {
            out += tag("h3", escaped(record.title) + " (" + escaped(record.name) + ")") + "\n";
            if (!record.description.empty())
                out += tag("p", escaped(record.description)) + "\n";
        }
        if (element < maximumShownElements)
            out += histogramOf(record, histogram);
        else if (element == maximumShownElements)
            out += tag("p", "The elements from " + std::to_string(element) +
                                " on stand in the report of the attribute histograms.") +
                   "\n";
    }
    return out;
}

Markup indexPart(const Facts& facts) {
    HtmlTable table;
    table.header({"Depth", "Leaves", "Points", "Inner nodes", "Level of detail points"});
    for (std::size_t depth = 0; depth < facts.levels.size(); ++depth) {
        const LevelFacts& level = facts.levels[depth];
        table.begin();
        table.number(std::to_string(depth));
        for (const std::uint64_t count :
             {level.leaves, level.points, level.innerNodes, level.levelOfDetailPoints})
            table.number(numbers::groupedText(count));
        table.end();
    }
    return heading("index", "Index") +
           (facts.levels.empty() ? tag("p", "empty") + "\n" : table.markup());
}

Markup transactionsPart(const Facts& facts) {
    HtmlTable table;
    table.header({"Transaction", "Stop", "Title", "Agent", "Comments"});
    for (const session::TransactionRecord& t : facts.transactions) {
        table.begin();
        table.cell("#" + std::to_string(t.id) + (t.id == facts.current ? " (current)" : ""));
        table.cell(escaped(t.stop));
        table.cell(escaped(t.title));
        table.cell(escaped(t.agent));
        table.cell(escaped(t.comments));
        table.end();
    }
    return heading("transactions", "Transactions") + table.markup();
}

Markup metaDataPart(const Facts& facts) {
    if (facts.metaData.empty())
        return heading("metadata", "Metadata") + tag("p", "none") + "\n";
    HtmlTable table;
    table.header({"Item", "Size", "Signature"});
    for (const ItemFacts& item : facts.metaData) {
        table.begin();
        table.cell(escaped(item.name));
        table.number(numbers::sizeText(item.bytes));
        table.cell(item.isSigned ? "signed" : "");
        table.end();
    }
    return heading("metadata", "Metadata") + table.markup();
}

Markup contents(const Facts& facts, const PointFacts& points) {
    const std::pair<const char*, const char*> parts[] = {
        {"picture", points.picture ? "Seen from above" : ""},
        {"attributes", "Point attributes"},
        {"histograms", facts.state->pointCount > 0 ? "Histograms" : ""},
        {"storage", "Storage"},
        {"index", "Index"},
        {"transactions", "Transactions"},
        {"metadata", "Metadata"}};
    Markup links;
    for (const auto& [anchor, text] : parts)
        if (*text)
            links += (links.empty() ? "<a href=\"#" : " | <a href=\"#") + std::string(anchor) +
                     "\">" + text + "</a>";
    return tag("p", links) + "\n";
}

}  // namespace

std::string htmlReport(const Facts& facts, const PointFacts& points) {
    const Markup name = escaped(baseName(facts.fileName));
    Markup body = tag("h1", name) + "\n" + contents(facts, points) + identityPart(facts) +
                  heading("extent", "Extent") + extentPart(facts);
    if (!points.all())
        body += tag("p", "Picture and histograms are made from " +
                             numbers::groupedText(points.points()) +
                             " of the points: " + sampleText(points.step) + ".") +
                "\n";
    body += picturePart(facts, points) + attributesPart(facts) + histogramsPart(facts, points) +
            storagePart(facts) + indexPart(facts) + transactionsPart(facts) + metaDataPart(facts);
    return "<html><head><title>" + name + "</title></head>\n<body>\n" + body + "</body></html>\n";
}

}  // namespace tarvo::engine::report
