// The caller's buffers: values of a data type at a stride, to and from codes.
#pragma once

#include "engine/codec/block.h"
#include "engine/schema/attribute.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tarvo::engine::query {

// Bytes of a value of a type (qrb_data_type); throws Failure(Argument) for NONE and unknown ones.
std::size_t sizeOfType(std::uint32_t type);

// A buffer bound to elements of an attribute: the value of element first + k of point i stands at
// buffer + i * stride + k * sizeOfType(type).
struct Binding {
    schema::ElementRange elements;
    std::uint32_t type = 0;
    std::uint8_t* buffer = nullptr;
    std::ptrdiff_t stride = 0;
};

// Resolves a descriptor and checks type and buffer; throws Failure.
Binding makeBinding(const schema::AttributeTable& table, std::string_view descriptor,
                    std::uint32_t type, void* buffer, std::int32_t stride);

// What a value of its own for a point meets where the attribute has one value for the whole file.
Failure constantFailure(const schema::Attribute& attribute);

// Some rows of a block: those that a list names or, without one, all from begin on.
struct Rows {
    std::size_t begin;  // in the list where there is one
    std::size_t count;
    const std::vector<std::uint32_t>* list = nullptr;
};

// Writes the values of the rows to out + i * stride. Throws Failure(Range) when a value does not
// fit the type.
void writeValues(const schema::Attribute& attribute, const codec::Block& block, const Rows& rows,
                 std::uint32_t type, std::uint8_t* out, std::ptrdiff_t stride);

// Writes one value.
void writeValue(const schema::Attribute& attribute, std::uint64_t code, std::uint32_t type,
                void* out);

// Reads count values at in + i * stride into codes at out + i * outStride, in the width of the
// attribute's grid. Throws Failure(Range) for a value outside of the attribute's range.
void readCodes(const schema::Attribute& attribute, std::uint32_t type, const std::uint8_t* in,
               std::ptrdiff_t stride, std::size_t count, std::uint8_t* out, std::size_t outStride);

// Reads the ids of points as readCodes does; one that no point can have gives no code.
std::vector<std::optional<std::uint64_t>> readIds(const schema::Attribute& pointId,
                                                  const Binding& binding, std::size_t count);

}  // namespace tarvo::engine::query
