// Numbers in the fields of forms, with the texts of numbers/numbertext.h.
#pragma once

#include <QString>
#include <optional>

namespace tarvo::window {

QString numberText(double number);
std::optional<double> readNumber(const QString& text);

// number + count * step, with as many decimal places as the two of them have: 0.3 for 0.2 and 0.1.
double steppedNumber(double number, double step, double count);

// One unit of the last digit of the number's text, 1 for whole numbers: 0.01 for 0.25.
double lastDigitOf(double number);

}  // namespace tarvo::window
