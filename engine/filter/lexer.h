// Splits a filter text into tokens, one at a time.
#pragma once

#include "engine/filter/syntax.h"

#include <string_view>

namespace tarvo::engine::filter {

struct Token {
    enum class Kind : std::uint8_t {
        End,
        Number,
        Name,
        Operation,  // operation tells which; "-" is Subtract, "+" is Add, "!" is Not
        LeftParenthesis,
        RightParenthesis,
        LeftBracket,
        RightBracket,
        Colon
    };

    Kind kind = Kind::End;
    std::size_t offset = 0;
    std::string_view text;  // within the filter text
    Operator operation = Operator::Or;
    Number number;
};

class Lexer {
public:
    // The text must outlive the lexer and its tokens.
    explicit Lexer(std::string_view text) : m_text(text) {}

    // Throws Failure(Filter) for what is no token.
    Token next();

private:
    Token number();
    Token operation();

    std::string_view m_text;
    std::size_t m_at = 0;
};

}  // namespace tarvo::engine::filter
