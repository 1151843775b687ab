// The filter language: parse, bind, decide for whole nodes, select within batches. No I/O.
//
//   expression  a || b, a && b, == != < <= > >=, + -, * / %, unary - + !, ( )
//   operands    numbers; elements "NAME" or "NAME[I]"; "...:minimum" ":maximum" ":default"
//               ":invalid" of an element (the definition's values, constants)
//
// Numbers without point and exponent and elements of the Integer kind are integers, and + - * % of
// integers are exact integers (of up to 127 bits; where the ranges of the operands allow more, they
// are computed as doubles, and numbers that leave them are refused); everything else is double, a
// comparison of mixed operands too. Comparisons with numbers are exact: one that is written with
// more digits than a double has is an integer, or refused where it is none. % is that of C; by 0 it
// gives NaN. A comparison gives 1 or 0 and can't be chained; && || ! treat any value but 0 as true
// (NaN counts as false, as does every comparison with NaN but !=). "NAME" of an attribute with
// several elements is an error that says which elements there are.
#pragma once

#include "engine/codec/block.h"
#include "engine/schema/attribute.h"
#include "engine/schema/column.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::engine::filter {

struct Node;     // of the syntax tree
struct Program;  // of the bound form

// A parsed expression; independent of any file.
class Expression {
public:
    // Throws Failure(Filter): what was expected, what was found and at which position (from 1, in
    // characters), with the text and a caret in the details. Depth and length are bounded. A text
    // of blanks is the empty expression.
    static Expression parse(std::string_view text);

    bool empty() const { return !m_root; }
    const std::shared_ptr<const Node>& root() const { return m_root; }
    const std::string& text() const { return m_text; }

private:
    std::shared_ptr<const Node> m_root;
    std::string m_text;
};

// One element of one attribute that a bound filter reads.
struct ElementRef {
    std::size_t attribute = 0;  // index in the table
    std::uint32_t element = 0;
    bool operator==(const ElementRef&) const = default;
};

enum class Decision { None, All, Look };

// What the statistics of a node tell of the conditions that a filter is made of, by their numbers:
// those that hold for all of its points or for none need no look.
using Decided = std::vector<Decision>;

// The points of a batch that pass: ascending indexes.
using Selection = std::vector<std::uint32_t>;

// Gives the block of a slot (index into BoundFilter::elements()); called at most once per slot
// and batch, only for those that are needed; the block must live until select or count returns.
using BlockSource = std::function<const codec::Block&(std::size_t slot)>;

// An expression bound to the attributes of a file: immutable, so any number of threads may use it
// at the same time.
class BoundFilter {
public:
    // The table is only read here. Throws Failure(Filter) with the position for an unknown
    // attribute or element.
    BoundFilter(const Expression& expression, const schema::AttributeTable& table);
    ~BoundFilter();
    BoundFilter(BoundFilter&&) noexcept;
    BoundFilter& operator=(BoundFilter&&) noexcept;

    // Whether every point passes.
    bool empty() const;
    // The elements that the filter reads, without duplicates.
    const std::vector<ElementRef>& elements() const;

    // What the statistics of a node (in the order of elements()) tell about all of its points, by
    // interval arithmetic over values, invalid values included. Never says None or All wrongly.
    // decided: takes what they tell of each condition, for select or count of the same points.
    Decision decide(std::span<const schema::ElementStatistics> statistics,
                    Decided* decided = nullptr) const;

    // Replaces selection by those points of [0, count) that pass, ascending. Comparisons of an
    // element with a constant run on the codes, and only on runs whose bounds leave it open; && and
    // || narrow the selection, the cheapest part first; the rest is evaluated a column at a time in
    // blocks that fit the cache. decided: as decide gave it of these points, or empty.
    void select(std::size_t count, const BlockSource& blocks, Selection& selection,
                const Decided& decided = {}) const;
    // How many select would give.
    std::size_t count(std::size_t count, const BlockSource& blocks,
                      const Decided& decided = {}) const;

private:
    std::unique_ptr<const Program> m_program;
};

}  // namespace tarvo::engine::filter
