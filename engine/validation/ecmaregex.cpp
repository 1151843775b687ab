#include "engine/validation/ecmaregex.h"

#include "engine/base/utf8.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace tarvo::engine::validation {

namespace {

using Code = std::uint32_t;

constexpr Code none = UINT32_MAX;  // behind the end
constexpr Code highest = 0x10ffff;
constexpr std::size_t maximumRepeats = 4000;
// What RE2 takes, in repetitions within repetitions too.
constexpr std::size_t repeatsAtOnce = 1000;

constexpr std::pair<Code, Code> blanks[] = {
    {9, 13},          {' ', ' '},       {0xa0, 0xa0},     {0x1680, 0x1680}, {0x2000, 0x200a},
    {0x2028, 0x2029}, {0x202f, 0x202f}, {0x205f, 0x205f}, {0x3000, 0x3000}, {0xfeff, 0xfeff}};

// The names that RE2 knows by their short form only.
constexpr std::pair<std::string_view, std::string_view> longNames[] = {{"Letter", "L"},
                                                                       {"Uppercase_Letter", "Lu"},
                                                                       {"Lowercase_Letter", "Ll"},
                                                                       {"Mark", "M"},
                                                                       {"Number", "N"},
                                                                       {"Decimal_Number", "Nd"},
                                                                       {"Punctuation", "P"},
                                                                       {"Symbol", "S"},
                                                                       {"Separator", "Z"},
                                                                       {"Space_Separator", "Zs"},
                                                                       {"Other", "C"}};

bool isDigit(Code c) {
    return c >= '0' && c <= '9';
}

bool isLetter(Code c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

int hexDigit(Code c) {
    return isDigit(c)               ? static_cast<int>(c - '0')
           : (c >= 'a' && c <= 'f') ? static_cast<int>(c - 'a' + 10)
           : (c >= 'A' && c <= 'F') ? static_cast<int>(c - 'A' + 10)
                                    : -1;
}

std::string spelt(Code code) {
    if (isLetter(code) || isDigit(code))
        return {static_cast<char>(code)};
    std::string digits;
    for (Code rest = code; rest != 0 || digits.empty(); rest >>= 4)
        digits.insert(digits.begin(), "0123456789abcdef"[rest & 15]);
    return "\\x{" + digits + "}";
}

std::string spelt(Code first, Code last) {
    return first == last ? spelt(first) : spelt(first) + "-" + spelt(last);
}

std::vector<Code> codesOf(std::string_view text) {
    std::vector<Code> codes;
    forEachCharacter(text, [&](std::string_view character) {
        const auto lead = static_cast<unsigned char>(character[0]);
        Code code = character.size() == 1 ? lead : lead & (0x7fu >> character.size());
        for (const char c : character.substr(1))
            code = code << 6 | (static_cast<unsigned char>(c) & 0x3fu);
        codes.push_back(code);
    });
    return codes;
}

[[noreturn]] void misunderstood(const std::string& reason) {
    throw RegexFault("can't be understood: " + reason + ".");
}

class Translator {
public:
    // anyRegex: takes what can't be searched, too.
    Translator(std::string_view expression, bool anyRegex)
        : m_codes(codesOf(expression)), m_anyRegex(anyRegex) {}

    std::string run() {
        m_groups.emplace_back();
        while (m_at < m_codes.size())
            part();
        if (m_groups.size() > 1)
            misunderstood("a group is not closed");
        return m_groups.back().text;
    }

private:
    struct Group {
        std::string text;
        std::size_t last = std::string::npos;  // where begins what can be repeated
        std::size_t lastRepeats = 1;           // how often that repeats what is in it
        std::size_t repeats = 1;
    };

    Code next(std::size_t ahead = 0) const {
        return m_at + ahead < m_codes.size() ? m_codes[m_at + ahead] : none;
    }

    bool eat(std::string_view text) {
        for (std::size_t i = 0; i < text.size(); ++i)
            if (next(i) != static_cast<unsigned char>(text[i]))
                return false;
        m_at += text.size();
        return true;
    }

    void atom(const std::string& text, std::size_t repeats = 1) {
        Group& group = m_groups.back();
        group.last = group.text.size();
        group.lastRepeats = repeats;
        group.text += text;
    }

    // What stands for a place and can't be repeated.
    void mark(const char* text) {
        m_groups.back().text += text;
        m_groups.back().last = std::string::npos;
    }

    void unsearchable(const char* reason) {
        if (!m_anyRegex)
            throw RegexFault(reason);
    }

    void part() {
        const Code c = m_codes[m_at++];
        switch (c) {
            case '^':
                return mark("\\A");
            case '$':
                return mark("\\z");
            case '|':
                return mark("|");
            case '.':
                return atom("[^\\n\\r\\x{2028}\\x{2029}]");
            case '[':
                return characterClass();
            case '(':
                return open();
            case ')':
                return close();
            case '\\':
                return escape();
            case '*':
                return repeat(0, std::nullopt);
            case '+':
                return repeat(1, std::nullopt);
            case '?':
                return repeat(0, 1);
            case '{':
                return counted();
            default:
                return atom(spelt(c));
        }
    }

    void open() {
        if (eat("?=") || eat("?!"))
            unsearchable("looks ahead, which is not supported.");
        else if (eat("?<=") || eat("?<!"))
            unsearchable("looks behind, which is not supported.");
        else if (eat("?<"))
            name();
        else if (!eat("?:") && next() == '?')
            misunderstood("\"(?\" must be followed by \":\", \"=\", \"!\" or \"<\"");
        m_groups.emplace_back();
    }

    void close() {
        if (m_groups.size() == 1)
            misunderstood("\")\" closes no group");
        const Group group = std::move(m_groups.back());
        m_groups.pop_back();
        atom("(?:" + group.text + ")", group.repeats);
        m_groups.back().repeats = std::max(m_groups.back().repeats, group.repeats);
    }

    // Of a group, up to ">".
    void name() {
        const std::size_t begin = m_at;
        while (next() != none && next() != '>')
            ++m_at;
        if (m_at == begin || !eat(">"))
            misunderstood("a group has no name");
    }

    void counted() {
        const auto number = [&] {
            std::optional<std::size_t> value;
            for (; isDigit(next()); ++m_at)
                value = std::min<std::size_t>(value.value_or(0) * 10 + (next() - '0'), 1u << 30);
            return value;
        };
        const std::optional<std::size_t> least = number();
        std::optional<std::size_t> most = least;
        if (least && eat(","))
            most = number();
        if (!least || !eat("}"))
            misunderstood("\"{\" begins no number of repetitions");
        if (most && *most < *least)
            misunderstood("the limits of a repetition are the wrong way round");
        repeat(*least, most);
    }

    void repeat(std::size_t least, std::optional<std::size_t> most) {
        Group& group = m_groups.back();
        if (group.last == std::string::npos)
            misunderstood("there is nothing to repeat");
        eat("?");
        const std::size_t largest = std::max<std::size_t>(most.value_or(least), 1);
        const std::string unit = group.text.substr(group.last);
        const std::size_t within = group.lastRepeats;
        group.text.resize(group.last);
        group.last = std::string::npos;
        if (largest * within > maximumRepeats) {
            unsearchable("repeats too much.");
            return;
        }
        group.repeats = std::max(group.repeats, largest * within);
        if (largest == 1) {
            if (!most)
                group.text += unit + (least == 0 ? "*" : "+");
            else if (*most == 1)
                group.text += unit + (least == 0 ? "?" : "");
            return;
        }
        const auto times = [&](std::size_t from, const std::string& to) {
            group.text += unit + "{" + std::to_string(from) + "," + to + "}";
        };
        if (largest * within <= repeatsAtOnce)
            return times(least, most ? std::to_string(*most) : "");
        const std::size_t step = std::max<std::size_t>(repeatsAtOnce / within, 1);
        std::size_t done = 0;
        for (std::size_t count; done < least; done += count) {
            count = std::min(step, least - done);
            times(count, std::to_string(count));
        }
        if (!most)
            group.text += unit + "*";
        for (std::size_t count; most && done < *most; done += count) {
            count = std::min(step, *most - done);
            times(0, std::to_string(count));
        }
    }

    // Behind "\u", "\x", "\c": the character; none where it is no such escape.
    Code coded(Code kind) {
        if (kind == 'c') {
            if (!isLetter(next()))
                misunderstood("\"\\c\" must be followed by a letter");
            return m_codes[m_at++] & 31;
        }
        if (kind == 'u' && eat("{")) {
            Code code = 0;
            const std::size_t begin = m_at;
            for (; hexDigit(next()) >= 0 && code <= highest; ++m_at)
                code = code << 4 | static_cast<Code>(hexDigit(next()));
            if (m_at == begin || code > highest || !eat("}"))
                misunderstood("\"\\u{\" must be followed by the number of a character and \"}\"");
            return code;
        }
        const Code code = hexNumber(kind == 'u' ? 4 : 2);
        if (code == none)
            misunderstood(kind == 'u' ? "\"\\u\" must be followed by four hexadecimal digits"
                                      : "\"\\x\" must be followed by two hexadecimal digits");
        // Two halves are one character.
        const std::size_t behind = m_at;
        if (kind == 'u' && code >= 0xd800 && code < 0xdc00 && eat("\\u")) {
            const Code low = hexNumber(4);
            if (low != none && low >= 0xdc00 && low < 0xe000)
                return 0x10000 + ((code & 0x3ff) << 10) + (low & 0x3ff);
            m_at = behind;
        }
        return code;
    }

    Code hexNumber(std::size_t digits) {
        Code code = 0;
        for (std::size_t i = 0; i < digits; ++i) {
            if (hexDigit(next(i)) < 0)
                return none;
            code = code << 4 | static_cast<Code>(hexDigit(next(i)));
        }
        m_at += digits;
        return code;
    }

    // The character of an escape that stands for one, behind the backslash.
    Code escapedCharacter() {
        const Code c = next();
        if (c == none)
            misunderstood("nothing follows the last \"\\\"");
        ++m_at;
        switch (c) {
            case 't':
                return 9;
            case 'n':
                return 10;
            case 'v':
                return 11;
            case 'f':
                return 12;
            case 'r':
                return 13;
            case '0':
                if (!isDigit(next()))
                    return 0;
                break;
            case 'c':
            case 'u':
            case 'x':
                return coded(c);
            default:
                if (!isLetter(c) && !isDigit(c))
                    return c;
        }
        misunderstood("\"\\" + std::string(1, static_cast<char>(c)) + "\" has no meaning");
    }

    // A set of characters by an escape, for within brackets; empty where it is none.
    std::string escapedSet() {
        const Code c = next();
        if (c == 'd' || c == 'D' || c == 'w' || c == 'W') {
            ++m_at;
            return std::string("\\") + static_cast<char>(c);
        }
        if (c == 's' || c == 'S') {
            ++m_at;
            std::string set;
            Code begin = 0;
            for (const auto& [first, last] : blanks) {
                set += c == 's' ? spelt(first, last) : spelt(begin, first - 1);
                begin = last + 1;
            }
            return c == 's' ? set : set + spelt(begin, highest);
        }
        if ((c == 'p' || c == 'P') && next(1) == '{') {
            m_at += 2;
            std::string property;
            for (; isLetter(next()) || isDigit(next()) || next() == '_' || next() == '='; ++m_at)
                property += static_cast<char>(next());
            if (!eat("}"))
                misunderstood("a property of characters has no \"}\"");
            property.erase(0, property.find('=') + 1);
            for (const auto& [longName, shortName] : longNames)
                if (property == longName)
                    property = shortName;
            return std::string("\\") + static_cast<char>(c) + "{" + property + "}";
        }
        return {};
    }

    void escape() {
        if (eat("b"))
            return mark("\\b");
        if (eat("B"))
            return mark("\\B");
        if (next() >= '1' && next() <= '9') {
            unsearchable("has a back reference, which is not supported.");
            while (isDigit(next()))
                ++m_at;
            return atom("(?:)");
        }
        if (eat("k<")) {
            unsearchable("has a back reference, which is not supported.");
            name();
            return atom("(?:)");
        }
        const std::string set = escapedSet();
        atom(set.empty() ? spelt(escapedCharacter()) : "[" + set + "]");
    }

    void characterClass() {
        const bool negated = eat("^");
        std::string content;
        while (!eat("]")) {
            if (next() == none)
                misunderstood("\"[\" is not closed");
            std::string set;
            const Code first = member(set);
            if (set.empty() && next() == '-' && next(1) != ']' && next(1) != none) {
                ++m_at;
                const Code last = member(set);
                if (!set.empty())
                    content += spelt(first) + spelt('-') + set;
                else if (last < first)
                    misunderstood("a range of characters ends before it begins");
                else
                    content += spelt(first, last);
            } else {
                content += set.empty() ? spelt(first) : set;
            }
        }
        if (content.empty())
            return atom(negated ? "[\\x{0}-\\x{10ffff}]" : "[^\\x{0}-\\x{10ffff}]");
        atom((negated ? "[^" : "[") + content + "]");
    }

    // A character within brackets, or a set of them.
    Code member(std::string& set) {
        const Code c = m_codes[m_at++];
        if (c != '\\')
            return c;
        if (eat("b"))
            return 8;
        set = escapedSet();
        return set.empty() ? escapedCharacter() : none;
    }

    const std::vector<Code> m_codes;
    const bool m_anyRegex;
    std::size_t m_at = 0;
    std::vector<Group> m_groups;
};

}  // namespace

std::string translatedRegex(std::string_view expression) {
    return Translator(expression, false).run();
}

bool isRegex(std::string_view expression) {
    try {
        (void)Translator(expression, true).run();
        return true;
    } catch (const RegexFault&) {
        return false;
    }
}

}  // namespace tarvo::engine::validation
