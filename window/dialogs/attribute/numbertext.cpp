#include "window/dialogs/attribute/numbertext.h"

#include "numbers/decimal.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <cmath>

namespace tarvo::window {

namespace {

constexpr int mostDecimals = 300;

// Places behind the decimal mark in the shortest text; negative for whole tens, hundreds...
int decimalsOf(double number) {
    return -numbers::shortestDecimal(number).exponent;
}

}  // namespace

QString numberText(double number) {
    return QString::fromStdString(numbers::numberText(number));
}

std::optional<double> readNumber(const QString& text) {
    return numbers::readNumber(text.trimmed().toStdString());
}

double steppedNumber(double number, double step, double count) {
    const double sum = number + step * count;
    const int decimals = std::max(decimalsOf(number), decimalsOf(step));
    if (!std::isfinite(sum) || decimals < 0 || decimals > mostDecimals)
        return std::isfinite(sum) ? sum : number;
    return QString::number(sum, 'f', decimals).toDouble();
}

double lastDigitOf(double number) {
    return std::isfinite(number) ? std::pow(10.0, -std::max(decimalsOf(number), 0)) : 1;
}

}  // namespace tarvo::window
