#include "engine/filter/lexer.h"

#include "engine/base/error.h"
#include "engine/filter/interval.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace tarvo::engine::filter {

namespace {

// <cctype> depends on the locale.
bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isNameStart(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}
bool isNamePart(char c) {
    return isNameStart(c) || isDigit(c) || c == '.';
}
bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

// The whole number that digits and so many zeros behind them write; none where it is larger than
// the most.
std::optional<Wide> wholeOf(std::string_view digits, std::size_t zeros, Wide most) {
    Wide value = 0;
    for (std::size_t i = 0; i < digits.size() + zeros; ++i) {
        const int digit = i < digits.size() ? digits[i] - '0' : 0;
        if (value > (most - digit) / 10)
            return std::nullopt;
        value = 10 * value + digit;
    }
    return value;
}

// A decimal number as it is written, 0.digits * 10^exponent without zeros at its ends.
struct Decimal {
    explicit Decimal(std::string_view text) {
        const std::size_t end = std::min(text.find_first_of("eE"), text.size());
        const std::size_t point = std::min(text.find('.'), end);
        for (const char c : text.substr(0, end))
            if (isDigit(c))
                digits += c;
        const std::size_t front = std::min(digits.find_first_not_of('0'), digits.size());
        digits.erase(0, front);
        digits.erase(digits.find_last_not_of('0') + 1);
        std::string_view power = text.substr(std::min(end + 1, text.size()));
        if (power.starts_with('+'))
            power.remove_prefix(1);
        std::from_chars(power.data(), power.data() + power.size(), exponent);
        exponent += static_cast<std::int64_t>(point) - static_cast<std::int64_t>(front);
    }
    bool isWhole() const { return exponent >= static_cast<std::int64_t>(digits.size()); }

    std::string digits;
    std::int64_t exponent = 0;
};

}  // namespace

void failAt(std::string_view text, std::size_t offset, std::string message) {
    // What stands before it was read: it has no characters of several bytes.
    if (const auto at = message.find("%0"); at != std::string::npos)
        message.replace(at, 2, std::to_string(offset + 1));

    // Of a long text only what is around the position.
    constexpr std::size_t around = 60;
    const std::size_t first = offset > around ? offset - around : 0;
    std::size_t last = std::min(text.size(), offset + around);
    while (last < text.size() && isContinuation(text[last]))
        ++last;
    std::string line(text.substr(first, last - first));
    for (char& c : line)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
            c = ' ';
    const std::string cut = first > 0 ? "..." : "";
    const std::string caret(cut.size() + offset - first, ' ');
    throw Failure(ErrorCode::Filter, std::move(message),
                  cut + line + (last < text.size() ? "..." : "") + "\n" + caret + "^");
}

Token Lexer::next() {
    while (m_at < m_text.size() && isBlank(m_text[m_at]))
        ++m_at;
    Token token;
    token.offset = m_at;
    if (m_at == m_text.size())
        return token;
    const char c = m_text[m_at];
    if (isDigit(c) || (c == '.' && m_at + 1 < m_text.size() && isDigit(m_text[m_at + 1])))
        return number();
    if (isNameStart(c)) {
        while (m_at < m_text.size() && isNamePart(m_text[m_at]))
            ++m_at;
        token.kind = Token::Kind::Name;
        token.text = m_text.substr(token.offset, m_at - token.offset);
        return token;
    }
    const auto single = [&](Token::Kind kind) {
        token.kind = kind;
        token.text = m_text.substr(m_at++, 1);
        return token;
    };
    switch (c) {
        case '(':
            return single(Token::Kind::LeftParenthesis);
        case ')':
            return single(Token::Kind::RightParenthesis);
        case '[':
            return single(Token::Kind::LeftBracket);
        case ']':
            return single(Token::Kind::RightBracket);
        case ':':
            return single(Token::Kind::Colon);
        default:
            return operation();
    }
}

Token Lexer::number() {
    Token token;
    token.kind = Token::Kind::Number;
    token.offset = m_at;
    const auto digits = [&] {
        while (m_at < m_text.size() && isDigit(m_text[m_at]))
            ++m_at;
    };
    bool whole = true;
    digits();
    if (m_at < m_text.size() && m_text[m_at] == '.') {
        whole = false;
        ++m_at;
        digits();
    }
    if (m_at < m_text.size() && (m_text[m_at] == 'e' || m_text[m_at] == 'E')) {
        std::size_t exponent = m_at + 1;
        if (exponent < m_text.size() && (m_text[exponent] == '+' || m_text[exponent] == '-'))
            ++exponent;
        if (exponent < m_text.size() && isDigit(m_text[exponent])) {
            whole = false;
            m_at = exponent;
            digits();
        }
    }
    token.text = m_text.substr(token.offset, m_at - token.offset);
    if (m_at < m_text.size() && isNamePart(m_text[m_at]))
        failAt(m_text, m_at,
               "Expected an operator after the number " + std::string(token.text) +
                   " at position %0, found \"" + m_text[m_at] + "\".");

    const auto refuse = [&](const std::string& reason) {
        failAt(m_text, token.offset,
               "The number " + std::string(token.text.substr(0, 40)) + " at position %0 " + reason);
    };
    if (whole) {
        const std::optional<Wide> integer = wholeOf(token.text, 0, wideLimit);
        if (!integer)
            refuse("is too large to be held exactly: whole numbers go up to " +
                   numbers::wholeText(wideLimit) +
                   ". Write it with an exponent to have it rounded.");
        token.number = {true, *integer, 0};
        return token;
    }
    double& real = token.number.real;
    const char* const first = token.text.data();
    if (std::from_chars(first, first + token.text.size(), real).ec != std::errc())
        refuse("is too large or too small.");
    if (real == 0 || std::trunc(real) != real)
        return token;
    // Where the nearest double is a whole number, what is written must be that one.
    const Decimal written(token.text);
    if (!written.isWhole())
        refuse("has too many digits: it would be taken for " + numbers::numberText(real) + ".");
    if (real > static_cast<double>(wideLimit))
        return token;
    const auto zeros = static_cast<std::size_t>(written.exponent) - written.digits.size();
    if (const auto integer = wholeOf(written.digits, zeros, wideLimit + wideLimit / 2))
        token.number = {false, *integer, real, true};
    return token;
}

Token Lexer::operation() {
    struct Symbol {
        std::string_view text;
        Operator operation;
    };
    // Longer ones first.
    static constexpr Symbol symbols[] = {
        {"||", Operator::Or},       {"&&", Operator::And},       {"==", Operator::Equal},
        {"!=", Operator::NotEqual}, {"<=", Operator::LessEqual}, {">=", Operator::GreaterEqual},
        {"<", Operator::Less},      {">", Operator::Greater},    {"+", Operator::Add},
        {"-", Operator::Subtract},  {"*", Operator::Multiply},   {"/", Operator::Divide},
        {"%", Operator::Modulo},    {"!", Operator::Not}};
    Token token;
    token.offset = m_at;
    const std::string_view rest = m_text.substr(m_at);
    for (const Symbol& symbol : symbols)
        if (rest.starts_with(symbol.text)) {
            token.kind = Token::Kind::Operation;
            token.text = rest.substr(0, symbol.text.size());
            token.operation = symbol.operation;
            m_at += symbol.text.size();
            return token;
        }
    std::size_t length = 1;
    while (length < rest.size() && isContinuation(rest[length]))
        ++length;
    const std::string found(rest.substr(0, length));
    if (found == "=" || found == "&" || found == "|")
        failAt(m_text, m_at,
               "Found \"" + found + "\" at position %0: write \"" + found + found + "\".");
    const bool printable = static_cast<unsigned char>(found[0]) > 0x20;
    failAt(m_text, m_at,
           "The character " + (printable ? "\"" + found + "\"" : "(not printable)") +
               " at position %0 has no meaning in a filter.");
}

}  // namespace tarvo::engine::filter
