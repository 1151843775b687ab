#include "exchange/las/encode.h"

#include "qrb/visitvalues.h"

#include <cmath>
#include <cstring>
#include <type_traits>

namespace tarvo::exchange::las {

namespace {

template <typename Raw, typename Value, typename Convert>
void putEach(const Value* values, std::size_t count, std::uint8_t* to, std::size_t recordLength,
             Convert convert) {
    for (std::size_t i = 0; i < count; ++i, to += recordLength) {
        const Raw raw = convert(values[i]);
        std::memcpy(to, &raw, sizeof raw);
    }
}

template <typename Raw, typename Value>
std::uint64_t putAffine(const Affine& affine, const Value* values, std::size_t count,
                        std::uint8_t* to, std::size_t recordLength) {
    std::uint64_t rounded = 0;
    putEach<Raw>(values, count, to, recordLength, [&](Value value) {
        const auto number = static_cast<double>(value);
        const auto raw =
            static_cast<std::int64_t>(std::round((number - affine.offset()) / affine.scale()));
        // So far a double lies from its place on the grid by its own rounding.
        const double tolerance = 1e-14 * (std::abs(number) + std::abs(affine.offset()));
        rounded += std::abs(affine(raw) - number) > tolerance;
        return static_cast<Raw>(raw);
    });
    return rounded;
}

template <typename Raw, typename Value>
std::uint64_t putNumbers(const Field& field, const Value* values, std::size_t count,
                         std::uint8_t* to, std::size_t recordLength) {
    if (field.kind == Field::Kind::Affine) {
        return putAffine<Raw>(field.affine, values, count, to, recordLength);
    }
    putEach<Raw>(values, count, to, recordLength,
                 [](Value value) { return static_cast<Raw>(value); });
    return 0;
}

template <typename Value>
void putBits(const Field& field, const Value* values, std::size_t count, std::uint8_t* to,
             std::size_t recordLength) {
    for (std::size_t i = 0; i < count; ++i, to += recordLength) {
        const auto bits = static_cast<std::uint8_t>(static_cast<std::int64_t>(values[i]));
        *to = static_cast<std::uint8_t>(*to | (bits & field.mask) << field.shift);
    }
}

}  // namespace

std::uint64_t encode(const Field& field, DataType type, const void* values, std::size_t count,
                     std::uint8_t* records, std::size_t recordLength) {
    std::uint8_t* const to = records + field.offset;
    std::uint64_t rounded = 0;
    visitValues(type, values, [&]<typename Value>(const Value* typed) {
        if (field.kind == Field::Kind::Bits) {
            putBits(field, typed, count, to, recordLength);
            return;
        }
        // The raw type by a pointer to nothing.
        visitValues(field.raw, nullptr, [&]<typename Raw>(const Raw*) {
            rounded = putNumbers<Raw>(field, typed, count, to, recordLength);
        });
    });
    return rounded;
}

}  // namespace tarvo::exchange::las
