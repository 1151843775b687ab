#include "exchange/ply/source.h"

#include "catalogue/catalogue.h"
#include "exchange/rawfile.h"
#include "exchange/table/jsontext.h"
#include "exchange/table/knownnames.h"
#include "exchange/table/names.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace tarvo::exchange::ply {

namespace {

constexpr const char* prefix = "ply.";

const char* nameOf(Encoding encoding) {
    return encoding == Encoding::Ascii          ? "ascii"
           : encoding == Encoding::LittleEndian ? "binary_little_endian"
                                                : "binary_big_endian";
}

bool isReal(DataType type) {
    return type == DataType::SINGLE || type == DataType::DOUBLE;
}

// Colours are whole numbers of one or two bytes, as those of other formats. Others keep their
// values under names of their own: what stands for full brightness nobody tells but who wrote the
// attribute's name.
bool mayBeColour(const Property& property) {
    return (!isReal(property.type) && dataTypeSize(property.type) <= 2) ||
           property.name.starts_with("tarvo.");
}

// What the type can hold, for attributes that the catalogue doesn't know.
void setLimits(Column& column) {
    const std::size_t bits = 8 * dataTypeSize(column.type);
    if (isReal(column.type) || bits > 32 || catalogue::findAttribute(column.attribute)) {
        return;
    }
    const bool isSigned = column.type == DataType::INT8 || column.type == DataType::INT16 ||
                          column.type == DataType::INT32;
    column.highest = std::ldexp(1.0, static_cast<int>(bits) - (isSigned ? 1 : 0)) - 1;
    column.lowest = isSigned ? -column.highest - 1 : 0;
}

Column columnOf(const Property& property, Encoding encoding) {
    Column column = columnNamed(property.name, prefix);
    if (column.attribute == "tarvo.rgba" && !mayBeColour(property)) {
        column = {};
        column.attribute = prefix + safeName(property.name);
        column.title = validUtf8(property.name);
    }
    column.name = validUtf8(property.name);
    column.type = property.type;
    if (column.attribute == "tarvo.rgba" && property.type == DataType::INT8) {
        // A colour has no negative values: some programs write "char" for a byte.
        column.type = DataType::UINT8;
    } else if (encoding == Encoding::Ascii && property.type == DataType::SINGLE) {
        column.type = DataType::DOUBLE;  // the decimal number that stands there
    }
    setLimits(column);
    return column;
}

void putNames(JsonWriter& writer, const char* key, const std::vector<std::string>& texts) {
    writer.Key(key);
    writer.StartArray();
    for (const std::string& text : texts) {
        putString(writer, text);
    }
    writer.EndArray();
}

}  // namespace

PlySource::PlySource(const std::string& fileName)
    : m_fileName(fileName), m_header(readHeader(fileName)) {
    std::vector<Field> fields = makeColumns();
    m_body = m_header.encoding == Encoding::Ascii
                 ? openAscii(fileName, m_header, std::move(fields))
                 : openBinary(fileName, m_header, std::move(fields));
    m_buffers.reserve(m_columns, vertices(m_header).count);
}

std::vector<Field> PlySource::makeColumns() {
    std::vector<Field> fields;
    const std::vector<Property>& properties = vertices(m_header).properties;
    for (std::size_t i = 0; i < properties.size(); ++i) {
        if (!properties[i].countType) {
            m_columns.push_back(columnOf(properties[i], m_header.encoding));
            fields.push_back({i, fields.size(), m_columns.back().type});
        }
    }
    if (m_columns.empty()) {
        failFormat("PLY", m_fileName, "its vertices have no numbers");
    }
    makeUnique(m_columns, m_fileName);
    return fields;
}

double PlySource::progress() const {
    const std::uint64_t count = vertices(m_header).count;
    return count == 0 ? 1.0 : static_cast<double>(m_position) / static_cast<double>(count);
}

void PlySource::rewind() {
    m_body->rewind();
    m_position = 0;
}

std::uint32_t PlySource::next() {
    const auto count = static_cast<std::uint32_t>(
        std::min<std::uint64_t>(m_buffers.capacity(), vertices(m_header).count - m_position));
    m_body->read(count, m_buffers);
    m_position += count;
    return count;
}

std::vector<std::pair<std::string, std::string>> PlySource::metaData() const {
    const std::string text = jsonText([&](JsonWriter& writer) {
        writer.StartObject();
        putText(writer, "file_name", std::filesystem::path(m_fileName).filename().string());
        putText(writer, "format", nameOf(m_header.encoding));
        putNames(writer, "comments", m_header.comments);
        putNames(writer, "obj_info", m_header.information);
        writer.Key("elements");
        writer.StartArray();
        for (const Element& element : m_header.elements) {
            writer.StartObject();
            putText(writer, "name", element.name);
            writer.Key("count");
            writer.Uint64(element.count);
            std::vector<std::string> names;
            for (const Property& property : element.properties) {
                names.push_back(property.name);
            }
            putNames(writer, "properties", names);
            writer.EndObject();
        }
        writer.EndArray();
        writer.EndObject();
    });
    return {{"ply.header", text}};
}

std::vector<std::string> PlySource::notes() const {
    std::vector<std::string> notes;
    for (const Element& element : m_header.elements) {
        if (&element != &vertices(m_header) && element.count > 0 && notes.size() < 8) {
            notes.push_back(std::to_string(element.count) + " of the element \"" +
                            validUtf8(element.name) + "\" were passed over.");
        }
    }
    if (const std::uint64_t lines = m_body->linesBehind()) {
        notes.push_back(
            "the header tells " + std::to_string(vertices(m_header).count) + " vertices, but " +
            std::to_string(lines) +
            (lines == 1 ? " more line follows, which is" : " more lines follow, which are") +
            " left out.");
    }
    for (const Property& property : vertices(m_header).properties) {
        if (property.countType && notes.size() < 8) {
            notes.push_back("the lists \"" + validUtf8(property.name) +
                            "\" of the vertices were passed over.");
        }
    }
    return notes;
}

}  // namespace tarvo::exchange::ply
