// How the values of an attribute become whole numbers and back. A stored value is a code: an
// unsigned number that grows with the value, so that codes compare as values do.
//
//   Integer  resolution 1 and whole limits:  code = value - minimum, exact in 64 bits
//   Scaled   resolution r > 0:               code = round((value - minimum) / r)
//   Float    resolution 0:                   code = the bits of the double, ordered
//
// The invalid value is an ordinary code where it lies on the grid, else the code behind the
// largest one. A Float attribute stores NaN as its invalid code in any case.
#pragma once

#include "numbers/wide.h"

#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>

namespace tarvo::numbers {

class Grid {
public:
    enum class Kind : std::uint8_t { Integer, Scaled, Float };

    struct Definition {
        double minimum = 0;
        double maximum = 0;
        double resolution = 1;
        double invalid = 0;  // NaN: none
    };
    // Values can't be stored by the definition. The text goes on behind the attribute's name; the
    // details are sentences.
    class Fault : public std::runtime_error {
    public:
        Fault(const std::string& text, std::string details)
            : std::runtime_error(text), m_details(std::move(details)) {}
        const std::string& details() const { return m_details; }

    private:
        std::string m_details;
    };

    // Throws Fault.
    explicit Grid(const Definition& definition);

    Kind kind() const { return m_kind; }
    double minimum() const { return m_minimum; }
    double maximum() const { return m_maximum; }
    double resolution() const { return m_resolution; }
    // As values are read; NaN: none.
    double invalidValue() const { return m_invalidValue; }
    // Bytes of a code in memory: 1, 2, 4 or 8; holds the invalid code too.
    unsigned width() const { return m_width; }
    // The largest code that is not the off-grid invalid code.
    std::uint64_t maximumCode() const { return m_maximumCode; }
    bool hasInvalid() const { return m_hasInvalid; }
    // Only meaningful with hasInvalid().
    std::uint64_t invalidCode() const { return m_invalidCode; }
    bool isInvalid(std::uint64_t code) const { return m_hasInvalid && code == m_invalidCode; }
    // Whether the invalid code lies behind the others, so that it is out of the order of values.
    bool invalidIsOffGrid() const { return m_hasInvalid && m_invalidCode > m_maximumCode; }

    // The value of a code; the invalid value for the invalid code (NaN for a Float without one).
    double value(std::uint64_t code) const;
    // value() of many codes: out has their number.
    void values(std::span<const std::uint64_t> codes, double* out) const;
    // The same of codes in a column's own width: 1, 2, 4 or 8 bytes.
    template <typename Code>
    void values(std::span<const Code> codes, double* out) const;
    // The same for the Integer kind, exact. The off-grid invalid code gives the invalid value where
    // that is a whole 64-bit number.
    using Wide = numbers::Wide;
    Wide integerValue(std::uint64_t code) const;
    // Whether integerValue() gives every value: the Integer kind, unless the invalid value is no
    // whole 64-bit number.
    bool hasWholeValues() const;
    // What the values and the invalid value lie between, for the Integer kind with whole values.
    Wide leastInteger() const;
    Wide greatestInteger() const;

    // The code of a value; nothing when it is neither in the range nor the invalid value.
    std::optional<std::uint64_t> find(double value) const;
    std::optional<std::uint64_t> find(Wide value) const;  // Integer kind only
    // find() of many values, as long as none is special: false where one is neither in the range
    // nor clearly so, or the invalid value, and the codes mean nothing then.
    bool findAll(std::span<const double> values, std::uint64_t* codes) const;
    bool findAll(std::span<const std::int64_t> values, std::uint64_t* codes) const;  // Integer kind

    // The smallest valid code whose value is >= (or >) the bound; maximumCode() + 1 where there is
    // none (saturated to 2^64-1 with "none" set).
    struct Bound {
        std::uint64_t code = 0;
        bool none = false;
    };
    Bound firstAtLeast(double bound) const;
    Bound firstAbove(double bound) const;

private:
    void makeFloat();
    void makeInteger();
    void makeScaled();
    // Gives the invalid value its code: its place on the grid, or the one behind the last.
    void placeInvalid();
    std::optional<std::uint64_t> codeOnGrid(double value) const;
    std::string limitsText() const;
    std::uint64_t nearestBeside(std::uint64_t code, double value) const;
    double stepOf(double value) const;  // Scaled kind: the code before rounding
    template <typename Reached>
    Bound firstCode(Reached reached) const;

    Kind m_kind = Kind::Integer;
    unsigned m_width = 8;
    bool m_hasInvalid = false;
    std::uint64_t m_maximumCode = 0;
    std::uint64_t m_invalidCode = 0;
    double m_invalidValue = 0;
    double m_minimum = 0;
    double m_maximum = 0;
    double m_resolution = 1;
    bool m_isFine = false;         // rounding may lead to the neighbour of a code
    double m_inverse = 0;          // 1 / resolution where that is whole, else 0
    bool m_wholeMinimum = false;   // minimum is a whole multiple of the resolution
    std::int64_t m_firstStep = 0;  // minimum / resolution where m_wholeMinimum
    Wide m_minimumInteger = 0;
};

// The order-preserving code of a double, and back.
std::uint64_t orderedBits(double value);
double fromOrderedBits(std::uint64_t bits);

}  // namespace tarvo::numbers
