#include "exchange/ply/write.h"

#include "catalogue/catalogue.h"
#include "exchange/advice.h"
#include "exchange/table/delimited.h"
#include "exchange/table/knownnames.h"
#include "exchange/table/names.h"
#include "qrb/visitvalues.h"
#include "numbers/wide.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <set>
#include <string>
#include <string_view>

namespace tarvo::exchange::ply {

namespace {

constexpr std::size_t digitsOfCount = 20;

struct Property {
    std::string name;
    DataType type = DataType::DOUBLE;  // as written
};

const char* typeName(DataType type) {
    switch (type) {
        case DataType::UINT8:
            return "uchar";
        case DataType::INT8:
            return "char";
        case DataType::UINT16:
            return "ushort";
        case DataType::INT16:
            return "short";
        case DataType::UINT32:
            return "uint";
        case DataType::INT32:
            return "int";
        case DataType::SINGLE:
            return "float";
        default:
            return "double";
    }
}

// Larger ones have a range of their own, which readers of these names don't know.
bool isUsualColour(const Column& column) {
    return column.attribute == "tarvo.rgba" && column.element < 4 && dataTypeSize(column.type) <= 2;
}

Property propertyOf(const Column& column) {
    static constexpr const char* axes[] = {"x", "y", "z"};
    static constexpr const char* colours[] = {"red", "green", "blue", "alpha"};
    Property property{column.descriptor(), column.type};
    if (column.attribute == "tarvo.xyz" && column.element < 3) {
        property.name = axes[column.element];
    } else if (isUsualColour(column)) {
        property.name = colours[column.element];
    }
    if (property.type == DataType::UINT64 || property.type == DataType::INT64) {
        property.type = DataType::DOUBLE;
    }
    return property;
}

// Names that readers give the meaning of another column, or that stand there already, are changed.
std::vector<Property> propertiesOf(const std::vector<Column>& columns,
                                   std::vector<std::string>& notes) {
    std::vector<Property> properties;
    std::set<std::string> meanings;
    std::set<std::string> taken;
    for (const Column& column : columns) {
        properties.push_back(propertyOf(column));
        meanings.insert(column.descriptor());
        taken.insert(properties.back().name);
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const std::string descriptor = columns[i].descriptor();
        std::string& name = properties[i].name;
        const std::string meant = columnNamed(name, {}).descriptor();
        if (name == descriptor && meant != descriptor && meanings.contains(meant) &&
            catalogue::findAttribute(columnNamed(name, {}).attribute) != nullptr) {
            name = uniqueName("ply." + safeName(name), taken);
            notes.push_back("\"" + descriptor + "\" is called \"" + name +
                            "\" in the file, where \"" + descriptor + "\" means \"" + meant +
                            "\".");
        }
    }
    return properties;
}

class Writer {
public:
    Writer(const PointSource& source, bool asText, std::FILE* file, std::vector<std::string>& notes)
        : m_source(source),
          m_asText(asText),
          m_file(file),
          m_properties(propertiesOf(source.columns(), notes)) {
        for (const Property& property : m_properties) {
            m_recordLength += dataTypeSize(property.type);
        }
    }

    // Of the same length for each number of points.
    void writeHeader(std::uint64_t points) {
        const std::string count = std::to_string(points);
        std::string text = "ply\nformat ";
        text += m_asText ? "ascii" : "binary_little_endian";
        text += " 1.0\ncomment written by qrbtool" + std::string(digitsOfCount - count.size(), ' ');
        text += "\nelement vertex " + count + "\n";
        for (const Property& property : m_properties) {
            text += "property " + std::string(typeName(property.type)) + " " + property.name + "\n";
        }
        write(text + "end_header\n");
    }
    void rewriteHeader(std::uint64_t points) {
        if (std::fseek(m_file, 0, SEEK_SET) != 0) {
            fail();
        }
        writeHeader(points);
    }
    void checkWholeNumbers(std::uint32_t count) const {
        for (std::size_t i = 0; i < m_properties.size(); ++i) {
            const Column& column = m_source.columns()[i];
            if (column.type != DataType::UINT64 && column.type != DataType::INT64) {
                continue;
            }
            visitValues(column.type, m_source.values(i), [&](const auto* values) {
                const bool fit = std::all_of(values, values + count, [](auto value) {
                    return numbers::Wide(static_cast<double>(value)) == numbers::Wide(value);
                });
                if (!fit) {
                    throw core::Failure("Values of " + column.descriptor() +
                                            " are whole numbers beyond 2^53, for which PLY has no "
                                            "type.",
                                        advice().otherAttributes + "\nOr export to csv or las.");
                }
            });
        }
    }
    void writeRecords(std::uint32_t count) {
        m_records.resize(count * m_recordLength);
        std::size_t offset = 0;
        for (std::size_t i = 0; i < m_properties.size(); ++i) {
            putColumn(i, count, offset);
            offset += dataTypeSize(m_properties[i].type);
        }
        write({reinterpret_cast<const char*>(m_records.data()), m_records.size()});
    }
    void write(std::string_view bytes) {
        if (std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size()) {
            fail();
        }
    }

private:
    [[noreturn]] static void fail() {
        throw core::Failure(std::string("The file can't be written: ") + std::strerror(errno) +
                            ".");
    }
    void putColumn(std::size_t column, std::uint32_t count, std::size_t offset) {
        const DataType type = m_source.columns()[column].type;
        visitValues(type, m_source.values(column), [&]<typename Value>(const Value* values) {
            for (std::uint32_t i = 0; i < count; ++i) {
                std::uint8_t* const to = m_records.data() + i * m_recordLength + offset;
                if (type == m_properties[column].type) {
                    std::memcpy(to, values + i, sizeof(Value));
                } else {
                    const auto number = static_cast<double>(values[i]);
                    std::memcpy(to, &number, sizeof number);
                }
            }
        });
    }

    const PointSource& m_source;
    bool m_asText;
    std::FILE* m_file;
    std::vector<Property> m_properties;
    std::size_t m_recordLength = 0;
    std::vector<std::uint8_t> m_records;
};

}  // namespace

Written writePoints(PointSource& source, const std::vector<core::PointColumn>& formats, bool asText,
                    std::FILE* file, const ImportProgress& progress) {
    const std::string step = "Exporting " + source.fileName();
    Written written;
    Writer writer(source, asText, file, written.notes);
    core::DelimitedWriter text(formats, {' ', UINT64_MAX, false},
                               [&](std::string_view lines) { writer.write(lines); });
    writer.writeHeader(0);
    source.rewind();
    while (const std::uint32_t count = source.next()) {
        writer.checkWholeNumbers(count);
        if (asText) {
            addBatch(text, source, count);
        } else {
            writer.writeRecords(count);
        }
        written.points += count;
        if (progress) {
            progress(step, source.progress());
        }
    }
    text.finish();
    writer.rewriteHeader(written.points);
    return written;
}

}  // namespace tarvo::exchange::ply
