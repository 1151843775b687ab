#include "exchange/csv/columntype.h"
#include "exchange/csv/linereader.h"
#include "exchange/ply/body.h"
#include "exchange/rawfile.h"
#include "exchange/table/names.h"
#include "exchange/text/fields.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <type_traits>

namespace tarvo::exchange::ply {

namespace {

class AsciiBody : public Body {
public:
    AsciiBody(const std::string& fileName, const Header& header, const std::vector<Field>& fields)
        : m_fileName(fileName),
          m_header(header),
          m_vertices(vertices(header)),
          m_columns(m_vertices.properties.size()),
          m_lines(fileName) {
        for (const Field& field : fields) {
            m_columns[field.property] = field;
        }
        rewind();
    }

    void rewind() override {
        m_lines.rewind();
        m_read = 0;
        m_linesBehind = 0;
        m_isAtEnd = false;
        std::string_view line;
        while (m_lines.position() < m_header.dataOffset && m_lines.next(line)) {
        }
        for (const Element& element : m_header.elements) {
            if (&element == &m_vertices) {
                return;
            }
            for (std::uint64_t i = 0; !element.properties.empty() && i < element.count; ++i) {
                if (!m_lines.next(line)) {
                    failEnd(element, i);
                }
            }
        }
    }

    void read(std::uint32_t count, ColumnBuffers& buffers) override {
        std::string_view line;
        for (std::uint32_t row = 0; row < count; ++row, ++m_read) {
            if (!m_lines.next(line)) {
                failEnd(m_vertices, m_read);
            }
            text::splitFields(line, text::Separator::Blanks, m_words);
            takeVertex(row, buffers);
        }
        if (m_read == m_vertices.count && !m_isAtEnd) {
            countLinesBehind();
        }
    }
    std::uint64_t linesBehind() const override { return m_linesBehind; }

private:
    [[noreturn]] void failEnd(const Element& element, std::uint64_t read) const {
        failFormat("PLY", m_fileName,
                   "it ends after " + std::to_string(read) + " of " +
                       std::to_string(element.count) + " lines of the element \"" +
                       validUtf8(element.name) + "\"");
    }
    [[noreturn]] void failLine(const std::string& what) const {
        failFormat("PLY", m_fileName, "line " + std::to_string(m_lines.lineNumber()) + " " + what);
    }

    void countLinesBehind() {
        bool isBehind = false;
        std::uint64_t known = 0;
        for (const Element& element : m_header.elements) {
            known += isBehind && !element.properties.empty()
                         ? std::min(element.count, UINT64_MAX - known)
                         : 0;
            isBehind |= &element == &m_vertices;
        }
        std::string_view line;
        for (; m_lines.next(line); known -= known > 0 ? 1 : 0) {
            m_linesBehind += known == 0 ? 1 : 0;
        }
        m_isAtEnd = true;
    }
    void takeVertex(std::uint32_t row, ColumnBuffers& buffers) {
        std::size_t word = 0;
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            if (word >= m_words.size()) {
                failLine("has too few numbers");
            }
            const Property& property = m_vertices.properties[i];
            if (property.countType) {
                std::uint64_t length = 0;
                if (!csv::parseNumber(m_words[word], length) || length >= m_words.size() - word) {
                    failLine("has a list of another length than it says");
                }
                word += static_cast<std::size_t>(length);
            } else if (m_columns[i]) {
                take(m_words[word], *m_columns[i], property, row, buffers);
            }
            ++word;
        }
        if (word != m_words.size()) {
            failLine("has too many numbers");
        }
    }

    void take(std::string_view word, const Field& field, const Property& property,
              std::uint32_t row, ColumnBuffers& buffers) const {
        visitValues(field.type, nullptr, [&]<typename T>(const T*) {
            T& value = buffers.typed<T>(field.column)[row];
            if (csv::parseNumber(word, value)) {
                return;
            }
            // Bytes of colours that are declared as signed ones.
            std::int8_t byte = 0;
            if (property.type == DataType::INT8 && std::is_same_v<T, std::uint8_t> &&
                csv::parseNumber(word, byte)) {
                value = static_cast<T>(static_cast<std::uint8_t>(byte));
                return;
            }
            failLine("has \"" + validUtf8(std::string(word.substr(0, 80))) + "\" for \"" +
                     validUtf8(property.name) + "\", which is no number of its type");
        });
    }

    std::string m_fileName;
    const Header& m_header;
    const Element& m_vertices;
    std::vector<std::optional<Field>> m_columns;  // per property
    csv::LineReader m_lines;
    std::uint64_t m_read = 0;
    std::uint64_t m_linesBehind = 0;
    bool m_isAtEnd = false;
    std::vector<std::string_view> m_words;
};

}  // namespace

std::unique_ptr<Body> openAscii(const std::string& fileName, const Header& header,
                                std::vector<Field> fields) {
    return std::make_unique<AsciiBody>(fileName, header, fields);
}

}  // namespace tarvo::exchange::ply
