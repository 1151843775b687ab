// Evaluates a bound filter for the points of a batch, in blocks that stay in the cache.
#include "engine/base/error.h"
#include "engine/base/instructions.h"
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
    std::vector<const codec::Block*> blocks;
    std::array<std::uint64_t, blockSize> codes;
    std::array<std::uint8_t, blockSize> mask;
};

std::size_t countSet(const std::uint8_t* mask, std::size_t count) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum += mask[i];
    return sum;
}

Truth decideRun(const CodeSet& set, const codec::Block::Bounds& bounds) {
    const bool all = bounds.low >= set.low && bounds.high <= set.high;
    const bool some = bounds.low <= set.high && bounds.high >= set.low;
    Truth truth = set.outside ? Truth{!all, some} : Truth{some, !all};
    if (set.hasInvalid && set.invalidCode >= bounds.low && set.invalidCode <= bounds.high) {
        truth.canBeTrue = truth.canBeTrue || set.invalidPasses;
        truth.canBeFalse = truth.canBeFalse || !set.invalidPasses;
    }
    return truth;
}

// A code set for codes of a type.
template <typename T>
struct CodeTest {
    T low;
    T span;
    T invalid;
    std::uint8_t outside;
    std::uint8_t isOnItsOwn;  // the invalid code: the range tells something else of it
    std::uint8_t invalidPasses;

    // Codes past the type don't occur; a range of none but such holds nothing.
    explicit CodeTest(const CodeSet& set) {
        constexpr std::uint64_t most = std::numeric_limits<T>::max();
        const bool possible = set.low <= most;
        low = static_cast<T>(possible ? set.low : 0);
        span = static_cast<T>(possible ? std::min(set.high, most) - set.low : most);
        outside = possible ? set.outside : !set.outside;
        const bool inside = set.invalidCode >= set.low && set.invalidCode <= set.high;
        isOnItsOwn = set.hasInvalid && set.invalidCode <= most &&
                     (inside != set.outside) != set.invalidPasses;
        invalid = static_cast<T>(set.invalidCode);
        invalidPasses = set.invalidPasses;
    }
    std::uint8_t operator()(T code) const {
        if (isOnItsOwn && code == invalid)
            return invalidPasses;
        return static_cast<std::uint8_t>(static_cast<T>(code - low) <= span) ^ outside;
    }
};

// Bytes may stand for anything: without its own count and the promise that nothing overlaps, a loop
// over masks goes byte by byte.
void joinMasks(bool conjunction, const std::uint8_t* __restrict mask, std::size_t count,
               std::uint8_t* __restrict out) {
    if (conjunction)
        for (std::size_t i = 0; i < count; ++i)
            out[i] &= mask[i];
    else
        for (std::size_t i = 0; i < count; ++i)
            out[i] |= mask[i];
}

void invertMask(std::size_t count, std::uint8_t* mask) {
    for (std::size_t i = 0; i < count; ++i)
        mask[i] ^= 1;
}

template <Operator operation, typename T>
void compareLoop(const T* __restrict a, const T* __restrict b, std::size_t count,
                 std::uint8_t* __restrict out) {
    for (std::size_t i = 0; i < count; ++i)
        out[i] = compare<operation>(a[i], b[i]);
}

template <typename T>
__attribute__((always_inline)) inline void testLoop(const CodeTest<T>& test,
                                                    const T* __restrict codes, std::size_t count,
                                                    std::uint8_t* __restrict out) {
    const T low = test.low, span = test.span, invalid = test.invalid;
    const std::uint8_t outside = test.outside, invalidPasses = test.invalidPasses;
    for (std::size_t i = 0; i < count; ++i)
        out[i] = static_cast<std::uint8_t>(static_cast<T>(codes[i] - low) <= span) ^ outside;
    if (test.isOnItsOwn)
        for (std::size_t i = 0; i < count; ++i)
            out[i] = codes[i] == invalid ? invalidPasses : out[i];
}

template <typename T>
QRB_WIDE void testWide(const CodeTest<T>& test, const T* codes, std::size_t count,
                       std::uint8_t* out) {
    testLoop(test, codes, count, out);
}

template <typename T>
void testCodes(const CodeTest<T>& test, const T* codes, std::size_t count, std::uint8_t* out) {
    if (wideInstructions().load(std::memory_order_relaxed))
        testWide(test, codes, count, out);
    else
        testLoop(test, codes, count, out);
}

// Calls function(begin, end, run) for the lanes of each run of the block.
template <typename Function>
void eachRun(const Lanes& lanes, const Function& function) {
    const auto position = [&](std::size_t i) {
        return lanes.begin + (lanes.list ? lanes.list[i] : i);
    };
    for (std::size_t begin = 0; begin < lanes.count;) {
        const std::size_t run = position(begin) / codec::runLength;
        std::size_t end = begin;
        if (lanes.list)
            while (end < lanes.count && position(end) / codec::runLength == run)
                ++end;
        else
            end = std::min(lanes.count, begin + codec::runLength);
        function(begin, end, run);
        begin = end;
    }
}

template <typename T>
void maskCodes(const codec::Block& block, const Lanes& lanes, const CodeSet& set,
               std::uint8_t* out) {
    const CodeTest<T> test(set);
    alignas(64) T room[codec::runLength];
    eachRun(lanes, [&](std::size_t begin, std::size_t end, std::size_t run) {
        if (const Decision decision = decisionOf(decideRun(set, block.bounds(run)));
            decision != Decision::Look) {
            std::fill(out + begin, out + end, decision == Decision::All);
        } else if (!lanes.list) {
            testCodes(test, block.run(run, room), end - begin, out + begin);
        } else if (end - begin < 16) {
            for (std::size_t i = begin; i < end; ++i)
                out[i] = test(block.code<T>(lanes.begin + lanes.list[i]));
        } else {
            const T* const codes = block.run(run, room);
            for (std::size_t i = begin; i < end; ++i)
                out[i] = test(codes[(lanes.begin + lanes.list[i]) % codec::runLength]);
        }
    });
}

class Evaluator {
public:
    Evaluator(const std::vector<Slot>& slots, const BlockSource& source, std::size_t count,
              const Decided& decided, Scratch& scratch)
        : m_slots(slots),
          m_source(source),
          m_count(count),
          m_decided(decided),
          m_scratch(scratch) {}

    // Sets out of each lane to 1 where the condition holds, else 0.
    void condition(const Term& term, const Lanes& lanes, std::size_t depth, std::uint8_t* out) {
        if (const Decision known = decision(term); known != Decision::Look) {
            std::fill_n(out, lanes.count, known == Decision::All);
        } else if (const auto* codes = term.as<Codes>()) {
            const codec::Block& own = block(codes->slot);
            own.visit([&]<typename T>(T) { maskCodes<T>(own, lanes, codes->set, out); });
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
            invertMask(lanes.count, out);
        } else if (const auto* own = term.as<Junction>()) {
            junction(*own, lanes, depth, out);
        } else {
            throw Failure(ErrorCode::Internal, "A filter took a value for a condition.");
        }
    }

private:
    Decision decision(const Term& term) const {
        return m_decided.empty() ? Decision::Look : m_decided[term.number];
    }

    const codec::Block& block(std::size_t slot) {
        const codec::Block*& known = m_scratch.blocks[slot];
        if (!known) {
            const codec::Block& given = m_source(slot);
            if (given.size() < m_count)
                throw Failure(ErrorCode::Internal, "A filter got a block of " +
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
        // What all points pass says nothing in a conjunction, nor what none passes in a
        // disjunction.
        const Decision neutral = conjunction ? Decision::All : Decision::None;
        std::size_t next = 0;
        while (next + 1 < term.operands.size() && decision(*term.operands[next]) == neutral)
            ++next;
        condition(*term.operands[next], lanes, depth + 1, out);
        for (++next; next < term.operands.size(); ++next) {
            if (decision(*term.operands[next]) == neutral)
                continue;
            const std::size_t set = countSet(out, lanes.count);
            const std::size_t open = conjunction ? set : lanes.count - set;
            if (open == 0)
                return;
            if (open * 8 < lanes.count)
                break;
            condition(*term.operands[next], lanes, depth + 1, frame.mask.data());
            joinMasks(conjunction, frame.mask.data(), lanes.count, out);
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
            if (decision(*term.operands[next]) == neutral)
                continue;
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
            compareLoop<operation>(a, b, lanes.count, out);
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
        const std::size_t count = lanes.count;
        for (std::size_t i = 0; i < count; ++i)
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
        const codec::Block& own = block(slot);
        own.visit([&]<typename Code>(Code) {
            alignas(64) Code room[codec::runLength];
            eachRun(lanes, [&](std::size_t begin, std::size_t end, std::size_t run) {
                const Code* const all = own.run(run, room);
                for (std::size_t i = begin; i < end; ++i)
                    codes[i] = all[lanes.list ? (lanes.begin + lanes.list[i]) % codec::runLength
                                              : i - begin];
            });
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
    const BlockSource& m_source;
    std::size_t m_count;
    const Decided& m_decided;
    Scratch& m_scratch;
};

// Appends begin + i for each i with mask[i] set; writes one behind them.
void appendSet(const std::uint8_t* mask, std::size_t count, std::size_t begin, std::uint32_t* out) {
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
}

}  // namespace

std::size_t selectPoints(const Program& program, std::size_t count, const BlockSource& blocks,
                         const Decided& decided, Selection* selection) {
    if (count > UINT32_MAX)
        throw Failure(ErrorCode::Internal, "A batch of " + std::to_string(count) +
                                               " points is too large to be filtered.");
    static Spares<Scratch> scratches;
    const Spares<Scratch>::Loan scratch(scratches);
    while (scratch->frames.size() < program.height + 1)
        scratch->frames.push_back(std::unique_ptr<Frame>(new Frame));
    scratch->blocks.assign(program.slots.size(), nullptr);
    std::size_t kept = 0;
    Evaluator evaluator(program.slots, blocks, count, decided, *scratch);
    std::uint8_t* const mask = scratch->mask.data();
    for (std::size_t begin = 0; begin < count; begin += blockSize) {
        const std::size_t length = std::min(blockSize, count - begin);
        evaluator.condition(*program.root, {begin, length, nullptr}, 0, mask);
        const std::size_t own = countSet(mask, length);
        if (selection && own > 0) {
            // Behind the last one, a place that is written and not counted.
            selection->resize(kept + own + 1);
            appendSet(mask, length, begin, selection->data() + kept);
            selection->resize(kept + own);
        }
        kept += own;
    }
    return kept;
}

}  // namespace tarvo::engine::filter
