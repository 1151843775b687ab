// Numbers in the language of the window. What is only shown has the decimal mark of the locale;
// what is typed may have that or the point; filter expressions, files and the values of points have
// the point in every language.
#pragma once

#include <QString>

namespace tarvo::window {

// A number's text with the locale's decimal mark in place of the point. Marks no groups.
QString localNumber(const QString& number);
QString localNumber(double number);

// What was typed, with a point in place of the locale's decimal mark and without its marks of
// groups if it is such a number, else as it is: in German, "1.234,5" is 1234.5. Without that mark a
// point is a decimal mark, whatever the locale: "1.234" is what filters and tables of values show,
// and "1.234.567" is no number.
QString withPoint(const QString& typed);

}  // namespace tarvo::window
