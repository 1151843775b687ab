#include "engine/query/buffers.h"

#include "numbers/numbertext.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

namespace tarvo::engine::query {

namespace {

using schema::Grid;

// Calls function(T{}) with the C++ type of a data type.
template <typename Function>
decltype(auto) withType(std::uint32_t type, Function&& function) {
    switch (type) {
        case QRB_DATA_TYPE_UINT8:
            return function(std::uint8_t{});
        case QRB_DATA_TYPE_INT8:
            return function(std::int8_t{});
        case QRB_DATA_TYPE_UINT16:
            return function(std::uint16_t{});
        case QRB_DATA_TYPE_INT16:
            return function(std::int16_t{});
        case QRB_DATA_TYPE_UINT32:
            return function(std::uint32_t{});
        case QRB_DATA_TYPE_INT32:
            return function(std::int32_t{});
        case QRB_DATA_TYPE_UINT64:
            return function(std::uint64_t{});
        case QRB_DATA_TYPE_INT64:
            return function(std::int64_t{});
        case QRB_DATA_TYPE_SINGLE:
            return function(float{});
        case QRB_DATA_TYPE_DOUBLE:
            return function(double{});
        default:
            throw Failure(ErrorCode::Argument, "The data type " + std::to_string(type) +
                                                   " can't hold values: 1 (UINT8) to 10 (DOUBLE) "
                                                   "are possible.");
    }
}

[[noreturn]] void failFit(const schema::Attribute& attribute, const std::string& value) {
    throw Failure(ErrorCode::Range,
                  "The value " + value + " of the point attribute \"" + attribute.record.name +
                      "\" does not fit the data type that it is to be read as.",
                  "Read it as DOUBLE or as the attribute's own data type.");
}

template <typename T>
T valueAs(const schema::Attribute& attribute, std::uint64_t code) {
    const Grid& grid = attribute.grid;
    if constexpr (std::is_integral_v<T>) {
        if (grid.hasWholeValues()) {
            const Grid::Wide value = grid.integerValue(code);
            if (value < static_cast<Grid::Wide>(std::numeric_limits<T>::min()) ||
                value > static_cast<Grid::Wide>(std::numeric_limits<T>::max()))
                failFit(attribute, numbers::wholeText(value));
            return static_cast<T>(value);
        }
        const double value = std::nearbyint(grid.value(code));
        // The upper limit of a 64-bit type is not a double: compared with the power of two above.
        if (!(value >= static_cast<double>(std::numeric_limits<T>::min()) &&
              value < std::ldexp(1.0, std::numeric_limits<T>::digits)))
            failFit(attribute, numbers::numberText(grid.value(code)));
        return static_cast<T>(value);
    } else {
        return static_cast<T>(grid.value(code));
    }
}

template <typename T>
std::uint64_t codeOf(const schema::Attribute& attribute, T value) {
    if constexpr (std::is_integral_v<T>)
        if (attribute.grid.kind() == Grid::Kind::Integer)
            return attribute.grid.code(static_cast<Grid::Wide>(value));
    return attribute.grid.code(static_cast<double>(value));
}

}  // namespace

std::size_t sizeOfType(std::uint32_t type) {
    return withType(type, [](auto value) { return sizeof value; });
}

Binding makeBinding(const schema::AttributeTable& table, std::string_view descriptor,
                    std::uint32_t type, void* buffer, std::int32_t stride) {
    Binding binding;
    binding.elements = schema::resolveElements(table, descriptor);
    binding.type = type;
    (void)sizeOfType(type);
    if (!buffer)
        throw Failure(ErrorCode::Argument,
                      "No buffer was given for \"" + std::string(descriptor) + "\".");
    binding.buffer = static_cast<std::uint8_t*>(buffer);
    binding.stride = stride;
    return binding;
}

Failure constantFailure(const schema::Attribute& attribute) {
    return {ErrorCode::Range,
            "The point attribute \"" + attribute.record.name +
                "\" has one value for the whole file, and points have another one.",
            "Its storage class is constant. Change the class to variable, or fill the attribute "
            "of all points."};
}

void writeValues(const schema::Attribute& attribute, const schema::Column& column,
                 std::span<const std::uint32_t> rows, std::uint32_t type, std::uint8_t* out,
                 std::ptrdiff_t stride) {
    withType(type, [&](auto example) {
        using T = decltype(example);
        column.visit([&](auto codes) {
            for (const std::uint32_t row : rows) {
                const T value = valueAs<T>(attribute, codes[row]);
                std::memcpy(out, &value, sizeof value);
                out += stride;
            }
        });
    });
}

void writeValue(const schema::Attribute& attribute, std::uint64_t code, std::uint32_t type,
                void* out) {
    withType(type, [&](auto example) {
        const auto value = valueAs<decltype(example)>(attribute, code);
        std::memcpy(out, &value, sizeof value);
    });
}

void readCodes(const schema::Attribute& attribute, std::uint32_t type, const std::uint8_t* in,
               std::ptrdiff_t stride, std::size_t count, std::uint8_t* out, std::size_t outStride) {
    const unsigned width = attribute.grid.width();
    withType(type, [&](auto example) {
        for (std::size_t i = 0; i < count; ++i) {
            auto value = example;
            std::memcpy(&value, in, sizeof value);
            const std::uint64_t code = codeOf(attribute, value);
            std::memcpy(out, &code, width);  // little-endian: the low bytes come first
            in += stride;
            out += outStride;
        }
    });
}

std::vector<std::optional<std::uint64_t>> readIds(const schema::Attribute& pointId,
                                                  const Binding& binding, std::size_t count) {
    std::vector<std::optional<std::uint64_t>> ids(count);
    for (std::size_t i = 0; i < count; ++i) {
        std::uint64_t code = 0;
        try {
            readCodes(pointId, binding.type,
                      binding.buffer + static_cast<std::ptrdiff_t>(i) * binding.stride, 0, 1,
                      reinterpret_cast<std::uint8_t*>(&code), sizeof code);
            ids[i] = code;
        } catch (const Failure& failure) {
            if (failure.code() != ErrorCode::Range)
                throw;
        }
    }
    return ids;
}

}  // namespace tarvo::engine::query
