// Binds a syntax tree to the attributes of a file: looks elements up, gives every term its type
// and bounds, folds constants, and turns comparisons of an element with a constant into sets of
// codes.
#include "engine/base/error.h"
#include "engine/filter/arithmetic.h"
#include "engine/filter/term.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace tarvo::engine::filter {

namespace {

using schema::Grid;

constexpr double infinity = std::numeric_limits<double>::infinity();

Number wholeNumber(Wide value) {
    return {true, value, 0};
}

Number realNumber(double value) {
    return {false, 0, value};
}

double asReal(const Number& number) {
    return number.whole ? static_cast<double>(number.integer) : number.real;
}

bool isTrueNumber(const Number& number) {
    return number.whole ? number.integer != 0 : number.real < 0 || number.real > 0;
}

bool compareNumbers(Operator operation, const Number& a, const Number& b) {
    const auto by = [&](auto x, auto y) {
        switch (operation) {
            case Operator::Equal:
                return x == y;
            case Operator::Less:
                return x < y;
            case Operator::LessEqual:
                return x <= y;
            case Operator::Greater:
                return x > y;
            default:
                return x >= y;
        }
    };
    return a.whole && b.whole ? by(a.integer, b.integer) : by(asReal(a), asReal(b));
}

Operator mirrored(Operator operation) {
    switch (operation) {
        case Operator::Less:
            return Operator::Greater;
        case Operator::LessEqual:
            return Operator::GreaterEqual;
        case Operator::Greater:
            return Operator::Less;
        case Operator::GreaterEqual:
            return Operator::LessEqual;
        default:
            return operation;
    }
}

Interval boundsOf(const Number& number) {
    if (number.whole)
        return Interval::ofWhole(number.integer, number.integer);
    if (std::isnan(number.real))
        return Interval::nothing();
    return Interval::ofReal(number.real, number.real, false);
}

TermPointer constantTerm(const Number& number) {
    auto term = std::make_unique<Term>();
    term->number = number;
    term->bounds = boundsOf(number);
    term->type = typeFor(term->bounds);
    return term;
}

TermPointer truthTerm(bool value) {
    return constantTerm(wholeNumber(value));
}

bool isConstant(const TermPointer& term) {
    return term->kind == Term::Kind::Constant;
}

Slot makeSlot(const ElementRef& element, const Grid& grid) {
    Slot slot{element, grid, grid.hasWholeValues(), {}};
    if (slot.whole) {
        slot.bounds = Interval::ofWhole(grid.leastInteger(), grid.greatestInteger());
    } else {
        slot.bounds = Interval::ofReal(grid.value(grid.firstAtLeast(-infinity).code),
                                       grid.value(grid.maximumCode()), false);
        if (grid.hasInvalid())
            slot.bounds.include(boundsOf(realNumber(grid.value(grid.invalidCode()))));
    }
    return slot;
}

class Binder {
public:
    Binder(const Expression& expression, const schema::AttributeTable& table)
        : m_text(expression.text()), m_table(table) {}

    // The term of a syntax node: a value or a condition.
    TermPointer term(const Node& node) {
        switch (node.kind) {
            case Node::Kind::Number:
                return constantTerm(node.number);
            case Node::Kind::Element:
                return element(node);
            default:
                return operation(node);
        }
    }

    TermPointer condition(TermPointer term) {
        if (term->isCondition())
            return term;
        if (isConstant(term))
            return truthTerm(isTrueNumber(term->number));
        if (term->kind == Term::Kind::Element) {
            // NaN is neither 0 nor true.
            const std::size_t slot = term->slot;
            TermPointer other = inverse(codesTerm(slot, Operator::Equal, wholeNumber(0)));
            const Grid& grid = m_slots[slot].grid;
            if (other->kind == Term::Kind::Codes && grid.invalidIsOffGrid())
                other->codes.invalidPasses = isTrueNumber(invalidNumber(slot));
            else if (other->kind == Term::Kind::Constant && grid.invalidIsOffGrid() &&
                     isTrueNumber(other->number) && !isTrueNumber(invalidNumber(slot)))
                return setTerm(slot, 0, static_cast<Wide>(grid.maximumCode()) + 1, false);
            return other;
        }
        auto result = std::make_unique<Term>();
        result->kind = Term::Kind::Truth;
        const Truth truth = isTrue(term->bounds);
        if (!truth.canBeTrue || !truth.canBeFalse)
            return truthTerm(truth.canBeTrue);
        result->cost = term->cost + 1;
        return withTruthBounds(std::move(result), std::move(term));
    }

    std::vector<Slot> takeSlots() { return std::move(m_slots); }

private:
    static TermPointer withTruthBounds(TermPointer term, TermPointer operand = nullptr) {
        term->type = Type::Integer;
        term->bounds = Interval::ofWhole(0, 1);
        if (operand)
            term->operands.push_back(std::move(operand));
        return term;
    }

    [[noreturn]] void fail(const Node& node, std::string message) const {
        failAt(m_text, node.offset, std::move(message));
    }

    const schema::Attribute& attribute(const Node& node, std::size_t& index) const {
        const int found = m_table.find(node.name);
        if (found < 0) {
            std::string message = "There is no attribute \"" + node.name + "\" (position %0).";
            for (const schema::Attribute& other : m_table.all())
                if (other.record.name.ends_with("." + node.name)) {
                    message += " Did you mean \"" + other.record.name + "\"?";
                    break;
                }
            fail(node, message);
        }
        index = static_cast<std::size_t>(found);
        const schema::Attribute& attribute = m_table[index];
        const std::uint32_t length = attribute.record.length;
        if (node.element >= static_cast<std::int64_t>(length))
            fail(node, "The attribute \"" + node.name + "\" at position %0 has no element " +
                           std::to_string(node.element) + ": it has " + std::to_string(length) +
                           (length == 1 ? " element." : " elements, counted from 0."));
        return attribute;
    }

    TermPointer element(const Node& node) {
        std::size_t index = 0;
        const schema::Attribute& found = attribute(node, index);
        if (node.property != Property::None)
            return constantTerm(property(found, node.property));
        const std::uint32_t length = found.record.length;
        if (node.element < 0 && length != 1)
            fail(node, length == 0
                           ? "The attribute \"" + node.name + "\" at position %0 has no elements."
                           : "The attribute \"" + node.name + "\" at position %0 has " +
                                 std::to_string(length) + " elements: write \"" + node.name +
                                 "[0]\" to \"" + node.name + "[" + std::to_string(length - 1) +
                                 "]\".");
        const ElementRef reference{
            index, static_cast<std::uint32_t>(std::max<std::int64_t>(0, node.element))};
        std::size_t slot = 0;
        while (slot < m_slots.size() && !(m_slots[slot].element == reference))
            ++slot;
        if (slot == m_slots.size())
            m_slots.push_back(makeSlot(reference, found.grid));

        auto term = std::make_unique<Term>();
        term->kind = Term::Kind::Element;
        term->slot = slot;
        term->bounds = m_slots[slot].bounds;
        term->type = typeFor(term->bounds);
        term->cost = 2.0f * static_cast<float>(found.grid.width());
        return term;
    }

    // What the definition says, on the grid: so that a stored maximum equals ":maximum".
    static Number property(const schema::Attribute& attribute, Property property) {
        const schema::AttributeRecord& record = attribute.record;
        const Grid& grid = attribute.grid;
        double value = record.defaultValue;
        if (property == Property::Minimum)
            value = record.minimumValue;
        else if (property == Property::Maximum)
            value = record.maximumValue;
        else if (property == Property::Invalid)
            value = record.invalidValue;
        try {
            if (std::isnan(value))
                return realNumber(value);
            const std::uint64_t code = grid.code(value);
            const double stored = grid.value(code);
            if (std::abs(stored - value) > 1e-6 * record.resolution && stored != value)
                return realNumber(value);
            if (grid.kind() == Grid::Kind::Integer &&
                (grid.hasWholeValues() || code != grid.invalidCode()))
                return wholeNumber(grid.integerValue(code));
            return realNumber(stored);
        } catch (const Failure&) {
            return realNumber(value);  // a default value outside of the range
        }
    }

    Number invalidNumber(std::size_t slot) const {
        const Grid& grid = m_slots[slot].grid;
        return m_slots[slot].whole ? wholeNumber(grid.integerValue(grid.invalidCode()))
                                   : realNumber(grid.value(grid.invalidCode()));
    }

    TermPointer operation(const Node& node) {
        switch (node.operation) {
            case Operator::Or:
            case Operator::And: {
                std::vector<TermPointer> operands;
                for (const auto& operand : node.operands)
                    operands.push_back(condition(term(*operand)));
                return junction(node.operation == Operator::And, std::move(operands));
            }
            case Operator::Not:
                return inverse(condition(term(*node.operands[0])));
            case Operator::Plus:
                return term(*node.operands[0]);
            case Operator::Negate:
                return arithmetic(node.operation, term(*node.operands[0]), {});
            case Operator::Add:
            case Operator::Subtract:
            case Operator::Multiply:
            case Operator::Divide:
            case Operator::Modulo: {
                TermPointer left = term(*node.operands[0]);
                return arithmetic(node.operation, std::move(left), term(*node.operands[1]));
            }
            default: {
                TermPointer left = term(*node.operands[0]);
                return comparison(node.operation, std::move(left), term(*node.operands[1]));
            }
        }
    }

    static TermPointer arithmetic(Operator operation, TermPointer left, TermPointer right) {
        auto result = std::make_unique<Term>();
        result->kind = Term::Kind::Arithmetic;
        result->operation = operation;
        const Interval& a = left->bounds;
        switch (operation) {
            case Operator::Negate:
                result->bounds = negate(a);
                break;
            case Operator::Add:
                result->bounds = add(a, right->bounds);
                break;
            case Operator::Subtract:
                result->bounds = subtract(a, right->bounds);
                break;
            case Operator::Multiply:
                result->bounds = multiply(a, right->bounds);
                break;
            case Operator::Divide:
                result->bounds = divide(a, right->bounds);
                break;
            default:
                result->bounds = modulo(a, right->bounds);
                break;
        }
        result->type = typeFor(result->bounds);
        // A remainder may be small where its operands are not.
        if (result->type == Type::Integer &&
            (left->type == Type::Wide || (right && right->type == Type::Wide)))
            result->type = Type::Wide;
        const float own = operation == Operator::Modulo   ? 20.0f
                          : operation == Operator::Divide ? 6.0f
                                                          : 2.0f;
        result->cost = left->cost + (right ? right->cost : 0) +
                       own * (result->type == Type::Wide ? 3.0f : 1.0f);
        const bool constant = isConstant(left) && (!right || isConstant(right));
        result->operands.push_back(std::move(left));
        if (right)
            result->operands.push_back(std::move(right));
        return constant ? constantTerm(fold(*result)) : std::move(result);
    }

    TermPointer comparison(Operator operation, TermPointer left, TermPointer right) {
        if (operation == Operator::NotEqual)
            return inverse(comparison(Operator::Equal, std::move(left), std::move(right)));
        if (isConstant(left) && isConstant(right))
            return truthTerm(compareNumbers(operation, left->number, right->number));
        if (left->kind == Term::Kind::Element && isConstant(right))
            return codesTerm(left->slot, operation, right->number);
        if (right->kind == Term::Kind::Element && isConstant(left))
            return codesTerm(right->slot, mirrored(operation), left->number);
        if (operation == Operator::Greater || operation == Operator::GreaterEqual) {
            operation = mirrored(operation);
            left.swap(right);
        }
        const Truth truth = operation == Operator::Equal ? isEqual(left->bounds, right->bounds)
                            : operation == Operator::Less
                                ? isLess(left->bounds, right->bounds)
                                : isLessOrEqual(left->bounds, right->bounds);
        if (!truth.canBeTrue || !truth.canBeFalse)
            return truthTerm(truth.canBeTrue);
        auto result = std::make_unique<Term>();
        result->kind = Term::Kind::Comparison;
        result->operation = operation;
        result->cost = left->cost + right->cost + 2;
        result->operands.push_back(std::move(left));
        return withTruthBounds(std::move(result), std::move(right));
    }

    // The comparison of an element with a constant, on its codes.
    TermPointer codesTerm(std::size_t slot, Operator operation, const Number& constant) const {
        const Grid& grid = m_slots[slot].grid;
        const Wide end = static_cast<Wide>(grid.maximumCode()) + 1;
        Wide atLeast = 0;  // the first code whose value is >= the constant
        Wide above = 0;    // the first code whose value is > the constant
        if (m_slots[slot].whole && constant.whole) {
            const Wide offset = constant.integer - grid.integerValue(0);
            atLeast = std::clamp<Wide>(offset, 0, end);
            above = std::clamp<Wide>(offset + 1, 0, end);
        } else {
            const double value = asReal(constant);
            if (std::isnan(value))
                return truthTerm(false);
            const auto code = [&](const Grid::Bound& bound) {
                return bound.none ? end : static_cast<Wide>(bound.code);
            };
            atLeast = code(grid.firstAtLeast(value));
            above = code(grid.firstAbove(value));
        }
        const bool invalid =
            grid.invalidIsOffGrid() && compareNumbers(operation, invalidNumber(slot), constant);
        switch (operation) {
            case Operator::Equal:
                return setTerm(slot, atLeast, above, invalid);
            case Operator::Less:
                return setTerm(slot, 0, atLeast, invalid);
            case Operator::LessEqual:
                return setTerm(slot, 0, above, invalid);
            case Operator::Greater:
                return setTerm(slot, above, end, invalid);
            default:
                return setTerm(slot, atLeast, end, invalid);
        }
    }

    // The codes of [low, end).
    TermPointer setTerm(std::size_t slot, Wide low, Wide end, bool invalidPasses) const {
        const Grid& grid = m_slots[slot].grid;
        CodeSet set;
        set.hasInvalid = grid.invalidIsOffGrid();
        set.invalidCode = set.hasInvalid ? grid.invalidCode() : 0;
        set.invalidPasses = set.hasInvalid && invalidPasses;
        // Floats begin at the code of their minimum.
        if (grid.kind() == Grid::Kind::Float &&
            low <= static_cast<Wide>(grid.firstAtLeast(-infinity).code))
            low = 0;
        if (low >= end) {
            if (!set.invalidPasses)
                return truthTerm(false);
            set.low = set.high = set.invalidCode;
        } else {
            set.low = static_cast<std::uint64_t>(low);
            set.high = static_cast<std::uint64_t>(end - 1);
            if (low == 0 && set.high >= grid.maximumCode() &&
                (!set.hasInvalid || set.invalidPasses))
                return truthTerm(true);
        }
        return termOf(slot, set);
    }

    TermPointer termOf(std::size_t slot, const CodeSet& set) const {
        const Grid& grid = m_slots[slot].grid;
        auto term = std::make_unique<Term>();
        term->kind = Term::Kind::Codes;
        term->slot = slot;
        term->codes = set;
        const double part = (static_cast<double>(set.high - set.low) + 1) /
                            (static_cast<double>(grid.maximumCode()) + 1);
        const double passes = std::clamp(set.outside ? 1 - part : part, 0.0, 1.0);
        term->cost = static_cast<float>(grid.width() * (0.25 + passes));
        return withTruthBounds(std::move(term));
    }

    TermPointer inverse(TermPointer term) const {
        if (isConstant(term))
            return truthTerm(!isTrueNumber(term->number));
        if (term->kind == Term::Kind::Not)
            return std::move(term->operands[0]);
        if (term->kind == Term::Kind::Codes) {
            const Grid& grid = m_slots[term->slot].grid;
            CodeSet set = term->codes;
            set.outside = !set.outside;
            set.invalidPasses = set.hasInvalid && !set.invalidPasses;
            // One range rather than all but one, where that is possible: && can merge it.
            if (set.outside && set.low == 0) {
                const Wide end = static_cast<Wide>(grid.maximumCode()) + 1;
                return setTerm(term->slot, static_cast<Wide>(set.high) + 1, end, set.invalidPasses);
            }
            if (set.outside && set.high >= grid.maximumCode())
                return setTerm(
                    term->slot, 0,
                    std::min(static_cast<Wide>(set.low), static_cast<Wide>(grid.maximumCode()) + 1),
                    set.invalidPasses);
            return termOf(term->slot, set);
        }
        auto result = std::make_unique<Term>();
        result->kind = Term::Kind::Not;
        result->cost = term->cost;
        return withTruthBounds(std::move(result), std::move(term));
    }

    TermPointer junction(bool conjunction, std::vector<TermPointer> operands) const {
        const auto kind = conjunction ? Term::Kind::And : Term::Kind::Or;
        auto result = std::make_unique<Term>();
        result->kind = kind;
        const auto take = [&](TermPointer term) {
            if (conjunction && term->kind == Term::Kind::Codes && !term->codes.outside)
                for (TermPointer& other : result->operands)
                    if (other->kind == Term::Kind::Codes && other->slot == term->slot &&
                        !other->codes.outside) {
                        other = setTerm(
                            term->slot, std::max(other->codes.low, term->codes.low),
                            static_cast<Wide>(std::min(other->codes.high, term->codes.high)) + 1,
                            other->codes.invalidPasses && term->codes.invalidPasses);
                        return;
                    }
            result->operands.push_back(std::move(term));
        };
        for (TermPointer& operand : operands) {
            if (operand->kind == kind) {
                for (TermPointer& inner : operand->operands)
                    take(std::move(inner));
            } else if (!isConstant(operand)) {
                take(std::move(operand));
            } else if (isTrueNumber(operand->number) != conjunction) {
                return truthTerm(!conjunction);
            }
        }
        // Merged ranges may have become nothing, or everything but for the invalid code.
        for (const TermPointer& operand : result->operands)
            if (isConstant(operand) && isTrueNumber(operand->number) != conjunction)
                return truthTerm(!conjunction);
        std::erase_if(result->operands, isConstant);
        if (result->operands.empty())
            return truthTerm(conjunction);
        if (result->operands.size() == 1)
            return std::move(result->operands[0]);
        std::stable_sort(
            result->operands.begin(), result->operands.end(),
            [](const TermPointer& a, const TermPointer& b) { return a->cost < b->cost; });
        for (const TermPointer& operand : result->operands)
            result->cost += operand->cost;
        return withTruthBounds(std::move(result));
    }

    std::string_view m_text;
    const schema::AttributeTable& m_table;
    std::vector<Slot> m_slots;
};

// Numbers the slots that are left after folding, in the order of evaluation; gives the height.
unsigned useSlots(Term& term, std::vector<Slot>& all, std::vector<std::size_t>& numbers,
                  std::vector<Slot>& used) {
    if (term.kind == Term::Kind::Element || term.kind == Term::Kind::Codes) {
        std::size_t& number = numbers[term.slot];
        if (number == SIZE_MAX) {
            number = used.size();
            used.push_back(std::move(all[term.slot]));
        }
        term.slot = number;
    }
    unsigned height = 0;
    for (const TermPointer& operand : term.operands)
        height = std::max(height, useSlots(*operand, all, numbers, used));
    return height + 1;
}

template <typename T>
T applyTo(Operator operation, T a, T b) {
    switch (operation) {
        case Operator::Add:
            return apply<Operator::Add>(a, b);
        case Operator::Subtract:
            return apply<Operator::Subtract>(a, b);
        case Operator::Multiply:
            return apply<Operator::Multiply>(a, b);
        case Operator::Divide:
            return apply<Operator::Divide>(a, b);
        case Operator::Modulo:
            return apply<Operator::Modulo>(a, b);
        default:
            return -a;  // Negate
    }
}

}  // namespace

Number fold(const Term& term) {
    const Number& a = term.operands[0]->number;
    const Number& b = term.operands.back()->number;
    if (term.type != Type::Real)
        return wholeNumber(applyTo(term.operation, a.integer, b.integer));
    if (term.operation == Operator::Modulo && a.whole && b.whole)
        return realNumber(moduloOrNaN(a.integer, b.integer));
    return realNumber(applyTo(term.operation, asReal(a), asReal(b)));
}

std::unique_ptr<const Program> bind(const Expression& expression,
                                    const schema::AttributeTable& table) {
    auto program = std::make_unique<Program>();
    if (expression.empty())
        return program;
    Binder binder(expression, table);
    program->root = binder.condition(binder.term(*expression.root()));
    if (isConstant(program->root)) {
        if (isTrueNumber(program->root->number))
            program->root.reset();
        return program;
    }
    std::vector<Slot> all = binder.takeSlots();
    std::vector<std::size_t> numbers(all.size(), SIZE_MAX);
    program->height = useSlots(*program->root, all, numbers, program->slots);
    for (const Slot& slot : program->slots)
        program->elements.push_back(slot.element);
    return program;
}

}  // namespace tarvo::engine::filter
