#include "engine/query/buffers.h"

#include "numbers/numbertext.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <span>
#include <type_traits>
#include <utility>

namespace tarvo::engine::query {

namespace {

using schema::Grid;

// Values that are read at once.
constexpr std::size_t pieceSize = 256;

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

// The whole numbers of codes, where all that the grid knows fit the type.
template <typename T, typename Code>
bool convertWhole(const Grid& grid, std::span<const Code> codes, T* out) {
    if (!grid.hasWholeValues() ||
        grid.leastInteger() < static_cast<Grid::Wide>(std::numeric_limits<T>::min()) ||
        grid.greatestInteger() > static_cast<Grid::Wide>(std::numeric_limits<T>::max()))
        return false;
    const std::uint64_t last = grid.invalidIsOffGrid() ? grid.invalidCode() : grid.maximumCode();
    // Modulo the type's size: what fits is the same.
    using Unsigned = std::make_unsigned_t<T>;
    const auto first = static_cast<Unsigned>(grid.integerValue(0));
    Code largest = 0;
    for (std::size_t i = 0; i < codes.size(); ++i) {
        out[i] = static_cast<T>(static_cast<Unsigned>(first + static_cast<Unsigned>(codes[i])));
        largest = std::max(largest, codes[i]);
    }
    if (grid.invalidIsOffGrid() && largest == last)
        for (std::size_t i = 0; i < codes.size(); ++i)
            if (codes[i] == last)
                out[i] = static_cast<T>(grid.integerValue(last));
    return largest <= last;
}

// At most a piece.
template <typename T, typename Code>
void convert(const schema::Attribute& attribute, std::span<const Code> codes, T* out) {
    if constexpr (std::is_same_v<T, double>) {
        attribute.grid.values(codes, out);
    } else if constexpr (std::is_same_v<T, float>) {
        double values[pieceSize];
        attribute.grid.values(codes, values);
        std::transform(values, values + codes.size(), out,
                       [](double value) { return static_cast<float>(value); });
    } else if (!convertWhole(attribute.grid, codes, out)) {
        std::transform(codes.begin(), codes.end(), out,
                       [&](Code code) { return valueAs<T>(attribute, code); });
    }
}

template <typename T>
std::uint64_t codeOf(const schema::Attribute& attribute, T value) {
    if constexpr (std::is_integral_v<T>)
        if (attribute.grid.kind() == Grid::Kind::Integer)
            return attribute.grid.code(static_cast<Grid::Wide>(value));
    return attribute.grid.code(static_cast<double>(value));
}

// The codes of many values, unless one of them has to be looked at for itself.
template <typename T>
bool findCodes(const schema::Attribute& attribute, std::span<const T> values,
               std::uint64_t* codes) {
    const auto find = [&](auto example) {
        using Number = decltype(example);
        Number numbers[pieceSize];
        std::copy(values.begin(), values.end(), numbers);
        return attribute.grid.findAll(std::span<const Number>(numbers, values.size()), codes);
    };
    if constexpr (std::is_integral_v<T>)
        if (attribute.grid.kind() == Grid::Kind::Integer)
            return std::all_of(values.begin(), values.end(),
                               [](T value) { return std::in_range<std::int64_t>(value); }) &&
                   find(std::int64_t{});
    return find(double{});
}

// Calls function(T{}) with the unsigned type of a width.
template <typename Function>
void withWidth(unsigned width, Function&& function) {
    switch (width) {
        case 1:
            return function(std::uint8_t{});
        case 2:
            return function(std::uint16_t{});
        case 4:
            return function(std::uint32_t{});
        default:
            return function(std::uint64_t{});
    }
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

void writeValues(const schema::Attribute& attribute, const codec::Block& block, const Rows& rows,
                 std::uint32_t type, std::uint8_t* out, std::ptrdiff_t stride) {
    withType(type, [&](auto example) {
        using T = decltype(example);
        block.visit([&]<typename Code>(Code) {
            Code codes[pieceSize];
            T values[pieceSize];
            for (std::size_t done = 0; done < rows.count;) {
                const std::size_t count = std::min(pieceSize, rows.count - done);
                const std::size_t begin = rows.begin + done;
                if (rows.list)
                    block.gather(std::span(*rows.list).subspan(begin, count), codes);
                else
                    block.read(begin, count, codes);
                convert<T>(attribute, std::span<const Code>(codes, count), values);
                done += count;
                if (stride == sizeof(T)) {
                    std::memcpy(out, values, count * sizeof(T));
                    out += count * sizeof(T);
                    continue;
                }
                for (std::size_t i = 0; i < count; ++i, out += stride)
                    std::memcpy(out, &values[i], sizeof(T));
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
    withType(type, [&](auto example) {
        using T = decltype(example);
        // In pieces on the stack, one step after the other.
        T values[pieceSize];
        std::uint64_t codes[pieceSize];
        for (std::size_t done = 0; done < count;) {
            const std::span<T> piece(values, std::min(pieceSize, count - done));
            for (T& value : piece) {
                std::memcpy(&value, in, sizeof value);
                in += stride;
            }
            if (!findCodes<T>(attribute, piece, codes))
                for (std::size_t i = 0; i < piece.size(); ++i)
                    codes[i] = codeOf(attribute, values[i]);
            withWidth(attribute.grid.width(), [&](auto code) {
                for (std::size_t i = 0; i < piece.size(); ++i, out += outStride) {
                    code = static_cast<decltype(code)>(codes[i]);
                    std::memcpy(out, &code, sizeof code);
                }
            });
            done += piece.size();
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
