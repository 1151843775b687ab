// Evaluates a bound filter for the points of a batch, in blocks that stay in the cache.
#include "engine/base/error.h"
#include "engine/base/spares.h"
#include "engine/filter/arithmetic.h"
#include "engine/filter/term.h"

#include <algorithm>
#include <array>

namespace tarvo::engine::filter {

namespace {

constexpr std::size_t blockSize = 1024;

// The points that a step looks at: those of a block, or a list of some of them.
struct Lanes {
    std::size_t begin = 0;  // of the block
    std::size_t count = 0;
    const std::uint32_t* list = nullptr;  // positions within the block; none: the first count
};

// What one level of recursion needs to keep.
struct Frame {
    alignas(64) std::array<std::byte, blockSize * sizeof(Wide)> first;
    alignas(64) std::array<std::byte, blockSize * sizeof(Wide)> second;
    alignas(64) std::array<std::uint8_t, blockSize> mask;
    alignas(64) std::array<std::uint8_t, blockSize> truth;
    alignas(64) std::array<std::uint32_t, blockSize> list;
    alignas(64) std::array<std::uint32_t, blockSize> lane;
};

struct Scratch {
    std::vector<std::unique_ptr<Frame>> frames;
    std::vector<const schema::Column*> columns;
    std::array<std::uint64_t, blockSize> codes;
    std::array<std::uint8_t, blockSize> mask;
};

std::size_t countSet(const std::uint8_t* mask, std::size_t count) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum += mask[i];
    return sum;
}

template <typename T>
void maskCodes(const T* codes, const Lanes& lanes, const CodeSet& set, std::uint8_t* out) {
    constexpr std::uint64_t most = std::numeric_limits<T>::max();
    // Codes past the column's width don't occur in it.
    const bool possible = set.low <= most;
    const T low = static_cast<T>(possible ? set.low : 0);
    const T span = static_cast<T>(possible ? std::min(set.high, most) - set.low : 0);
    const auto flip = static_cast<std::uint8_t>(set.outside);
    const auto none = static_cast<std::uint8_t>(set.outside ? 1 : 0);
    if (!possible) {
        std::fill_n(out, lanes.count, none);
    } else if (lanes.list) {
        for (std::size_t i = 0; i < lanes.count; ++i)
            out[i] = static_cast<std::uint8_t>(static_cast<T>(codes[lanes.list[i]] - low) <= span) ^
                     flip;
    } else {
        for (std::size_t i = 0; i < lanes.count; ++i)
            out[i] = static_cast<std::uint8_t>(static_cast<T>(codes[i] - low) <= span) ^ flip;
    }
    if (!set.hasInvalid || set.invalidCode > most)
        return;
    const bool inside = set.invalidCode >= set.low && set.invalidCode <= set.high;
    if ((inside != set.outside) == set.invalidPasses)
        return;
    const T invalid = static_cast<T>(set.invalidCode);
    const auto passes = static_cast<std::uint8_t>(set.invalidPasses);
    for (std::size_t i = 0; i < lanes.count; ++i) {
        const T code = codes[lanes.list ? lanes.list[i] : i];
        out[i] = code == invalid ? passes : out[i];
    }
}

class Evaluator {
public:
    Evaluator(const std::vector<Slot>& slots, const ColumnSource& source, std::size_t count,
              Scratch& scratch)
        : m_slots(slots), m_source(source), m_count(count), m_scratch(scratch) {}

    // Sets out of each lane to 1 where the condition holds, else 0.
    void condition(const Term& term, const Lanes& lanes, std::size_t depth, std::uint8_t* out) {
        if (const auto* codes = term.as<Codes>()) {
            column(codes->slot).visit([&]<typename T>(std::span<const T> all) {
                maskCodes<T>(all.data() + lanes.begin, lanes, codes->set, out);
            });
        } else if (const auto* own = term.as<Comparison>()) {
            const Type a = own->left->type, b = own->right->type;
            if (a == Type::Real || b == Type::Real)
                comparison<double>(*own, lanes, depth, out);
            else if (a == Type::Wide || b == Type::Wide)
                comparison<Wide>(*own, lanes, depth, out);
            else
                comparison<std::int64_t>(*own, lanes, depth, out);
        } else if (const auto* value = term.as<NotZero>()) {
            if (value->operand->type == Type::Real)
                notZero<double>(*value->operand, lanes, depth, out);
            else if (value->operand->type == Type::Wide)
                notZero<Wide>(*value->operand, lanes, depth, out);
            else
                notZero<std::int64_t>(*value->operand, lanes, depth, out);
        } else if (const auto* inner = term.as<Not>()) {
            condition(*inner->operand, lanes, depth + 1, out);
            for (std::size_t i = 0; i < lanes.count; ++i)
                out[i] ^= 1;
        } else if (const auto* own = term.as<Junction>()) {
            junction(*own, lanes, depth, out);
        } else {
            throw Failure(ErrorCode::Internal, "A filter took a value for a condition.");
        }
    }

private:
    const schema::Column& column(std::size_t slot) {
        const schema::Column*& known = m_scratch.columns[slot];
        if (!known) {
            const schema::Column& given = m_source(slot);
            if (given.size() < m_count)
                throw Failure(ErrorCode::Internal, "A filter got a column of " +
                                                       std::to_string(given.size()) + " for " +
                                                       std::to_string(m_count) + " points.");
            known = &given;
        }
        return *known;
    }

    // && looks on at lanes that are still 1, || at those that are still 0: at all of them while
    // they are many, else at a list of them.
    void junction(const Junction& term, const Lanes& lanes, std::size_t depth, std::uint8_t* out) {
        Frame& frame = *m_scratch.frames[depth];
        const bool conjunction = term.conjunction;
        condition(*term.operands[0], lanes, depth + 1, out);
        std::size_t next = 1;
        for (; next < term.operands.size(); ++next) {
            const std::size_t set = countSet(out, lanes.count);
            const std::size_t open = conjunction ? set : lanes.count - set;
            if (open == 0)
                return;
            if (open * 8 < lanes.count)
                break;
            condition(*term.operands[next], lanes, depth + 1, frame.mask.data());
            if (conjunction)
                for (std::size_t i = 0; i < lanes.count; ++i)
                    out[i] &= frame.mask[i];
            else
                for (std::size_t i = 0; i < lanes.count; ++i)
                    out[i] |= frame.mask[i];
        }
        if (next == term.operands.size())
            return;

        Lanes some{lanes.begin, 0, frame.list.data()};
        const auto wanted = static_cast<std::uint8_t>(conjunction);
        for (std::size_t i = 0; i < lanes.count; ++i)
            if (out[i] == wanted) {
                frame.lane[some.count] = static_cast<std::uint32_t>(i);
                frame.list[some.count] = lanes.list ? lanes.list[i] : static_cast<std::uint32_t>(i);
                ++some.count;
            }
        for (; next < term.operands.size() && some.count > 0; ++next) {
            condition(*term.operands[next], some, depth + 1, frame.mask.data());
            std::size_t kept = 0;
            for (std::size_t i = 0; i < some.count; ++i) {
                if (frame.mask[i] == wanted) {
                    frame.lane[kept] = frame.lane[i];
                    frame.list[kept++] = frame.list[i];
                } else {
                    out[frame.lane[i]] = frame.mask[i];
                }
            }
            some.count = kept;
        }
    }

    template <typename T>
    T* firstOf(std::size_t depth) {
        return reinterpret_cast<T*>(m_scratch.frames[depth]->first.data());
    }
    template <typename T>
    T* secondOf(std::size_t depth) {
        return reinterpret_cast<T*>(m_scratch.frames[depth]->second.data());
    }

    template <typename T>
    void comparison(const Comparison& term, const Lanes& lanes, std::size_t depth,
                    std::uint8_t* out) {
        T* const a = firstOf<T>(depth);
        T* const b = secondOf<T>(depth);
        valueAs<T>(*term.left, lanes, depth + 1, a);
        valueAs<T>(*term.right, lanes, depth + 1, b);
        const auto run = [&]<Operator operation>() {
            for (std::size_t i = 0; i < lanes.count; ++i)
                out[i] = compare<operation>(a[i], b[i]);
        };
        if (term.operation == Operator::Equal)
            run.template operator()<Operator::Equal>();
        else if (term.operation == Operator::Less)
            run.template operator()<Operator::Less>();
        else
            run.template operator()<Operator::LessEqual>();
    }

    template <typename T>
    void notZero(const Term& term, const Lanes& lanes, std::size_t depth, std::uint8_t* out) {
        T* const a = firstOf<T>(depth);
        value<T>(term, lanes, depth + 1, a);
        for (std::size_t i = 0; i < lanes.count; ++i)
            out[i] = static_cast<std::uint8_t>((a[i] < 0) | (a[i] > 0));
    }

    // The values of a term in a type that holds those of its own.
    template <typename T>
    void valueAs(const Term& term, const Lanes& lanes, std::size_t depth, T* out) {
        const auto convert = [&]<typename Own>(Own* own) {
            value<Own>(term, lanes, depth, own);
            for (std::size_t i = 0; i < lanes.count; ++i)
                out[i] = static_cast<T>(own[i]);
        };
        if (std::is_same_v<T, std::int64_t> ||
            (std::is_same_v<T, double> && term.type == Type::Real))
            value<T>(term, lanes, depth, out);
        else if (term.type == Type::Wide)
            convert(firstOf<Wide>(depth));
        else
            convert(firstOf<std::int64_t>(depth));
    }

    // The values of a term whose type is T.
    template <typename T>
    void value(const Term& term, const Lanes& lanes, std::size_t depth, T* out) {
        if (const auto* constant = term.as<Constant>()) {
            const Number& number = constant->number;
            std::fill_n(
                out, lanes.count,
                number.whole ? static_cast<T>(number.integer) : static_cast<T>(number.real));
        } else if (const auto* read = term.as<Element>()) {
            element(read->slot, lanes, out);
        } else if (const auto* negative = term.as<Negative>()) {
            valueAs<T>(*negative->operand, lanes, depth + 1, out);
            for (std::size_t i = 0; i < lanes.count; ++i)
                out[i] = tarvo::engine::filter::negative(out[i]);
        } else if (const auto* steps = term.as<Chain>()) {
            chain(*steps, lanes, depth, out);
        } else {
            std::uint8_t* const mask = m_scratch.frames[depth]->truth.data();
            condition(term, lanes, depth, mask);
            for (std::size_t i = 0; i < lanes.count; ++i)
                out[i] = static_cast<T>(mask[i]);
        }
    }

    template <typename T>
    void element(std::size_t slot, const Lanes& lanes, T* out) {
        const schema::Grid& grid = m_slots[slot].grid;
        std::uint64_t* const codes = m_scratch.codes.data();
        column(slot).visit([&]<typename Code>(std::span<const Code> all) {
            const Code* const own = all.data() + lanes.begin;
            if (lanes.list)
                for (std::size_t i = 0; i < lanes.count; ++i)
                    codes[i] = own[lanes.list[i]];
            else
                for (std::size_t i = 0; i < lanes.count; ++i)
                    codes[i] = own[i];
        });
        if constexpr (std::is_same_v<T, double>) {
            grid.values({codes, lanes.count}, out);
        } else {
            // Modulo 2^64 for 64-bit integers: the sum is one, whatever the minimum.
            const Wide minimum = grid.integerValue(0);
            if constexpr (sizeof(T) == 8)
                for (std::size_t i = 0; i < lanes.count; ++i)
                    out[i] = static_cast<T>(static_cast<std::uint64_t>(minimum) + codes[i]);
            else
                for (std::size_t i = 0; i < lanes.count; ++i)
                    out[i] = minimum + static_cast<Wide>(codes[i]);
            if (grid.invalidIsOffGrid()) {
                const T invalid = static_cast<T>(grid.integerValue(grid.invalidCode()));
                for (std::size_t i = 0; i < lanes.count; ++i)
                    out[i] = codes[i] == grid.invalidCode() ? invalid : out[i];
            }
        }
    }

    template <typename T>
    void chain(const Chain& term, const Lanes& lanes, std::size_t depth, T* out) {
        auto step = term.steps.begin();
        if (std::is_same_v<T, double> && step->operation == Operator::Modulo &&
            term.first->type != Type::Real && step->operand->type != Type::Real) {
            Wide* const a = firstOf<Wide>(depth);
            Wide* const b = secondOf<Wide>(depth);
            valueAs<Wide>(*term.first, lanes, depth + 1, a);
            valueAs<Wide>(*step->operand, lanes, depth + 1, b);
            for (std::size_t i = 0; i < lanes.count; ++i)
                out[i] = static_cast<T>(moduloOrNaN(a[i], b[i]));
            ++step;
        } else {
            valueAs<T>(*term.first, lanes, depth + 1, out);
        }
        T* const right = secondOf<T>(depth);
        for (; step != term.steps.end(); ++step) {
            valueAs<T>(*step->operand, lanes, depth + 1, right);
            applyStep(step->operation, lanes.count, right, out);
        }
    }

    template <typename T>
    static void applyStep(Operator operation, std::size_t count, const T* right, T* out) {
        const auto run = [&]<Operator own>() {
            for (std::size_t i = 0; i < count; ++i)
                out[i] = apply<own>(out[i], right[i]);
        };
        switch (operation) {
            case Operator::Add:
                return run.template operator()<Operator::Add>();
            case Operator::Subtract:
                return run.template operator()<Operator::Subtract>();
            case Operator::Multiply:
                return run.template operator()<Operator::Multiply>();
            case Operator::Divide:
                if constexpr (std::is_same_v<T, double>)
                    run.template operator()<Operator::Divide>();
                return;
            default:
                return run.template operator()<Operator::Modulo>();
        }
    }

    const std::vector<Slot>& m_slots;
    const ColumnSource& m_source;
    std::size_t m_count;
    Scratch& m_scratch;
};

// Appends begin + i for each i with mask[i] set.
std::size_t appendSet(const std::uint8_t* mask, std::size_t count, std::size_t begin,
                      std::uint32_t* out) {
    std::size_t kept = 0;
    std::size_t i = 0;
    for (; i + 8 <= count; i += 8) {
        std::uint64_t word;
        std::memcpy(&word, mask + i, 8);
        if (word == 0)
            continue;
        for (std::size_t j = i; j < i + 8; ++j) {
            out[kept] = static_cast<std::uint32_t>(begin + j);
            kept += mask[j];
        }
    }
    for (; i < count; ++i) {
        out[kept] = static_cast<std::uint32_t>(begin + i);
        kept += mask[i];
    }
    return kept;
}

}  // namespace

void selectPoints(const std::vector<Slot>& slots, const Term& root, unsigned height,
                  std::size_t count, const ColumnSource& columns, Selection& selection) {
    if (count > UINT32_MAX)
        throw Failure(ErrorCode::Internal, "A batch of " + std::to_string(count) +
                                               " points is too large to be filtered.");
    static Spares<Scratch> scratches;
    const Spares<Scratch>::Loan scratch(scratches);
    while (scratch->frames.size() < height + 1)
        scratch->frames.push_back(std::unique_ptr<Frame>(new Frame));
    scratch->columns.assign(slots.size(), nullptr);
    selection.resize(count);
    std::size_t kept = 0;
    Evaluator evaluator(slots, columns, count, *scratch);
    std::uint8_t* const mask = scratch->mask.data();
    for (std::size_t begin = 0; begin < count; begin += blockSize) {
        const std::size_t length = std::min(blockSize, count - begin);
        evaluator.condition(root, {begin, length, nullptr}, 0, mask);
        // Within the room for all points: no more were kept before than looked at.
        kept += appendSet(mask, length, begin, selection.data() + kept);
    }
    selection.resize(kept);
}

}  // namespace tarvo::engine::filter
