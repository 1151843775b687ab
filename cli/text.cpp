#include "cli/text.h"

#include "cli/errors.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace tarvo::cli {

using qrb::pointcloud::DataType;
using qrb::pointcloud::PointAttribute;

namespace {

constexpr std::size_t maximumNodes = 10'000'000;
constexpr const char* nodesForm = "The list of --nodes is written as \"1,3-5\".";

std::string_view trimBlanks(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    const std::size_t end = text.find_last_not_of(" \t");
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, end - begin + 1);
}

std::vector<std::string_view> splitNonEmpty(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const std::size_t end = text.find(separator);
        if (const auto part = text.substr(0, end); !part.empty()) {
            parts.push_back(part);
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return parts;
}

}  // namespace

int decimalsOf(double resolution) {
    char text[32];
    std::snprintf(text, sizeof text, "%.16f", std::abs(resolution - std::floor(resolution)));
    const std::string_view digits = std::string_view(text).substr(1);
    const std::size_t last = digits.find_last_not_of("0");
    return last == std::string_view::npos ? 0 : static_cast<int>(last);
}

ValueFormat::ValueFormat(const PointAttribute& attribute)
    : m_type(attribute.resolution != 1.0     ? DataType::DOUBLE
             : attribute.minimumValue >= 0.0 ? DataType::UINT64
                                             : DataType::INT64),
      m_unrounded(attribute.resolution == 0),
      m_decimals(decimalsOf(attribute.resolution)) {
    if (m_unrounded) {
        m_width = 24;
        return;
    }
    char text[400];
    for (const double value : {attribute.minimumValue, attribute.maximumValue,
                               attribute.defaultValue, attribute.invalidValue}) {
        const int written = std::snprintf(text, sizeof text, "%.*f", m_decimals, value);
        m_width = std::max(m_width, static_cast<std::size_t>(std::max(written, 0)));
    }
}

void ValueFormat::append(std::string& text, std::uint64_t bits) const {
    char buffer[400];
    std::to_chars_result result{};
    char* const end = buffer + sizeof buffer;
    if (m_type == DataType::UINT64) {
        result = std::to_chars(buffer, end, bits);
    } else if (m_type == DataType::INT64) {
        result = std::to_chars(buffer, end, static_cast<std::int64_t>(bits));
    } else {
        double value = std::bit_cast<double>(bits);
        if (std::isnan(value)) {
            text += "nan";
            return;
        }
        if (m_unrounded) {
            result = std::to_chars(buffer, end, value);
        } else {
            result = std::to_chars(buffer, end, value, std::chars_format::fixed, m_decimals);
            // What rounds to zero has no sign.
            const auto isZero = [](char c) { return c == '-' || c == '0' || c == '.'; };
            if (buffer[0] == '-' && std::all_of(buffer, result.ptr, isZero)) {
                text.append(buffer + 1, result.ptr);
                return;
            }
        }
    }
    text.append(buffer, result.ptr);
}

std::string ValueFormat::text(std::uint64_t bits) const {
    std::string text;
    append(text, bits);
    return text;
}

bool ValueFormat::isFinite(std::uint64_t bits) const {
    return m_type != DataType::DOUBLE || std::isfinite(std::bit_cast<double>(bits));
}

std::vector<std::uint32_t> parseNodes(std::string_view text) {
    std::vector<std::uint32_t> nodes;
    for (const std::string_view part : splitNonEmpty(trimBlanks(text), ',')) {
        std::vector<std::uint32_t> numbers;
        for (const std::string_view piece : splitNonEmpty(part, '-')) {
            const std::string_view digits = trimBlanks(piece);
            std::uint32_t number = 0;
            const auto parsed =
                std::from_chars(digits.data(), digits.data() + digits.size(), number);
            if (parsed.ec != std::errc() || parsed.ptr != digits.data() + digits.size()) {
                throw UsageError("Failed to parse: \"" + std::string(piece) + "\"", nodesForm);
            }
            numbers.push_back(number);
        }
        const auto hyphens = std::count(part.begin(), part.end(), '-');
        if (!(numbers.size() == 1 && hyphens == 0) && !(numbers.size() == 2 && hyphens == 1)) {
            throw UsageError("Invalid input: \"" + std::string(part) + "\"", nodesForm);
        }
        for (std::uint64_t id = numbers.front(); id <= numbers.back(); ++id) {
            if (nodes.size() >= maximumNodes) {
                throw UsageError("More than " + std::to_string(maximumNodes) +
                                 " nodes are listed.");
            }
            nodes.push_back(static_cast<std::uint32_t>(id));
        }
    }
    std::sort(nodes.begin(), nodes.end());
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
    return nodes;
}

std::vector<std::string> elementNames(const std::string& attribute, std::uint32_t length) {
    if (length == 1) {
        return {attribute};
    }
    std::vector<std::string> names;
    for (std::uint32_t i = 0; i < length; ++i) {
        names.push_back(attribute + "[" + std::to_string(i) + "]");
    }
    return names;
}

std::string printable(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        // U+0080 to U+009F, which some terminals obey too.
        const bool isSecondSet =
            c == 0xc2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xa0;
        if (c == '\t') {
            result += ' ';
        } else if ((c < 0x20 && c != '\n') || c == 0x7f || isSecondSet) {
            result += '?';
            i += isSecondSet ? 1 : 0;
        } else {
            result += text[i];
        }
    }
    return result;
}

}  // namespace tarvo::cli
