#include "exchange/ply/body.h"
#include "exchange/rawfile.h"
#include "exchange/table/names.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace tarvo::exchange::ply {

namespace {

static_assert(std::endian::native == std::endian::little);

// Bytes of records that are taken apart at once.
constexpr std::size_t pieceBytes = 256u << 10;

template <typename T>
T swapped(T value) {
    auto bytes = std::bit_cast<std::array<std::uint8_t, sizeof(T)>>(value);
    std::ranges::reverse(bytes);
    return std::bit_cast<T>(bytes);
}

class BinaryBody : public Body {
public:
    BinaryBody(const std::string& fileName, const Header& header, std::vector<Field> fields)
        : m_vertices(vertices(header)),
          m_fields(std::move(fields)),
          m_isBig(header.encoding == Encoding::BigEndian),
          m_file(fileName, "PLY"),
          m_recordSize(m_vertices.size()) {
        std::size_t offset = 0;
        for (const Property& property : m_vertices.properties) {
            m_offsets.push_back(offset);
            offset += property.countType ? 0 : dataTypeSize(property.type);
        }
        m_position = header.dataOffset;
        for (const Element& element : header.elements) {
            requireRoom(element);
            if (&element == &m_vertices) {
                break;
            }
            passOver(element);
        }
        m_begin = m_position;
        m_records.resize(
            std::max<std::size_t>(1, pieceBytes / std::max<std::size_t>(m_recordSize, 1)) *
            m_recordSize);
    }

    void rewind() override { m_position = m_begin; }

    void read(std::uint32_t count, ColumnBuffers& buffers) override {
        const auto atOnce = static_cast<std::uint32_t>(m_records.size() / m_recordSize);
        for (std::uint32_t row = 0; row < count;) {
            const std::uint32_t piece = std::min(count - row, atOnce);
            if (m_vertices.hasLists()) {
                gatherRecords(piece);
            } else {
                take(m_records.data(), std::size_t{piece} * m_recordSize);
            }
            for (const Field& field : m_fields) {
                decode(field, row, piece, buffers);
            }
            row += piece;
        }
    }

private:
    // Lists take the bytes of their lengths at least.
    void requireRoom(const Element& element) const {
        std::size_t least = element.size();
        for (const Property& property : element.properties) {
            least += property.countType ? dataTypeSize(*property.countType) : 0;
        }
        const std::uint64_t room = m_file.size() - std::min(m_position, m_file.size());
        if (least > 0 && element.count > room / least) {
            m_file.fail(std::to_string(element.count) + " of the element \"" +
                        validUtf8(element.name) + "\" take " + std::to_string(least) +
                        " bytes each, but " + std::to_string(room) + " are left");
        }
    }

    void passOver(const Element& element) {
        if (!element.hasLists()) {
            m_position += element.count * element.size();
            return;
        }
        for (std::uint64_t i = 0; i < element.count; ++i) {
            for (const Property& property : element.properties) {
                if (property.countType) {
                    passOverList(property);
                } else {
                    skip(dataTypeSize(property.type));
                }
            }
        }
    }

    void passOverList(const Property& property) {
        std::array<std::uint8_t, 8> bytes{};
        take(bytes.data(), dataTypeSize(*property.countType));
        visitValues(*property.countType, bytes.data(), [&]<typename T>(const T*) {
            T length;
            std::memcpy(&length, bytes.data(), sizeof length);
            length = m_isBig ? swapped(length) : length;
            if (length < 0 || static_cast<std::uint64_t>(length) >
                                  (m_file.size() - m_position) / dataTypeSize(property.type)) {
                m_file.fail("the list \"" + validUtf8(property.name) + "\" before byte " +
                            std::to_string(m_position) + " is longer than the file");
            }
            m_position += static_cast<std::uint64_t>(length) * dataTypeSize(property.type);
        });
    }

    // Of vertices, with their lists left out.
    void gatherRecords(std::uint32_t count) {
        for (std::uint32_t i = 0; i < count; ++i) {
            std::uint8_t* record = m_records.data() + i * m_recordSize;
            for (const Property& property : m_vertices.properties) {
                if (property.countType) {
                    passOverList(property);
                } else {
                    take(record, dataTypeSize(property.type));
                    record += dataTypeSize(property.type);
                }
            }
        }
    }

    void decode(const Field& field, std::uint32_t row, std::uint32_t count,
                ColumnBuffers& buffers) const {
        const std::uint8_t* from = m_records.data() + m_offsets[field.property];
        visitValues(field.type, nullptr, [&]<typename T>(const T*) {
            T* const to = buffers.typed<T>(field.column) + row;
            for (std::uint32_t i = 0; i < count; ++i, from += m_recordSize) {
                T value;
                std::memcpy(&value, from, sizeof value);
                to[i] = m_isBig ? swapped(value) : value;
            }
        });
    }

    void take(void* buffer, std::size_t size) {
        m_file.read(m_position, buffer, size, "data");
        m_position += size;
    }
    void skip(std::uint64_t size) {
        if (size > m_file.size() - m_position) {
            m_file.fail("it ends within an element");
        }
        m_position += size;
    }

    const Element& m_vertices;
    std::vector<Field> m_fields;
    bool m_isBig;
    RawFile m_file;
    std::size_t m_recordSize;
    std::vector<std::size_t> m_offsets;  // per property, in a record without lists
    std::uint64_t m_begin = 0;           // of the vertices
    std::uint64_t m_position = 0;
    std::vector<std::uint8_t> m_records;
};

}  // namespace

std::unique_ptr<Body> openBinary(const std::string& fileName, const Header& header,
                                 std::vector<Field> fields) {
    return std::make_unique<BinaryBody>(fileName, header, std::move(fields));
}

}  // namespace tarvo::exchange::ply
