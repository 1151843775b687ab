#include "cli/assignment.h"

#include "cli/errors.h"
#include "core/namedvalues.h"
#include "core/suggestion.h"
#include "core/valueformat.h"
#include "exchange/table/decimal.h"
#include "exchange/table/valuecheck.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <string_view>
#include <system_error>
#include <utility>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::DataType;
using qrb::pointcloud::PointAttribute;

[[noreturn]] void failOutside(const PointAttribute& definition, std::string_view text) {
    throw Failure("The value " + std::string(text) + " is out of the range of the attribute \"" +
                      definition.name + "\".",
                  "The range is " + exchange::rangeText(definition) + ".");
}

// The values of one assignment, which all get one type.
class Values {
public:
    Values(const PointAttribute& definition, std::string target, bool round)
        : m_definition(definition),
          m_target(std::move(target)),
          m_round(round),
          m_ownType(core::ValueFormat(definition).type()) {}

    void add(std::string_view text) {
        if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
            text.remove_prefix(1);
        }
        m_texts.emplace_back(text);
        // A name stands for its value.
        if (parseAs(text, DataType::DOUBLE).error == std::errc::invalid_argument) {
            const auto named =
                core::valuesNamed(m_texts.back(), core::readNamedValues(m_definition.namedValues));
            if (named.size() == 1) {
                m_texts.back() = named[0].value;
            }
        }
    }

    // DOUBLE where whole numbers are to be made of others.
    DataType type() const {
        const bool isWhole =
            std::all_of(m_texts.begin(), m_texts.end(), [this](const std::string& text) {
                return parseAs(text, m_ownType).error != std::errc::invalid_argument;
            });
        return isWhole || !m_round ? m_ownType : DataType::DOUBLE;
    }

    // In 8 bytes each.
    std::vector<std::uint64_t> values(DataType type) const {
        std::vector<std::uint64_t> values;
        for (const std::string_view text : m_texts) {
            values.push_back(value(text, type));
        }
        return values;
    }

private:
    struct Parsed {
        std::uint64_t bits = 0;
        std::errc error{};  // of from_chars; invalid_argument also for a text that goes on
    };

    template <typename T>
    static Parsed parse(std::string_view text) {
        T value{};
        const char* const end = text.data() + text.size();
        const auto [next, error] = std::from_chars(text.data(), end, value);
        return {std::bit_cast<std::uint64_t>(value),
                next == end ? error : std::errc::invalid_argument};
    }
    static Parsed parseAs(std::string_view text, DataType type) {
        return type == DataType::UINT64  ? parse<std::uint64_t>(text)
               : type == DataType::INT64 ? parse<std::int64_t>(text)
                                         : parse<double>(text);
    }

    std::uint64_t value(std::string_view text, DataType type) const {
        const Parsed parsed = parseAs(text, type);
        if (parsed.error == std::errc::invalid_argument) {
            failText(text, type);
        }
        if (parsed.error != std::errc() && type != DataType::DOUBLE) {
            failOutside(m_definition, text);
        }
        if (parsed.error != std::errc()) {
            throw UsageError("--set " + m_target + ": \"" + std::string(text) +
                             "\" is too large or too small for a number.");
        }
        exchange::ValueCheck check(m_definition, m_round);
        check.add(type, &parsed.bits, 1, {});
        const exchange::ValueFindings& findings = check.findings();
        if (findings.outside > 0) {
            failOutside(m_definition, text);
        }
        const bool isChanged = type == DataType::DOUBLE && exchange::changedAsDouble(text);
        if (isChanged && m_round && type != m_ownType) {
            throw Failure(
                "Beside a number with a fraction, " + std::string(text) + " would become another.",
                "Give the elements their values one by one: --set NAME[I]=VALUE.");
        }
        if (!m_round && (findings.between > 0 || isChanged)) {
            throw Failure("The attribute \"" + m_definition.name + "\" can't hold " +
                              std::string(text) + ": " + exchange::stepsText(m_definition),
                          exchange::adviceToRound(findings));
        }
        return parsed.bits;
    }

    [[noreturn]] void failText(std::string_view text, DataType type) const {
        const char* const kind = type == DataType::UINT64  ? "a whole number of at least 0"
                                 : type == DataType::INT64 ? "a whole number"
                                                           : "a number";
        const bool isFraction =
            type != DataType::DOUBLE && parse<double>(text).error == std::errc();
        std::vector<std::string> names;
        for (const core::NamedValue& value : core::readNamedValues(m_definition.namedValues)) {
            names.push_back(value.name);
        }
        throw UsageError("--set " + m_target + ": \"" + std::string(text) + "\" is not " + kind +
                             (names.empty() ? "." : ", nor the name of one value."),
                         isFraction ? "Give --round to store the nearest value."
                                    : core::didYouMean(core::nearest(text, names)));
    }

    const PointAttribute& m_definition;
    std::string m_target;
    bool m_round;
    DataType m_ownType;
    std::vector<std::string> m_texts;
};

}  // namespace

Assignment parseAssignment(const qrb::Pointcloud& cloud, const std::string& text, bool round) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw UsageError("\"" + text + "\" gives no attribute a value.",
                         "It is written NAME=VALUE, for example tarvo.class=2.");
    }
    Assignment assignment;
    assignment.target = text.substr(0, equals);
    const std::string name = assignment.target.substr(0, assignment.target.find('['));
    if (!cloud.pointAttributes().exists(name)) {
        throw Failure("There is no attribute \"" + name + "\" in the file.",
                      "\"qrbtool attributes FILE\" lists the attributes.");
    }
    const auto definition = cloud.pointAttributes().get(name);
    const std::size_t count = name == assignment.target ? definition.length : 1;
    Values values(definition, assignment.target, round);
    std::string_view rest = std::string_view(text).substr(equals + 1);
    while (true) {
        const std::size_t comma = rest.find(',');
        values.add(rest.substr(0, comma));
        if (comma == std::string_view::npos) {
            break;
        }
        rest.remove_prefix(comma + 1);
    }
    assignment.type = values.type();
    assignment.values = values.values(assignment.type);
    if (assignment.values.size() != count) {
        throw UsageError("\"" + text + "\" has " + std::to_string(assignment.values.size()) +
                             " values in place of " + std::to_string(count) + ".",
                         "\"NAME[I]=VALUE\" sets one element, \"NAME=VALUE,VALUE,...\" all.");
    }
    return assignment;
}

}  // namespace tarvo::cli
