#include "window/frame/commandline.h"

#include <QRegularExpression>

namespace tarvo::window {

std::optional<QRect> windowRectangle(const QStringList& arguments) {
    static const QRegularExpression option(R"(\A(?:--window=(-?\d+),(-?\d+),(-?\d+),(-?\d+))\z)");
    for (const QString& argument : arguments) {
        const auto match = option.match(argument);
        if (!match.hasMatch())
            continue;
        int numbers[4];
        bool converted = true;
        for (int i = 0; i < 4; ++i) {
            bool ok = false;
            numbers[i] = match.captured(i + 1).toInt(&ok, 10);
            converted = converted && ok;
        }
        if (converted)
            return QRect(numbers[0], numbers[1], numbers[2], numbers[3]);
    }
    return std::nullopt;
}

}  // namespace tarvo::window
