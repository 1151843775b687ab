#include "engine/filter/lexer.h"

#include "engine/base/error.h"

#include <algorithm>
#include <charconv>

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

    const char* const first = token.text.data();
    const char* const last = first + token.text.size();
    std::uint64_t integer = 0;
    if (whole && std::from_chars(first, last, integer).ec == std::errc()) {
        token.number = {true, static_cast<schema::Grid::Wide>(integer), 0};
        return token;
    }
    if (std::from_chars(first, last, token.number.real).ec != std::errc())
        failAt(m_text, token.offset,
               "The number " + std::string(token.text.substr(0, 40)) +
                   " at position %0 is too large or too small.");
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
