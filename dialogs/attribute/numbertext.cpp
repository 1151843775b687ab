#include "dialogs/attribute/numbertext.h"

#include <QLocale>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace tarvo::dialogs {

namespace {

// Between these powers of ten people read digits more easily than an exponent.
constexpr int smallestPlainExponent = -7;
constexpr int largestPlainExponent = 20;
constexpr int mostDecimals = 300;

// Places behind the decimal mark in the shortest text; negative for whole tens, hundreds...
int decimalsOf(double number) {
    const QString text = QString::number(number, 'e', QLocale::FloatingPointShortest);
    const QString digits = text.section('e', 0, 0).section('.', 1);
    return static_cast<int>(digits.size()) - text.section('e', 1).toInt();
}

}  // namespace

QString numberText(double number) {
    if (std::isnan(number))
        return "nan";
    if (std::isinf(number))
        return number < 0 ? "-inf" : "inf";
    const int exponent =
        number == 0 ? 0 : static_cast<int>(std::floor(std::log10(std::fabs(number))));
    const bool plain = exponent >= smallestPlainExponent && exponent <= largestPlainExponent;
    // The shortest digits that tell 2^63 from its neighbours are not those of 2^63.
    if (plain && number == std::trunc(number))
        return QString::number(number, 'f', 0);
    return QString::number(number, plain ? 'f' : 'g', QLocale::FloatingPointShortest);
}

std::optional<double> readNumber(const QString& text) {
    const std::string bytes = text.trimmed().toStdString();
    const char* begin = bytes.data();
    const char* const end = begin + bytes.size();
    if (begin != end && *begin == '+')
        ++begin;
    // A sign behind the sign would be taken for the number's own.
    if (begin == end || (begin != bytes.data() && *begin == '-'))
        return std::nullopt;
    double number = 0;
    const auto [last, error] = std::from_chars(begin, end, number);
    if (error != std::errc() || last != end || !std::isfinite(number))
        return std::nullopt;
    return number;
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

}  // namespace tarvo::dialogs
