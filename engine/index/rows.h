// Points as rows of bytes: the code of every element in the width of its grid.
#pragma once

#include "engine/schema/attribute.h"

#include <cstdint>
#include <cstring>
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
    std::size_t idField() const { return m_idField; }
    // The index of the first field of an attribute of the table.
    std::size_t fieldOf(std::size_t attribute) const { return m_firstField[attribute]; }
    static bool has(const schema::Attribute& attribute) {
        return !attribute.is(schema::StorageClass::Constant);
    }

private:
    std::size_t m_stride = 0;
    std::size_t m_idField = 0;
    std::vector<Field> m_fields;
    std::vector<std::size_t> m_firstField;
};

}  // namespace tarvo::engine::index
