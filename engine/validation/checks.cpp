#include "engine/validation/checks.h"

#include "engine/base/error.h"
#include "engine/validation/describe.h"
#include "engine/validation/pattern.h"
#include "engine/validation/schemalibrary.h"
#include "numbers/numbertext.h"

#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <set>
#include <utility>
#include <vector>

namespace tarvo::engine::validation {

namespace {

using Context = std::vector<std::string>;
using Results = valijson::ValidationResults;

// Whether the value passes; tells what is wrong where there are results.
using CheckFunction = std::function<bool(const Adapter&, const Context&, Results*)>;

class Check : public valijson::constraints::PolyConstraint {
public:
    explicit Check(CheckFunction function) : m_function(std::move(function)) {}

    bool validate(const Adapter& target, const Context& context, Results* results) const override {
        return m_function(target, context, results);
    }

private:
    valijson::constraints::Constraint* cloneInto(void* place) const override {
        return new (place) Check(m_function);
    }
    std::size_t sizeOf() const override { return sizeof(Check); }

    CheckFunction m_function;
};

// Makes the check from the value of its keyword.
class Builder : public valijson::ConstraintBuilder {
public:
    using Make = std::function<CheckFunction(const Adapter&)>;
    explicit Builder(Make make) : m_make(std::move(make)) {}

    valijson::constraints::Constraint* make(const Adapter& keyword) const override {
        return new Check(m_make(keyword));
    }

private:
    Make m_make;
};

std::string expectedType(const std::string& name) {
    if (name == "boolean")
        return "true or false";
    if (name == "integer")
        return "a whole number";
    if (name == "null")
        return "null";
    return (name == "object" || name == "array" ? "an " : "a ") + name;
}

bool hasType(const Adapter& value, const std::string& name) {
    return name == "null"      ? value.isNull()
           : name == "boolean" ? value.isBool()
           : name == "object"  ? value.isObject()
           : name == "array"   ? value.isArray()
           : name == "string"  ? value.isString()
           : name == "number"  ? value.isNumber()
                               : isWholeNumber(value);
}

std::vector<std::string> textsOf(const Adapter& list) {
    std::vector<std::string> result;
    list.applyToArray([&](const Adapter& text) {
        result.push_back(text.getString());
        return true;
    });
    return result;
}

std::string joined(const std::vector<std::string>& texts, const char* last) {
    std::string result;
    for (std::size_t i = 0; i < texts.size(); ++i)
        result += (i == 0 ? "" : i + 1 < texts.size() ? ", " : last) + texts[i];
    return result;
}

Context below(Context context, const std::string& name) {
    context.push_back("[" + name + "]");
    return context;
}

bool say(Results* results, const Context& context, const std::string& text) {
    if (results)
        results->pushError(context, text);
    return false;
}

// Makes a check of values of one kind against a number.
template <typename Applies, typename Passes>
Builder::Make limitCheck(Applies applies, Passes passes, const char* expected, const char* what) {
    return [=](const Adapter& keyword) -> CheckFunction {
        const double limit = numberOf(keyword);
        return [=](const Adapter& value, const Context& context, Results* results) {
            if (!applies(value))
                return true;
            const auto [pass, found] = passes(value, limit);
            return pass || say(results, context,
                               "expected " + std::string(expected) + " " +
                                   numbers::numberText(limit) + what + ", found " + found);
        };
    };
}

template <typename Compare>
Builder::Make numberLimit(Compare compare, const char* expected) {
    return limitCheck([](const Adapter& value) { return value.isNumber(); },
                      [compare](const Adapter& value, double limit) {
                          return std::pair(compare(numberOf(value), limit), describe(value));
                      },
                      expected, "");
}

std::size_t characters(const std::string& text) {
    std::size_t count = 0;
    for (const char c : text)
        count += (c & 0xc0) != 0x80;
    return count;
}

template <typename Compare>
Builder::Make lengthLimit(Compare compare, const char* expected) {
    return limitCheck([](const Adapter& value) { return value.isString(); },
                      [compare](const Adapter& value, double limit) {
                          const std::size_t count = characters(value.getString());
                          return std::pair(compare(static_cast<double>(count), limit),
                                           std::to_string(count));
                      },
                      expected, " characters");
}

template <typename Compare>
Builder::Make elementLimit(Compare compare, const char* expected) {
    return limitCheck([](const Adapter& value) { return value.isArray(); },
                      [compare](const Adapter& value, double limit) {
                          const std::size_t count = value.getArraySize();
                          return std::pair(compare(static_cast<double>(count), limit),
                                           std::to_string(count));
                      },
                      expected, " elements");
}

template <typename Compare>
Builder::Make memberLimit(Compare compare, const char* expected) {
    return limitCheck([](const Adapter& value) { return value.isObject(); },
                      [compare](const Adapter& value, double limit) {
                          const std::size_t count = value.getObjectSize();
                          return std::pair(compare(static_cast<double>(count), limit),
                                           std::to_string(count));
                      },
                      expected, " members");
}

CheckFunction typeCheck(const Adapter& keyword) {
    const std::vector<std::string> names = textsOf(keyword);
    std::vector<std::string> expected;
    for (const std::string& name : names)
        expected.push_back(expectedType(name));
    const std::string text = "expected " + joined(expected, " or ") + ", found ";
    return [=](const Adapter& value, const Context& context, Results* results) {
        for (const std::string& name : names)
            if (hasType(value, name))
                return true;
        // A number that isn't whole needs to be seen.
        return say(results, context, text + (value.isNumber() ? describe(value) : typeName(value)));
    };
}

CheckFunction requiredCheck(const Adapter& keyword) {
    const std::vector<std::string> names = textsOf(keyword);
    return [=](const Adapter& value, const Context& context, Results* results) {
        if (!value.isObject())
            return true;
        std::set<std::string> present;
        value.applyToObject([&](const std::string& name, const Adapter&) {
            present.insert(name);
            return true;
        });
        bool pass = true;
        for (const std::string& name : names)
            if (!present.count(name))
                pass = say(results, context, "the member " + quotedText(name) + " is missing");
        return pass;
    };
}

CheckFunction multipleCheck(const Adapter& keyword) {
    const std::int64_t whole = keyword.isInteger() ? keyword.getInteger() : 0;
    const double divisor = numberOf(keyword);
    return [=](const Adapter& value, const Context& context, Results* results) {
        if (!value.isNumber())
            return true;
        bool pass;
        if (whole != 0 && value.isInteger()) {
            pass = value.getInteger() % whole == 0;
        } else {
            // Decimal fractions are not exact: 0.3 is a multiple of 0.1.
            const double quotient = numberOf(value) / divisor;
            pass = std::abs(quotient - std::round(quotient)) <=
                   1e-9 * std::max(1.0, std::abs(quotient));
        }
        return pass || say(results, context,
                           "expected a multiple of " + numbers::numberText(divisor) + ", found " +
                               describe(value));
    };
}

CheckFunction forbiddenCheck(const Adapter&) {
    return [](const Adapter&, const Context& context, Results* results) {
        return say(results, context, "is not allowed here");
    };
}

// Stands in every flattened schema, so that nothing is checked without being counted.
CheckFunction visitCheck(Effort& effort) {
    return [&effort](const Adapter&, const Context&, Results* results) {
        effort.add(500);
        if (results && results == effort.results && results->numErrors() >= Effort::maximumFindings)
            throw EnoughFindings();
        return true;
    };
}

CheckFunction choiceCheck(Effort& effort, const std::vector<std::string>& choices,
                          const std::string& expected) {
    const std::set<std::string> allowed(choices.begin(), choices.end());
    return [=, &effort](const Adapter& value, const Context& context, Results* results) {
        const std::string text = canonicalText(value);
        effort.add(text.size() * 10);
        return allowed.count(text) > 0 ||
               say(results, context, expected + ", found " + describe(value));
    };
}

CheckFunction enumCheck(Effort& effort, const Adapter& keyword) {
    constexpr std::size_t shown = 12;
    std::vector<std::string> choices;
    std::vector<std::string> texts;
    keyword.applyToArray([&](const Adapter& choice) {
        choices.push_back(canonicalText(choice));
        if (texts.size() < shown)
            texts.push_back(shortened(choices.back()));
        return true;
    });
    std::string expected = "expected " + joined(texts, " or ");
    if (choices.size() > shown)
        expected += " or one of " + std::to_string(choices.size() - shown) + " more";
    return choiceCheck(effort, choices, expected);
}

CheckFunction constCheck(Effort& effort, const Adapter& keyword) {
    const std::string text = canonicalText(keyword);
    return choiceCheck(effort, {text}, "expected " + shortened(text));
}

CheckFunction uniqueCheck(Effort& effort) {
    return [&effort](const Adapter& value, const Context& context, Results* results) {
        if (!value.isArray())
            return true;
        bool pass = true;
        std::size_t index = 0;
        std::map<std::string, std::size_t> seen;
        value.applyToArray([&](const Adapter& element) {
            const std::string text = canonicalText(element);
            effort.add(text.size() * 10 + 200);
            const auto [first, isNew] = seen.emplace(text, index);
            if (!isNew)
                pass = say(results, below(context, std::to_string(index)),
                           "is the same as element " + std::to_string(first->second));
            ++index;
            return pass || results;
        });
        return pass;
    };
}

// Whether the expression matches; throws Failure(Argument) for a text that is too long for it.
bool matches(Effort& effort, const Pattern& pattern, const std::string& text) {
    if (text.size() > Pattern::maximumText)
        throw Failure(ErrorCode::Argument,
                      "A text of " + std::to_string(text.size()) +
                          " bytes is too long to be compared with a regular expression.",
                      "At most " + std::to_string(Pattern::maximumText) + " bytes can be.");
    effort.add(text.size() * pattern.size() * 20);
    return pattern.search(text);
}

CheckFunction patternCheck(Effort& effort, const Adapter& keyword) {
    const std::string expression = keyword.getString();
    const Pattern pattern(expression);
    return [=, &effort](const Adapter& value, const Context& context, Results* results) {
        if (!value.isString() || matches(effort, pattern, value.getString()))
            return true;
        return say(
            results, context,
            "expected a text that matches " + shortened(expression) + ", found " + describe(value));
    };
}

using SharedSchema = std::shared_ptr<const valijson::Schema>;

SharedSchema parseSchema(Effort& effort, const RapidJsonAdapter& keyword) {
    auto schema = std::make_shared<valijson::Schema>();
    valijson::SchemaParser parser;
    addChecks(parser, effort);
    parser.populateSchema(keyword, *schema);
    return schema;
}

// What keywords and values of documents are; the library hands them out by their base class.
const RapidJsonAdapter& documentPart(const Adapter& value) {
    return dynamic_cast<const RapidJsonAdapter&>(value);
}

// Checks a value, or the name of a member, against a schema of its own.
bool checkPart(Effort& effort, const valijson::Schema& schema, const Adapter& value,
               const Context& context, Results* results) {
    valijson::Validator validator;
    Results faults;
    Results* const kept = results ? &faults : nullptr;
    const auto tell = [&] {
        for (const Results::Error& fault : faults) {
            Context place = context;
            place.insert(place.end(), fault.context.begin() + 1, fault.context.end());
            say(results, place, fault.description);
        }
    };
    const Results* const counted = effort.results;
    if (results && results == counted)
        effort.results = kept;
    bool pass = false;
    try {
        const auto* text = dynamic_cast<const valijson::adapters::StdStringAdapter*>(&value);
        pass = text ? validator.validate(schema, *text, kept)
                    : validator.validate(schema, documentPart(value), kept);
    } catch (const EnoughFindings&) {
        effort.results = counted;
        tell();
        throw;
    }
    effort.results = counted;
    tell();
    return pass;
}

CheckFunction allCheck(Effort& effort, const Adapter& keyword) {
    std::vector<SharedSchema> schemas;
    keyword.applyToArray([&](const Adapter& schema) {
        schemas.push_back(parseSchema(effort, documentPart(schema)));
        return true;
    });
    return [schemas, &effort](const Adapter& value, const Context& context, Results* results) {
        bool pass = true;
        for (const SharedSchema& schema : schemas) {
            pass = checkPart(effort, *schema, value, context, results) && pass;
            if (!pass && !results)
                break;
        }
        return pass;
    };
}

CheckFunction namesCheck(Effort& effort, const Adapter& keyword) {
    const SharedSchema schema = parseSchema(effort, documentPart(keyword));
    return [schema, &effort](const Adapter& value, const Context& context, Results* results) {
        if (!value.isObject())
            return true;
        bool pass = true;
        value.applyToObject([&](const std::string& name, const Adapter&) {
            Results faults;
            const valijson::adapters::StdStringAdapter text(name);
            if (checkPart(effort, *schema, text, {}, &faults))
                return true;
            pass = say(results, below(context, name),
                       "the name of the member is not allowed" +
                           (faults.numErrors() ? ": " + faults.begin()->description : ""));
            return results != nullptr;
        });
        return pass;
    };
}

// Schemas of members by regular expressions for their names.
struct MemberRules {
    std::set<std::string> known;  // have a schema by their name
    std::vector<std::pair<Pattern, SharedSchema>> patterns;
    SharedSchema additional;
};

CheckFunction membersCheck(Effort& effort, const Adapter& keyword) {
    const auto rules = std::make_shared<MemberRules>();
    keyword.applyToObject([&](const std::string& part, const Adapter& content) {
        if (part == "known")
            for (const std::string& name : textsOf(content))
                rules->known.insert(name);
        else if (part == "additional")
            rules->additional = parseSchema(effort, documentPart(content));
        else
            content.applyToObject([&](const std::string& expression, const Adapter& schema) {
                rules->patterns.emplace_back(Pattern(expression),
                                             parseSchema(effort, documentPart(schema)));
                return true;
            });
        return true;
    });
    return [rules, &effort](const Adapter& value, const Context& context, Results* results) {
        if (!value.isObject())
            return true;
        bool pass = true;
        value.applyToObject([&](const std::string& name, const Adapter& member) {
            const Context place = below(context, name);
            bool matched = rules->known.count(name) > 0;
            for (const auto& [pattern, schema] : rules->patterns) {
                if (!matches(effort, pattern, name))
                    continue;
                matched = true;
                pass = checkPart(effort, *schema, member, place, results) && pass;
            }
            if (!matched && rules->additional)
                pass = checkPart(effort, *rules->additional, member, place, results) && pass;
            return pass || results;
        });
        return pass;
    };
}

// The function with the effort as its first argument.
template <typename Function>
Builder::Make with(Effort& effort, Function function) {
    return [&effort, function](const Adapter& keyword) { return function(effort, keyword); };
}

}  // namespace

void Effort::add(std::uint64_t more) {
    steps += more;
    if (steps > maximumSteps)
        throw Failure(ErrorCode::Argument, "Checking the value against its schema takes too long.",
                      "Make the schema simpler or the value smaller.");
}

void addChecks(valijson::SchemaParser& parser, Effort& effort) {
    const auto add = [&](const char* keyword, Builder::Make make) {
        parser.addConstraintBuilder(keyword, new Builder(std::move(make)));
    };
    add("=visit", [&effort](const Adapter&) { return visitCheck(effort); });
    add("=forbidden", forbiddenCheck);
    add("=type", typeCheck);
    add("=enum", with(effort, enumCheck));
    add("=const", with(effort, constCheck));
    add("=pattern", with(effort, patternCheck));
    add("=minimum", numberLimit(std::greater_equal<>(), "at least"));
    add("=maximum", numberLimit(std::less_equal<>(), "at most"));
    add("=exclusiveMinimum", numberLimit(std::greater<>(), "more than"));
    add("=exclusiveMaximum", numberLimit(std::less<>(), "less than"));
    add("=multipleOf", multipleCheck);
    add("=minLength", lengthLimit(std::greater_equal<>(), "at least"));
    add("=maxLength", lengthLimit(std::less_equal<>(), "at most"));
    add("=minItems", elementLimit(std::greater_equal<>(), "at least"));
    add("=maxItems", elementLimit(std::less_equal<>(), "at most"));
    add("=minProperties", memberLimit(std::greater_equal<>(), "at least"));
    add("=maxProperties", memberLimit(std::less_equal<>(), "at most"));
    add("=uniqueItems", [&effort](const Adapter&) { return uniqueCheck(effort); });
    add("=required", requiredCheck);
    add("=allOf", with(effort, allCheck));
    add("=propertyNames", with(effort, namesCheck));
    add("=members", with(effort, membersCheck));
}

}  // namespace tarvo::engine::validation
