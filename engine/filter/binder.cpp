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

// The whole number that a number is, as it was written.
std::optional<Wide> integerOf(const Number& number) {
    if (number.whole || number.isWritten)
        return number.integer;
    const bool fits = std::abs(number.real) <= static_cast<double>(wideLimit);
    if (fits && std::trunc(number.real) == number.real)
        return static_cast<Wide>(number.real);
    return std::nullopt;
}

// What can't be compared as whole numbers, a fraction below 2^52 or a number beyond all of them,
// compares with them as doubles without a fault.
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
    if (a.whole || b.whole || (a.isWritten && b.isWritten))
        if (const auto x = integerOf(a), y = integerOf(b); x && y)
            return by(*x, *y);
    return by(asReal(a), asReal(b));
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
    const Interval bounds = boundsOf(number);
    return std::make_unique<Term>(Term{Constant{number}, typeFor(bounds), bounds});
}

TermPointer truthTerm(bool value) {
    return constantTerm(wholeNumber(value));
}

template <typename T>
T applied(Operator operation, T a, T b) {
    switch (operation) {
        case Operator::Add:
            return apply<Operator::Add>(a, b);
        case Operator::Subtract:
            return apply<Operator::Subtract>(a, b);
        case Operator::Multiply:
            return apply<Operator::Multiply>(a, b);
        case Operator::Divide:
            return apply<Operator::Divide>(a, b);
        default:
            return apply<Operator::Modulo>(a, b);
    }
}

// What the evaluation of a batch would give.
Number fold(Operator operation, Type type, const Number& a, const Number& b) {
    if (type != Type::Real)
        return wholeNumber(applied(operation, a.integer, b.integer));
    if (operation == Operator::Modulo && a.whole && b.whole)
        return realNumber(moduloOrNaN(a.integer, b.integer));
    return realNumber(applied(operation, asReal(a), asReal(b)));
}

Type widest(Type a, Type b) {
    return std::max(a, b);
}

bool isConstant(const TermPointer& term) {
    return term->as<Constant>();
}

const Number& numberOf(const TermPointer& term) {
    return term->as<Constant>()->number;
}

TermPointer conditionTerm(Term::Form form, float cost) {
    return std::make_unique<Term>(
        Term{std::move(form), Type::Integer, Interval::ofWhole(0, 1), cost});
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
            return truthTerm(isTrueNumber(numberOf(term)));
        if (const auto* element = term->as<Element>())
            return elementIsTrue(element->slot);
        const Truth truth = isTrue(term->bounds);
        if (!truth.canBeTrue || !truth.canBeFalse)
            return truthTerm(truth.canBeTrue);
        const float cost = term->cost + 1;
        return conditionTerm(NotZero{std::move(term)}, cost);
    }

    std::vector<Slot> takeSlots() { return std::move(m_slots); }

private:
    // NaN is neither 0 nor true.
    TermPointer elementIsTrue(std::size_t slot) const {
        TermPointer other = inverse(codesTerm(slot, Operator::Equal, wholeNumber(0)));
        const Grid& grid = m_slots[slot].grid;
        if (!grid.invalidIsOffGrid())
            return other;
        const bool invalidPasses = isTrueNumber(invalidNumber(slot));
        if (auto* codes = other->as<Codes>())
            codes->set.invalidPasses = invalidPasses;
        else if (isTrueNumber(numberOf(other)) && !invalidPasses)
            return setTerm(slot, 0, static_cast<Wide>(grid.maximumCode()) + 1, false);
        return other;
    }

    [[noreturn]] void fail(std::size_t offset, std::string message) const {
        failAt(m_text, offset, std::move(message));
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
            fail(node.offset, message);
        }
        index = static_cast<std::size_t>(found);
        const schema::Attribute& attribute = m_table[index];
        const std::uint32_t length = attribute.record.length;
        if (node.element >= static_cast<std::int64_t>(length))
            fail(node.indexOffset, "The attribute \"" + node.name + "\" has no element " +
                                       node.index + " (position %0): it has " +
                                       std::to_string(length) +
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
            fail(node.offset,
                 length == 0
                     ? "The attribute \"" + node.name + "\" at position %0 has no elements."
                     : "The attribute \"" + node.name + "\" at position %0 has " +
                           std::to_string(length) + " elements: write \"" + node.name +
                           "[0]\" to \"" + node.name + "[" + std::to_string(length - 1) + "]\".");
        const ElementRef reference{
            index, static_cast<std::uint32_t>(std::max<std::int64_t>(0, node.element))};
        std::size_t slot = 0;
        while (slot < m_slots.size() && !(m_slots[slot].element == reference))
            ++slot;
        if (slot == m_slots.size())
            m_slots.push_back(makeSlot(reference, found.grid));

        const Interval& bounds = m_slots[slot].bounds;
        return std::make_unique<Term>(Term{Element{slot}, typeFor(bounds), bounds,
                                           2.0f * static_cast<float>(found.grid.width())});
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
                return negated(term(*node.operands[0]));
            case Operator::Add:
            case Operator::Multiply: {
                TermPointer result = term(*node.operands[0]);
                for (std::size_t i = 0; i < node.between.size(); ++i)
                    result = extended(std::move(result), node.between[i],
                                      term(*node.operands[i + 1]), node.offset);
                return result;
            }
            default: {
                TermPointer left = term(*node.operands[0]);
                return comparison(node.operation, std::move(left), term(*node.operands[1]));
            }
        }
    }

    static TermPointer negated(TermPointer operand) {
        if (isConstant(operand)) {
            const Number& number = numberOf(operand);
            return constantTerm({number.whole, -number.integer, -number.real, number.isWritten});
        }
        const Interval bounds = negate(operand->bounds);
        const Type type = widest(typeFor(bounds), operand->type);
        const float cost = operand->cost + costOf(Operator::Negate, type);
        return std::make_unique<Term>(Term{Negative{std::move(operand)}, type, bounds, cost});
    }

    // The term with one more operator applied; offset: where the sum or product begins.
    TermPointer extended(TermPointer left, Operator operation, TermPointer right,
                         std::size_t offset) const {
        const Interval bounds = combine(operation, left->bounds, right->bounds);
        if (isConstant(left) && isConstant(right) && !bounds.whole && numberOf(left).whole &&
            numberOf(right).whole && operation != Operator::Divide && operation != Operator::Modulo)
            fail(offset,
                 "The whole numbers at position %0 give one that is too large to be held exactly. "
                 "Write one of them with a decimal point to have it rounded.");
        // A remainder may be small where its operands are not.
        const Type type = widest(typeFor(bounds), widest(left->type, right->type));
        if (isConstant(left) && isConstant(right))
            return constantTerm(fold(operation, type, numberOf(left), numberOf(right)));
        const float cost = left->cost + right->cost + costOf(operation, type);
        if (auto* chain = left->as<Chain>(); chain && left->type == type) {
            chain->steps.push_back({operation, std::move(right)});
            left->bounds = bounds;
            left->cost = cost;
            return left;
        }
        Chain chain{std::move(left), {}};
        chain.steps.push_back({operation, std::move(right)});
        return std::make_unique<Term>(Term{std::move(chain), type, bounds, cost});
    }

    static float costOf(Operator operation, Type type) {
        const float one = operation == Operator::Modulo   ? 20.0f
                          : operation == Operator::Divide ? 6.0f
                                                          : 2.0f;
        return type == Type::Wide ? 3 * one : one;
    }

    // A real constant that is compared with whole numbers becomes one, if it is one.
    static void beWhole(TermPointer& term, const Term& other) {
        if (isConstant(term) && !numberOf(term).whole && other.type != Type::Real)
            if (const auto integer = integerOf(numberOf(term)))
                term = constantTerm(wholeNumber(*integer));
    }

    TermPointer comparison(Operator operation, TermPointer left, TermPointer right) {
        if (operation == Operator::NotEqual)
            return inverse(comparison(Operator::Equal, std::move(left), std::move(right)));
        if (isConstant(left) && isConstant(right))
            return truthTerm(compareNumbers(operation, numberOf(left), numberOf(right)));
        if (const auto* element = left->as<Element>(); element && isConstant(right))
            return codesTerm(element->slot, operation, numberOf(right));
        if (const auto* element = right->as<Element>(); element && isConstant(left))
            return codesTerm(element->slot, mirrored(operation), numberOf(left));
        beWhole(left, *right);
        beWhole(right, *left);
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
        const float cost = left->cost + right->cost + 2;
        return conditionTerm(Comparison{operation, std::move(left), std::move(right)}, cost);
    }

    // The comparison of an element with a constant, on its codes.
    TermPointer codesTerm(std::size_t slot, Operator operation, const Number& constant) const {
        const Grid& grid = m_slots[slot].grid;
        const Wide end = static_cast<Wide>(grid.maximumCode()) + 1;
        Wide atLeast = 0;  // the first code whose value is >= the constant
        Wide above = 0;    // the first code whose value is > the constant
        const auto integer = m_slots[slot].whole ? integerOf(constant) : std::nullopt;
        if (integer) {
            const Wide offset = *integer - grid.integerValue(0);
            atLeast = std::clamp<Wide>(offset, 0, end);
            above = std::clamp<Wide>(offset + 1, 0, end);
        } else {
            const double value = asReal(constant);
            if (std::isnan(value))
                return truthTerm(false);
            const auto code = [&](const Grid::Bound& bound) {
                return bound.none ? end : static_cast<Wide>(bound.code);
            };
            const Number rounded = realNumber(value);
            // A whole number that no double is lies between two of them.
            atLeast = code(compareNumbers(Operator::Greater, constant, rounded)
                               ? grid.firstAbove(value)
                               : grid.firstAtLeast(value));
            above =
                code(compareNumbers(Operator::Less, constant, rounded) ? grid.firstAtLeast(value)
                                                                       : grid.firstAbove(value));
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
        const double part = (static_cast<double>(set.high - set.low) + 1) /
                            (static_cast<double>(grid.maximumCode()) + 1);
        const double passes = std::clamp(set.outside ? 1 - part : part, 0.0, 1.0);
        return conditionTerm(Codes{slot, set}, static_cast<float>(grid.width() * (0.25 + passes)));
    }

    TermPointer inverse(TermPointer term) const {
        if (isConstant(term))
            return truthTerm(!isTrueNumber(numberOf(term)));
        if (auto* inner = term->as<Not>())
            return std::move(inner->operand);
        if (const auto* codes = term->as<Codes>()) {
            const std::size_t slot = codes->slot;
            const Grid& grid = m_slots[slot].grid;
            CodeSet set = codes->set;
            set.outside = !set.outside;
            set.invalidPasses = set.hasInvalid && !set.invalidPasses;
            // One range rather than all but one, where that is possible: && can merge it.
            if (set.outside && set.low == 0) {
                const Wide end = static_cast<Wide>(grid.maximumCode()) + 1;
                return setTerm(slot, static_cast<Wide>(set.high) + 1, end, set.invalidPasses);
            }
            if (set.outside && set.high >= grid.maximumCode())
                return setTerm(
                    slot, 0,
                    std::min(static_cast<Wide>(set.low), static_cast<Wide>(grid.maximumCode()) + 1),
                    set.invalidPasses);
            return termOf(slot, set);
        }
        const float cost = term->cost;
        return conditionTerm(Not{std::move(term)}, cost);
    }

    TermPointer junction(bool conjunction, std::vector<TermPointer> given) const {
        std::vector<TermPointer> operands;
        const auto take = [&](TermPointer term) {
            if (conjunction && mergeRange(operands, *term))
                return;
            operands.push_back(std::move(term));
        };
        for (TermPointer& operand : given) {
            auto* const inner = operand->as<Junction>();
            if (inner && inner->conjunction == conjunction) {
                for (TermPointer& one : inner->operands)
                    take(std::move(one));
            } else if (!isConstant(operand)) {
                take(std::move(operand));
            } else if (isTrueNumber(numberOf(operand)) != conjunction) {
                return truthTerm(!conjunction);
            }
        }
        // Merged ranges may have become nothing, or everything but for the invalid code.
        for (const TermPointer& operand : operands)
            if (isConstant(operand) && isTrueNumber(numberOf(operand)) != conjunction)
                return truthTerm(!conjunction);
        std::erase_if(operands, isConstant);
        if (operands.empty())
            return truthTerm(conjunction);
        if (operands.size() == 1)
            return std::move(operands[0]);
        std::stable_sort(
            operands.begin(), operands.end(),
            [](const TermPointer& a, const TermPointer& b) { return a->cost < b->cost; });
        float cost = 0;
        for (const TermPointer& operand : operands)
            cost += operand->cost;
        return conditionTerm(Junction{conjunction, std::move(operands)}, cost);
    }

    // Narrows the range of codes of the same element among the operands, if there is one.
    bool mergeRange(std::vector<TermPointer>& operands, const Term& term) const {
        const auto* range = term.as<Codes>();
        if (!range || range->set.outside)
            return false;
        for (TermPointer& operand : operands) {
            const auto* other = operand->as<Codes>();
            if (!other || other->slot != range->slot || other->set.outside)
                continue;
            operand = setTerm(range->slot, std::max(other->set.low, range->set.low),
                              static_cast<Wide>(std::min(other->set.high, range->set.high)) + 1,
                              other->set.invalidPasses && range->set.invalidPasses);
            return true;
        }
        return false;
    }

    std::string_view m_text;
    const schema::AttributeTable& m_table;
    std::vector<Slot> m_slots;
};

// Numbers the terms, and the slots that are left after folding, in the order of evaluation; gives
// the height.
unsigned useSlots(Term& term, std::vector<Slot>& all, std::vector<std::size_t>& numbers,
                  Program& program) {
    term.number = program.terms++;
    std::size_t* slot = nullptr;
    if (auto* element = term.as<Element>())
        slot = &element->slot;
    else if (auto* codes = term.as<Codes>())
        slot = &codes->slot;
    if (slot) {
        std::size_t& number = numbers[*slot];
        if (number == SIZE_MAX) {
            number = program.slots.size();
            program.slots.push_back(std::move(all[*slot]));
        }
        *slot = number;
    }
    unsigned height = 0;
    term.eachOperand([&](Term& operand) {
        height = std::max(height, useSlots(operand, all, numbers, program));
    });
    return height + 1;
}

}  // namespace

std::unique_ptr<const Program> bind(const Expression& expression,
                                    const schema::AttributeTable& table) {
    auto program = std::make_unique<Program>();
    if (expression.empty())
        return program;
    Binder binder(expression, table);
    program->root = binder.condition(binder.term(*expression.root()));
    if (isConstant(program->root)) {
        if (isTrueNumber(numberOf(program->root)))
            program->root.reset();
        program->terms = 1;
        return program;
    }
    std::vector<Slot> all = binder.takeSlots();
    std::vector<std::size_t> numbers(all.size(), SIZE_MAX);
    program->height = useSlots(*program->root, all, numbers, *program);
    for (const Slot& slot : program->slots)
        program->elements.push_back(slot.element);
    return program;
}

}  // namespace tarvo::engine::filter
