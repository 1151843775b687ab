// Numbers as texts that don't depend on the user's locale: "." is the decimal mark, exponents are
// understood, digits are never lost.
#pragma once

#include <QString>
#include <optional>

namespace tarvo::dialogs {

// The shortest text that reads back as the same number; an exponent only where the digits would
// become very many. "nan", "inf" and "-inf" for what is no finite number.
QString numberText(double number);

// The number that the whole text stands for, blanks around it aside; nothing for other texts and
// for numbers that no double holds. Only finite numbers.
std::optional<double> readNumber(const QString& text);

// number + count * step, with as many decimal places as the two of them have: 0.3 for 0.2 and 0.1.
double steppedNumber(double number, double step, double count);

// One unit of the last digit of the number's text, 1 for whole numbers: 0.01 for 0.25.
double lastDigitOf(double number);

}  // namespace tarvo::dialogs
