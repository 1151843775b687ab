#include "cli/assignment.h"

#include "cli/errors.h"
#include "core/valueformat.h"

#include <bit>
#include <charconv>
#include <string_view>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::DataType;

template <typename T>
std::uint64_t parseAs(const std::string& target, std::string_view text, const char* kind) {
    T value{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
        throw UsageError("--set " + target + ": \"" + std::string(text) + "\" is not " + kind +
                         ".");
    }
    return std::bit_cast<std::uint64_t>(value);
}

std::uint64_t parseValue(const std::string& target, std::string_view text, DataType type) {
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    switch (type) {
        case DataType::UINT64:
            return parseAs<std::uint64_t>(target, text, "a whole number of at least 0");
        case DataType::INT64:
            return parseAs<std::int64_t>(target, text, "a whole number");
        default:
            return parseAs<double>(target, text, "a number");
    }
}

}  // namespace

Assignment parseAssignment(const qrb::Pointcloud& cloud, const std::string& text) {
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
    assignment.type = core::ValueFormat(definition).type();
    std::string_view rest = std::string_view(text).substr(equals + 1);
    while (true) {
        const std::size_t comma = rest.find(',');
        assignment.values.push_back(
            parseValue(assignment.target, rest.substr(0, comma), assignment.type));
        if (comma == std::string_view::npos) {
            break;
        }
        rest.remove_prefix(comma + 1);
    }
    if (assignment.values.size() != count) {
        throw UsageError("\"" + text + "\" has " + std::to_string(assignment.values.size()) +
                             " values in place of " + std::to_string(count) + ".",
                         "\"NAME[I]=VALUE\" sets one element, \"NAME=VALUE,VALUE,...\" all.");
    }
    return assignment;
}

}  // namespace tarvo::cli
