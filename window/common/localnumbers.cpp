#include "window/common/localnumbers.h"

#include "numbers/numbertext.h"

#include <QLocale>

namespace tarvo::window {

QString localNumber(const QString& number) {
    return QString(number).replace('.', QLocale().decimalPoint());
}

QString localNumber(double number) {
    return localNumber(QString::fromStdString(numbers::numberText(number)));
}

QString withPoint(const QString& typed) {
    const QLocale locale;
    const QString mark = locale.decimalPoint();
    QString text = typed.trimmed();
    if (mark == "." || !text.contains(mark))
        return typed;
    bool isNumber = false;
    (void)locale.toDouble(text, &isNumber);
    return isNumber ? text.remove(locale.groupSeparator()).replace(mark, ".") : typed;
}

}  // namespace tarvo::window
