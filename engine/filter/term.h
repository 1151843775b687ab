// The bound form of a filter: what the binder makes of the syntax tree and the evaluation runs.
// Immutable once made.
#pragma once

#include "engine/filter/filter.h"
#include "engine/filter/interval.h"
#include "engine/filter/syntax.h"

#include <memory>
#include <vector>

namespace tarvo::engine::filter {

// Those codes of an element that a comparison with a constant lets pass: the range, or all but the
// range. The off-grid invalid code is out of the order of values and decided on its own.
struct CodeSet {
    std::uint64_t low = 0;
    std::uint64_t high = 0;  // inclusive
    bool outside = false;
    bool hasInvalid = false;  // whether there is an off-grid invalid code
    std::uint64_t invalidCode = 0;
    bool invalidPasses = false;

    bool contains(std::uint64_t code) const {
        if (hasInvalid && code == invalidCode)
            return invalidPasses;
        return (code >= low && code <= high) != outside;
    }
};

struct Term {
    enum class Kind : std::uint8_t {
        Constant,
        Element,
        Codes,       // a condition on the codes of one element
        Comparison,  // of two values: Equal, Less or LessEqual
        Truth,       // a value is a number other than 0
        Not,
        And,
        Or,
        Arithmetic  // Add, Subtract, Multiply, Divide, Modulo, Negate
    };

    Kind kind = Kind::Constant;
    Operator operation = Operator::Add;  // Comparison, Arithmetic
    Type type = Type::Integer;           // of the value; conditions are Integer 1 or 0
    Interval bounds;                     // of the value, whatever the points
    Number number;                       // Constant
    std::size_t slot = 0;                // Element, Codes
    CodeSet codes;                       // Codes
    float cost = 0;                      // of evaluating it for a point, for the order of And, Or
    std::vector<std::unique_ptr<Term>> operands;

    bool isCondition() const {
        return kind == Kind::Codes || kind == Kind::Comparison || kind == Kind::Truth ||
               kind == Kind::Not || kind == Kind::And || kind == Kind::Or;
    }
};

using TermPointer = std::unique_ptr<Term>;

// One element that the filter reads.
struct Slot {
    ElementRef element;
    schema::Grid grid;
    bool whole = false;  // all values are whole numbers of 64 bits, the invalid one too
    Interval bounds;
};

struct Program {
    TermPointer root;  // a condition or a constant 1 or 0; none: every point passes
    std::vector<Slot> slots;
    std::vector<ElementRef> elements;  // of the slots
    unsigned height = 0;               // terms on the longest way down
};

// Throws Failure(Filter).
std::unique_ptr<const Program> bind(const Expression& expression,
                                    const schema::AttributeTable& table);

// Evaluates a term whose operands are constants.
Number fold(const Term& term);

Truth decideTerm(const Term& term, const std::vector<Slot>& slots,
                 std::span<const schema::ElementStatistics> statistics);

void selectPoints(const std::vector<Slot>& slots, const Term& root, unsigned height,
                  std::size_t count, const ColumnSource& columns, Selection& selection);

}  // namespace tarvo::engine::filter
