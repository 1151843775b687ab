#include "numbers/decimal.h"

#include <charconv>

namespace tarvo::numbers {

Decimal shortestDecimal(double value) {
    char text[40];
    const char* const end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::scientific).ptr;
    Decimal result;
    int behindMark = 0;
    bool mark = false;
    const char* at = text;
    for (; *at != 'e'; ++at) {
        if (*at == '.')
            mark = true;
        else if (*at != '-') {
            result.digits = result.digits * 10 + (*at - '0');
            behindMark += mark;
        }
    }
    // from_chars does not know the sign of a positive exponent.
    at += at[1] == '+' ? 2 : 1;
    std::from_chars(at, end, result.exponent);
    result.exponent -= behindMark;
    if (value < 0)
        result.digits = -result.digits;
    return result;
}

}  // namespace tarvo::numbers
