#include "exchange/ply/header.h"

#include "exchange/csv/columntype.h"
#include "exchange/csv/linereader.h"
#include "exchange/rawfile.h"
#include "exchange/table/names.h"
#include "exchange/text/fields.h"

#include <algorithm>
#include <string_view>

namespace tarvo::exchange::ply {

namespace {

constexpr std::uint64_t maximumHeader = 1 << 20;  // bytes
constexpr std::size_t maximumProperties = 4096;   // of all elements

constexpr const char* vertexName = "vertex";

class Reader {
public:
    explicit Reader(const std::string& fileName) : m_fileName(fileName), m_lines(fileName) {}

    Header read() {
        if (!nextLine() || m_words.size() != 1 || m_words[0] != "ply") {
            fail("it does not begin with \"ply\"");
        }
        while (nextLine() && isRemark()) {
            takeLine();
        }
        if (m_words.size() != 3 || m_words[0] != "format") {
            fail("the second line does not tell the format");
        }
        readEncoding();
        while (nextLine()) {
            if (m_words[0] == "end_header") {
                m_header.dataOffset = m_lines.position();
                requireVertices();
                return std::move(m_header);
            }
            takeLine();
        }
        fail("the header has no end");
    }

private:
    [[noreturn]] void fail(const std::string& text) const { failFormat("PLY", m_fileName, text); }
    [[noreturn]] void failLine() const {
        fail("line " + std::to_string(m_lines.lineNumber()) + " of the header is \"" +
             validUtf8(std::string(m_line.substr(0, 80))) + "\"");
    }

    bool nextLine() {
        if (!m_lines.next(m_line)) {
            return false;
        }
        if (m_lines.position() > maximumHeader) {
            fail("the header is longer than " + std::to_string(maximumHeader) + " bytes");
        }
        text::splitFields(m_line, text::Separator::Blanks, m_words);
        return true;
    }

    void readEncoding() {
        if (m_words[1] == "ascii") {
            m_header.encoding = Encoding::Ascii;
        } else if (m_words[1] == "binary_little_endian") {
            m_header.encoding = Encoding::LittleEndian;
        } else if (m_words[1] == "binary_big_endian") {
            m_header.encoding = Encoding::BigEndian;
        } else {
            failLine();
        }
        if (m_words[2] != "1.0") {
            failLine();
        }
    }

    bool isRemark() const { return m_words[0] == "comment" || m_words[0] == "obj_info"; }

    void takeLine() {
        if (isRemark()) {
            auto& texts = m_words[0] == "comment" ? m_header.comments : m_header.information;
            const char* const begin = m_words.size() > 1 ? m_words[1].data() : m_line.data();
            texts.push_back(m_words.size() > 1
                                ? std::string(begin, m_words.back().data() + m_words.back().size())
                                : std::string());
        } else if (m_words[0] == "element" && m_words.size() == 3) {
            Element element;
            element.name = m_words[1];
            if (!csv::parseNumber(m_words[2], element.count)) {
                failLine();
            }
            m_header.elements.push_back(std::move(element));
        } else if (m_words[0] == "property" && !m_header.elements.empty()) {
            takeProperty();
        } else {
            failLine();
        }
    }

    void takeProperty() {
        Property property;
        if (m_words.size() == 3) {
            property.type = typeOf(m_words[1]);
        } else if (m_words.size() == 5 && m_words[1] == "list") {
            property.countType = typeOf(m_words[2]);
            property.type = typeOf(m_words[3]);
            if (*property.countType == DataType::SINGLE ||
                *property.countType == DataType::DOUBLE) {
                failLine();
            }
        } else {
            failLine();
        }
        property.name = m_words.back();
        m_header.elements.back().properties.push_back(std::move(property));
        if (++m_properties > maximumProperties) {
            fail("it has more than " + std::to_string(maximumProperties) + " properties");
        }
    }

    DataType typeOf(std::string_view name) const {
        static constexpr struct {
            std::string_view plain;
            std::string_view sized;
            DataType type;
        } types[] = {
            {"char", "int8", DataType::INT8},       {"uchar", "uint8", DataType::UINT8},
            {"short", "int16", DataType::INT16},    {"ushort", "uint16", DataType::UINT16},
            {"int", "int32", DataType::INT32},      {"uint", "uint32", DataType::UINT32},
            {"long", "int64", DataType::INT64},     {"ulong", "uint64", DataType::UINT64},
            {"float", "float32", DataType::SINGLE}, {"double", "float64", DataType::DOUBLE}};
        for (const auto& known : types) {
            if (name == known.plain || name == known.sized) {
                return known.type;
            }
        }
        failLine();
    }

    void requireVertices() const {
        const auto isVertex = [](const Element& element) { return element.name == vertexName; };
        const auto count = std::ranges::count_if(m_header.elements, isVertex);
        if (count != 1) {
            fail(count == 0 ? "it has no vertices" : "it has the element \"vertex\" twice");
        }
    }

    std::string m_fileName;
    csv::LineReader m_lines;
    std::string_view m_line;
    std::vector<std::string_view> m_words;
    Header m_header;
    std::size_t m_properties = 0;
};

}  // namespace

bool Element::hasLists() const {
    return std::ranges::any_of(
        properties, [](const Property& property) { return property.countType.has_value(); });
}

std::size_t Element::size() const {
    std::size_t bytes = 0;
    for (const Property& property : properties) {
        bytes += property.countType ? 0 : dataTypeSize(property.type);
    }
    return bytes;
}

Header readHeader(const std::string& fileName) {
    return Reader(fileName).read();
}

const Element& vertices(const Header& header) {
    return *std::ranges::find(header.elements, vertexName, &Element::name);
}

}  // namespace tarvo::exchange::ply
