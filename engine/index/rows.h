// Points as rows of bytes on their way into the tree: the key, then the code of every element in
// the width of its grid. Rows are sorted by key, in memory or in runs on disk, and merged.
#pragma once

#include "engine/index/key.h"
#include "engine/schema/attribute.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::engine::index {

// Where each element stands in a row. Attributes with one value for the whole file have no place.
class RowLayout {
public:
    struct Field {
        std::uint32_t uid;
        std::uint32_t element;
        unsigned width;
        std::size_t offset;
    };
    explicit RowLayout(const schema::AttributeTable& table);

    std::size_t stride() const { return m_stride; }
    const std::vector<Field>& fields() const { return m_fields; }
    const Field& idField() const { return m_fields[m_idField]; }
    // The index of the first field of an attribute of the table.
    std::size_t fieldOf(std::size_t attribute) const { return m_firstField[attribute]; }
    static bool has(const schema::Attribute& attribute) {
        return !attribute.is(schema::StorageClass::Constant);
    }

    static Key key(const std::uint8_t* row) {
        Key key;
        std::memcpy(&key, row, sizeof key);
        return key;
    }
    std::uint64_t id(const std::uint8_t* row) const {
        std::uint64_t id = 0;
        std::memcpy(&id, row + idField().offset, idField().width);
        return id;
    }

private:
    std::size_t m_stride;
    std::size_t m_idField = 0;
    std::vector<Field> m_fields;
    std::vector<std::size_t> m_firstField;
};

// Sorts rows by key, equal keys by their order, and returns them in a new buffer.
std::vector<std::uint8_t> sortRows(const std::vector<std::uint8_t>& rows, std::size_t stride);

// Sorted rows, read one after another.
class RowReader {
public:
    virtual ~RowReader() = default;
    // The next row, or null at the end; valid until the next call.
    virtual const std::uint8_t* next() = 0;
};

// Reads rows that stay in memory.
std::unique_ptr<RowReader> readRows(std::vector<std::uint8_t> rows, std::size_t stride);

// A run of sorted rows in a temporary file beside the database, which vanishes with the process.
class RowFile {
public:
    // directory: where the file is made. Throws Failure(File).
    RowFile(const std::string& directory, const std::vector<std::uint8_t>& rows);
    ~RowFile();
    RowFile(const RowFile&) = delete;
    RowFile& operator=(const RowFile&) = delete;

    // The reader takes bufferSize bytes of memory; the file must outlive it.
    std::unique_ptr<RowReader> read(std::size_t stride, std::size_t bufferSize) const;

private:
    class Reader;
    std::FILE* m_file = nullptr;
};

// Merges sorted sources and lets the tree builder look ahead within a window.
class RowMerger {
public:
    RowMerger(std::vector<std::unique_ptr<RowReader>> sources, std::size_t stride);

    // Whether no row is left.
    bool atEnd() { return !fill(1); }
    // The key of the next row; there must be one.
    Key nextKey() const { return RowLayout::key(front()); }
    // How many of the next `limit` rows have keys up to `last`.
    std::size_t countUpTo(Key last, std::size_t limit);
    // The next rows; countUpTo told that there are so many. Valid until the next other call.
    const std::uint8_t* front() const { return m_window.data() + m_begin; }
    void pop(std::size_t count) { m_begin += count * m_stride; }
    // Puts rows, sorted, none before the last popped one, among those that are left.
    void insert(const std::vector<std::uint8_t>& rows);

private:
    bool fill(std::size_t count);

    struct Source {
        std::unique_ptr<RowReader> reader;
        const std::uint8_t* row;
    };
    std::size_t m_stride;
    std::vector<Source> m_sources;
    std::vector<std::uint8_t> m_window;
    std::size_t m_begin = 0;
};

}  // namespace tarvo::engine::index
