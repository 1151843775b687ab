// The bound form of a filter: what the binder makes of the syntax tree and the evaluation runs.
// Immutable once made.
#pragma once

#include "engine/filter/filter.h"
#include "engine/filter/interval.h"
#include "engine/filter/syntax.h"

#include <memory>
#include <variant>
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

struct Term;
using TermPointer = std::unique_ptr<Term>;

// Values
struct Constant {
    Number number;
};
struct Element {
    std::size_t slot = 0;
};
struct Negative {
    TermPointer operand;
};
// Operators applied one after the other, from the left, each in the type of the whole. Only the
// first may be the remainder of two whole numbers that gives a Real, for the second may be 0.
struct Chain {
    struct Step {
        Operator operation = Operator::Add;  // Add, Subtract, Multiply, Divide, Modulo
        TermPointer operand;
    };
    TermPointer first;
    std::vector<Step> steps;
};

// Conditions, as values 1 or 0
struct Codes {  // of one element
    std::size_t slot = 0;
    CodeSet set;
};
struct Comparison {
    Operator operation = Operator::Equal;  // Equal, Less or LessEqual
    TermPointer left, right;
};
struct NotZero {  // the operand is a number other than 0
    TermPointer operand;
};
struct Not {
    TermPointer operand;
};
struct Junction {
    bool conjunction = false;  // else a disjunction
    std::vector<TermPointer> operands;
};

struct Term {
    using Form =
        std::variant<Constant, Element, Negative, Chain, Codes, Comparison, NotZero, Not, Junction>;

    Form form;
    Type type = Type::Integer;  // of the value
    Interval bounds;            // of the value, whatever the points
    float cost = 0;             // of evaluating it for a point, for the order of junctions
    std::uint32_t number = 0;   // among the terms of the program

    // Null where the term is none.
    template <typename T>
    const T* as() const {
        return std::get_if<T>(&form);
    }
    template <typename T>
    T* as() {
        return std::get_if<T>(&form);
    }
    bool isCondition() const { return form.index() >= Form(Codes()).index(); }

    // Calls the function with each operand.
    template <typename Function>
    void eachOperand(const Function& function) {
        std::visit(
            [&]<typename T>(T& own) {
                if constexpr (requires { own.operands; }) {
                    for (TermPointer& operand : own.operands)
                        function(*operand);
                } else if constexpr (requires { own.operand; }) {
                    function(*own.operand);
                } else if constexpr (requires { own.left; }) {
                    function(*own.left);
                    function(*own.right);
                } else if constexpr (requires { own.steps; }) {
                    function(*own.first);
                    for (Chain::Step& step : own.steps)
                        function(*step.operand);
                }
            },
            form);
    }
};

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
    std::uint32_t terms = 0;           // how many there are
};

// Throws Failure(Filter).
std::unique_ptr<const Program> bind(const Expression& expression,
                                    const schema::AttributeTable& table);

Decision decisionOf(const Truth& truth);

// decided: by number, takes what is told of the conditions that were looked at; null: nothing.
Truth decideTerm(const Term& term, const std::vector<Slot>& slots,
                 std::span<const schema::ElementStatistics> statistics, Decided* decided = nullptr);

// selection: takes the points that pass; null: they are only counted. Returns how many.
std::size_t selectPoints(const Program& program, std::size_t count, const BlockSource& blocks,
                         const Decided& decided, Selection* selection);

}  // namespace tarvo::engine::filter
