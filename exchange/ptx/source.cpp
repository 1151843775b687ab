#include "exchange/ptx/source.h"

#include "exchange/rawfile.h"
#include "exchange/table/jsontext.h"
#include "exchange/table/knownnames.h"

#include <algorithm>
#include <filesystem>

namespace tarvo::exchange::ptx {

namespace {

// The order of the columns; colours stand behind them.
enum At : std::size_t { Coordinates, Intensity = 3, Number, Row, ColumnNumber, Colours };

constexpr std::int32_t noColour = -1;

Column ownColumn(const char* name, const char* title, const char* description) {
    Column column;
    column.attribute = name;
    column.name = title;
    column.title = title;
    column.description = description;
    column.type = DataType::UINT32;
    return column;
}

}  // namespace

PtxSource::PtxSource(const std::string& fileName, const OpenProgress& progress)
    : m_fileName(fileName), m_reader(fileName, progress) {
    readScans();
    m_reader.endOpening();
    makeColumns();
    m_buffers.reserve(m_columns);
    rewind();
}

void PtxSource::readScans() {
    Scan scan;
    while (m_reader.nextScan(scan)) {
        for (std::uint64_t i = 0; i < scan.pointCount(); ++i) {
            scan.width = m_reader.nextPoint(scan).size();
        }
        m_hasColours |= scan.hasColour();
        m_scans.push_back(scan);
    }
    if (m_scans.empty()) {
        failFormat("PTX", m_fileName, "it is empty");
    }
}

void PtxSource::makeColumns() {
    for (const char* name : {"x", "y", "z", "intensity"}) {
        m_columns.push_back(columnNamed(name, "ptx."));
        m_columns.back().name = name;
    }
    m_columns.push_back(
        ownColumn("ptx.scan", "Scan", "Number of the scan within its file, from 1"));
    m_columns.push_back(ownColumn("ptx.row", "Row", "Row of the point in its scan, from 0"));
    m_columns.push_back(
        ownColumn("ptx.column", "Column", "Column of the point in its scan, from 0"));
    if (!m_hasColours) {
        return;
    }
    const bool allHave = std::ranges::all_of(
        m_scans, [](const Scan& scan) { return scan.hasColour() || scan.pointCount() == 0; });
    for (const char* name : {"red", "green", "blue"}) {
        Column column = columnNamed(name, "ptx.");
        column.name = name;
        column.type = allHave ? DataType::UINT16 : DataType::INT32;
        column.hasInvalid = !allHave;
        column.invalidValue = allHave ? 0 : noColour;
        m_columns.push_back(column);
    }
}

void PtxSource::rewind() {
    m_reader.rewind();
    m_scan = 0;
    m_point = 0;
    m_holes = 0;
}

std::uint32_t PtxSource::next() {
    std::uint32_t count = 0;
    while (count < m_buffers.capacity()) {
        if (m_scan == 0 || m_point == m_scans[m_scan - 1].pointCount()) {
            Scan header;
            if (m_scan == m_scans.size()) {
                break;
            }
            if (!m_reader.nextScan(header) || header.pointCount() != m_scans[m_scan].pointCount()) {
                throw core::Failure("\"" + m_fileName + "\" changed while it was read.");
            }
            ++m_scan;
            m_point = 0;
            continue;
        }
        const Scan& scan = m_scans[m_scan - 1];
        m_reader.nextPoint(scan);
        const std::uint64_t point = m_point++;
        const std::array<double, 3> own = {m_reader.number(0), m_reader.number(1),
                                           m_reader.number(2)};
        if (own[0] == 0 && own[1] == 0 && own[2] == 0) {
            ++m_holes;
            continue;
        }
        const std::array<double, 3> posed = scan.pose(own);
        for (std::size_t i = 0; i < 3; ++i) {
            m_buffers.typed<double>(Coordinates + i)[count] = posed[i];
        }
        m_buffers.typed<double>(Intensity)[count] = m_reader.number(3);
        m_buffers.typed<std::uint32_t>(Number)[count] = static_cast<std::uint32_t>(m_scan);
        m_buffers.typed<std::uint32_t>(Row)[count] = static_cast<std::uint32_t>(point % scan.rows);
        m_buffers.typed<std::uint32_t>(ColumnNumber)[count] =
            static_cast<std::uint32_t>(point / scan.rows);
        for (std::size_t i = 0; m_hasColours && i < 3; ++i) {
            m_buffers.set(Colours + i, count, scan.hasColour() ? m_reader.colour(4 + i) : noColour);
        }
        ++count;
    }
    return count;
}

std::vector<std::pair<std::string, std::string>> PtxSource::metaData() const {
    const std::string text = jsonText([&](JsonWriter& writer) {
        writer.StartObject();
        putText(writer, "file_name", std::filesystem::path(m_fileName).filename().string());
        writer.Key("scans");
        writer.StartArray();
        for (std::size_t i = 0; i < m_scans.size(); ++i) {
            const Scan& scan = m_scans[i];
            writer.StartObject();
            writer.Key("number");
            writer.Uint64(i + 1);
            writer.Key("columns");
            writer.Uint64(scan.columns);
            writer.Key("rows");
            writer.Uint64(scan.rows);
            putNumbers(writer, "position", scan.position);
            writer.Key("axes");
            writer.StartArray();
            for (const auto& axis : scan.axes) {
                putArray(writer, axis);
            }
            writer.EndArray();
            writer.Key("matrix");
            writer.StartArray();
            for (const auto& row : scan.matrix) {
                putArray(writer, row);
            }
            writer.EndArray();
            writer.EndObject();
        }
        writer.EndArray();
        writer.EndObject();
    });
    return {{"ptx.scans", text}};
}

std::vector<std::string> PtxSource::notes() const {
    std::vector<std::string> notes;
    if (m_holes > 0) {
        notes.push_back(std::to_string(m_holes) + " holes without a point were left out.");
    }
    if (std::ranges::any_of(m_scans, [](const Scan& scan) { return !scan.pose.isIdentity(); })) {
        notes.emplace_back(posedNote);
    }
    return notes;
}

}  // namespace tarvo::exchange::ptx
