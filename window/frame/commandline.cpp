#include "window/frame/commandline.h"

#include "window/common/textformat.h"

#include <QRegularExpression>

namespace tarvo::window {

namespace {

const QString languageName = "--lang";

}  // namespace

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

std::optional<QString> languageOption(const QStringList& arguments) {
    std::optional<QString> language;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == languageName)
            language = arguments.value(++i);
        else if (arguments[i].startsWith(languageName + '='))
            language = arguments[i].section('=', 1);
    }
    return language;
}

QStringList fileArguments(const QStringList& arguments) {
    QStringList names;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == languageName)
            ++i;
        else if (!arguments[i].startsWith("--"))
            names += arguments[i];
    }
    return names;
}

std::optional<QString> answerToCommandLine(const QStringList& arguments) {
    for (const QString& argument : arguments.mid(1)) {
        if (argument == "--version")
            return transactionAgentText() + '\n';
        if (argument == "--help" || argument == "-h")
            return QString(
                "Shows and changes point-cloud database files in a window.\n"
                "\n"
                "Usage: qrbadmin [OPTIONS] [FILE...]\n"
                "\n"
                "A database is opened, files of points (LAS, LAZ, PLY, PTX, E57, text) are "
                "offered\n"
                "to be imported, and a .txt file is shown as a changelog.\n"
                "\n"
                "Options:\n"
                "  --window=X,Y,WIDTH,HEIGHT   Place and size of the window, in pixels\n"
                "  --lang LANGUAGE             The language of the window: de, en; without it,\n"
                "                              that of the desktop\n"
                "  -h, --help                  This text\n"
                "  --version                   The version of the program\n"
                "\n"
                "qrbtool does the same work from the command line.\n");
    }
    return std::nullopt;
}

}  // namespace tarvo::window
