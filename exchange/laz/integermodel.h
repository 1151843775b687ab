// Whole numbers by their difference from a prediction: first how many binary digits it has, then
// the highest eight of them by models, the others as they are.
#pragma once

#include "exchange/laz/models.h"
#include "exchange/laz/wrapping.h"

#include <bit>
#include <cstdint>

namespace tarvo::exchange::laz {

// Numbers of 16 or 32 bits; the models of the digits' number are kept per context.
template <unsigned width, unsigned contexts>
class IntegerModel {
    static_assert(width == 16 || width == 32);

public:
    void reset() {
        m_digits.reset();
        m_correctors.reset();
        m_smallest.reset();
        m_lastDigits = 0;
    }

    // Codes `real`, and returns it: of 16 bits as 0 to 65535.
    template <typename Coder>
    std::int32_t code(Coder& coder, std::int32_t predicted, [[maybe_unused]] std::int32_t real,
                      unsigned context) {
        std::int32_t difference = 0;
        unsigned digits = 0;
        if constexpr (Coder::encodes) {
            difference = folded(minus(real, predicted));
            digits = static_cast<unsigned>(
                std::bit_width(difference <= 0 ? 0u - static_cast<std::uint32_t>(difference)
                                               : static_cast<std::uint32_t>(difference) - 1));
        }
        digits = coder.symbol(m_digits[context], digits);
        m_lastDigits = digits;
        if (digits == 0) {
            difference =
                static_cast<std::int32_t>(coder.bit(m_smallest, static_cast<unsigned>(difference)));
        } else if (digits == 32) {
            difference = INT32_MIN;
        } else {
            difference = codeDigits(coder, digits, difference);
        }
        std::int32_t value = plus(predicted, difference);
        if constexpr (width == 16) {
            value &= 0xffff;
        }
        return value;
    }

    // Of the difference coded last, 0 to 32.
    unsigned lastDigits() const { return m_lastDigits; }

private:
    static std::int32_t folded(std::int32_t difference) {
        return width == 16 ? static_cast<std::int16_t>(difference) : difference;
    }

    // With n digits: -(2^n - 1) to -2^(n-1) and 2^(n-1) + 1 to 2^n, without a gap between them.
    template <typename Coder>
    std::int32_t codeDigits(Coder& coder, unsigned digits, std::int32_t difference) {
        constexpr unsigned modelled = 8;
        const std::uint32_t most = (1u << digits) - 1;
        std::uint32_t code = 0;
        if constexpr (Coder::encodes) {
            code = static_cast<std::uint32_t>(difference) + (difference < 0 ? most : 0u - 1u);
        }
        const unsigned raw = digits > modelled ? digits - modelled : 0;
        SymbolModel<256>& model = m_correctors.at(digits, 1u << (digits - raw));
        const std::uint32_t high = coder.symbol(model, code >> raw);
        code = raw == 0 ? high : high << raw | coder.bits(raw, code & ((1u << raw) - 1));
        return static_cast<std::int32_t>(code >> (digits - 1) ? code + 1 : code - most);
    }

    SymbolModels<width + 1, contexts> m_digits;
    SymbolModels<256, width + 1> m_correctors;
    BitModel m_smallest;
    unsigned m_lastDigits = 0;
};

}  // namespace tarvo::exchange::laz
