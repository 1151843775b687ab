#include "engine/validation/pattern.h"

#include "engine/base/error.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <vector>

namespace tarvo::engine::validation {

namespace {

constexpr std::size_t maximumExpression = 1000;
constexpr std::size_t maximumStates = 4000;

[[noreturn]] void refusePattern(const std::string& expression, const std::string& reason) {
    throw Failure(ErrorCode::Argument,
                  "The regular expression \"" + expression.substr(0, 100) + "\" " + reason);
}

// The largest count of "{n}", "{n,}" or "{n,m}", which begins at `at`; moves behind it. 1 where the
// brace is none; the compiler of the expression complains then.
std::size_t readCount(std::string_view expression, std::size_t& at) {
    const std::size_t close = expression.find('}', at);
    if (close == std::string_view::npos)
        return 1;
    std::size_t largest = 1;
    const char* const end = expression.data() + close;
    for (const char* p = expression.data() + at + 1; p < end;) {
        std::size_t number = 0;
        const auto [next, error] = std::from_chars(p, end, number);
        if (error == std::errc::result_out_of_range)
            number = maximumStates + 1;
        largest = std::max(largest, number);
        p = next == p ? p + 1 : next;
    }
    at = close;
    return largest;
}

// The number of states that the expression unfolds into: counted repetitions are copies.
std::size_t unfoldedSize(const std::string& expression) {
    std::vector<std::size_t> groups{0};
    std::size_t last = 0;  // of the atom before
    const auto add = [&](std::size_t size) {
        last = size;
        groups.back() = std::min<std::size_t>(groups.back() + size, SIZE_MAX / 4);
    };
    for (std::size_t i = 0; i < expression.size(); ++i) {
        switch (expression[i]) {
            case '\\':
                ++i;
                add(1);
                break;
            case '[':
                while (i + 1 < expression.size() && expression[i + 1] != ']')
                    i += expression[i + 1] == '\\' ? 2 : 1;
                ++i;
                add(1);
                break;
            case '(':
                if (expression.compare(i, 3, "(?=") == 0 || expression.compare(i, 3, "(?!") == 0)
                    refusePattern(expression, "looks ahead, which is not supported.");
                groups.push_back(1);
                break;
            case ')':
                if (groups.size() > 1) {
                    const std::size_t size = groups.back();
                    groups.pop_back();
                    add(size);
                }
                break;
            case '{': {
                const std::size_t count = readCount(expression, i);
                const std::size_t before = last;
                if (count > maximumStates || before * count > maximumStates)
                    refusePattern(expression, "repeats too much.");
                add(before * (count - 1));
                last = before * count;
                break;
            }
            default:
                add(1);
        }
    }
    std::size_t sum = 0;
    for (const std::size_t size : groups)
        sum += size;
    return sum;
}

// Bytes that are no UTF-8 become U+FFFD.
std::wstring wideText(std::string_view text) {
    std::wstring result;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i++]);
        const int more = lead < 0x80 ? 0 : lead < 0xc2 ? -1 : lead < 0xe0 ? 1 : lead < 0xf0 ? 2 : 3;
        std::uint32_t code = more <= 0 ? lead : lead & (0x3fu >> more);
        int left = more;
        for (; left > 0 && i < text.size() && (text[i] & 0xc0) == 0x80; --left)
            code = code << 6 | (static_cast<unsigned char>(text[i++]) & 0x3fu);
        if (left != 0 || lead > 0xf4)
            code = 0xfffd;
        if (sizeof(wchar_t) == 2 && code > 0xffff) {
            result += static_cast<wchar_t>(0xd800 + ((code - 0x10000) >> 10));
            code = 0xdc00 + ((code - 0x10000) & 0x3ff);
        }
        result += static_cast<wchar_t>(code);
    }
    return result;
}

std::wregex compile(const std::string& expression) {
    // The library's own extension: breadth-first search, which needs neither exponential time nor
    // stack for every character, as the usual one does.
    constexpr auto linear = std::wregex::ECMAScript | std::regex_constants::__polynomial;
    try {
        const std::wstring wide = wideText(expression);
        (void)std::wregex(wide, linear);
        // A match of the whole text in place of a search, which begins anew at every character.
        return std::wregex(L"[\\s\\S]*(?:" + wide + L")[\\s\\S]*", linear);
    } catch (const std::regex_error& error) {
        if (error.code() == std::regex_constants::error_complexity)
            refusePattern(expression, "has a back reference, which is not supported.");
        refusePattern(expression, std::string("can't be understood: ") + error.what());
    }
}

std::size_t checkedSize(const std::string& expression) {
    if (expression.size() > maximumExpression)
        refusePattern(expression,
                      "is longer than " + std::to_string(maximumExpression) + " bytes.");
    // A message would end at the byte.
    if (const std::size_t zero = expression.find('\0'); zero != std::string::npos)
        refusePattern(expression.substr(0, zero), "contains a zero byte.");
    const std::size_t size = unfoldedSize(expression);
    if (size > maximumStates)
        refusePattern(expression, "repeats too much.");
    return size + 1;
}

}  // namespace

// The size is declared behind the expression but must be checked before that is compiled.
Pattern::Pattern(const std::string& expression)
    : m_regex((checkedSize(expression), compile(expression))), m_size(checkedSize(expression)) {}

bool Pattern::search(const std::string& text) const {
    return std::regex_match(wideText(text), m_regex);
}

}  // namespace tarvo::engine::validation
