#include "cli/number.h"

#include <charconv>
#include <cmath>
#include <utility>

namespace tarvo::cli {

CLI::Validator wholeNumber(std::uint64_t least, std::uint64_t most) {
    return {[least, most](std::string& text) -> std::string {
                std::uint64_t number = 0;
                const char* const end = text.data() + text.size();
                const auto [next, error] = std::from_chars(text.data(), end, number);
                if (error != std::errc() || next != end || number < least || number > most) {
                    return "\"" + text + "\" is not a whole number from " + std::to_string(least) +
                           " to " + std::to_string(most) + ".";
                }
                text = std::to_string(number);  // without zeros before it
                return {};
            },
            ""};
}

CLI::Validator largeNumber(std::uint64_t least, std::uint64_t most) {
    return {[whole = wholeNumber(least, most)](std::string& text) -> std::string {
                constexpr double exactLimit = 9007199254740992.0;  // 2^53
                double number = 0;
                const char* const end = text.data() + text.size();
                const auto [next, error] =
                    std::from_chars(text.data(), end, number, std::chars_format::scientific);
                if (error == std::errc() && next == end && number >= 0 && number <= exactLimit &&
                    number == std::floor(number)) {
                    text = std::to_string(static_cast<std::uint64_t>(number));
                }
                return whole(text);
            },
            ""};
}

CLI::Validator positiveNumber(double least, double most) {
    return {[least, most](std::string& text) -> std::string {
                double number = 0;
                const char* const end = text.data() + text.size();
                const auto [next, error] = std::from_chars(text.data(), end, number);
                if (error != std::errc() || next != end || !(number >= least && number <= most)) {
                    return "\"" + text + "\" is not a positive number, or out of range.";
                }
                return {};
            },
            ""};
}

CLI::Validator notEmpty(std::string advice) {
    return {[advice = std::move(advice)](std::string& text) -> std::string {
                const bool isBlank = text.find_first_not_of(" \t\r\n\v\f") == std::string::npos;
                return isBlank ? "\"" + text + "\" names nothing. " + advice : "";
            },
            ""};
}

}  // namespace tarvo::cli
