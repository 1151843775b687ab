// The syntax tree of a filter expression: what the parser makes and the binder reads. Nodes are
// immutable and own what is below them.
#pragma once

#include "engine/schema/grid.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::engine::filter {

enum class Operator : std::uint8_t {
    Or,
    And,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    Add,
    Subtract,
    Multiply,
    Divide,
    Modulo,
    Negate,
    Plus,
    Not
};

enum class Property : std::uint8_t { None, Minimum, Maximum, Default, Invalid };

struct Number {
    bool whole = false;  // then integer is the value, else real
    schema::Grid::Wide integer = 0;
    double real = 0;
    // Without whole: integer is what was written with a point or an exponent; real is near it.
    bool isWritten = false;
};

struct Node {
    enum class Kind : std::uint8_t { Number, Element, Operation };

    Kind kind = Kind::Number;
    std::size_t offset = 0;  // of the first byte in the text
    unsigned height = 1;     // nodes on the longest way down

    Number number;  // Number

    std::string name;           // Element
    std::int64_t element = -1;  // -1: no index given
    std::string index;          // as it is written
    std::size_t indexOffset = 0;
    Property property = Property::None;

    Operator operation = Operator::Or;  // Operation
    // One operand for Negate, Plus, Not; two for comparisons; else two or more.
    std::vector<std::shared_ptr<const Node>> operands;
    // Sums (operation: Add) and products (Multiply): the operators between the operands, applied
    // from the left.
    std::vector<Operator> between;
};

// Bounds that keep recursion over a tree within any thread's stack.
inline constexpr std::size_t maximumTextLength = 64 * 1024;
inline constexpr unsigned maximumHeight = 200;

// Throws Failure(Filter): the message with "%0" replaced by the position of the byte offset (from
// 1, in characters); the details show the text with a caret below.
[[noreturn]] void failAt(std::string_view text, std::size_t offset, std::string message);

}  // namespace tarvo::engine::filter
