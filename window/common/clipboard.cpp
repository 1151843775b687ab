#include "window/common/clipboard.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <utility>

namespace tarvo::window {

namespace {

const char* const copyMenuTexts[] = {
    QT_TRANSLATE_NOOP("QObject", "...as JSON string"),
    QT_TRANSLATE_NOOP("QObject", "...as C++ string"),
    QT_TRANSLATE_NOOP("QObject", "...as Pascal string"),
    QT_TRANSLATE_NOOP("QObject", "...as Python string"),
};

// In double quotes. letters: those that stand behind a backslash for the first of these characters;
// control: the text of any other one.
template <typename Control>
QString quotedC(const QString& text, const QString& letters, const Control& control) {
    const QString characters = QString("\"\\\n\r\t\b\f").left(letters.size());
    QString result = "\"";
    for (const QChar c : text) {
        const qsizetype at = characters.indexOf(c);
        result += at >= 0 ? QString("\\") + letters[at] : control(c);
    }
    return result + "\"";
}

QString quotedJson(const QString& text) {
    return quotedC(text, "\"\\nrtbf", [](QChar c) {
        return c.unicode() < 0x20 ? QString("\\u%1").arg(c.unicode(), 4, 16, QChar('0'))
                                  : QString(c);
    });
}

QString quotedCpp(const QString& text) {
    return quotedC(text, "\"\\nrt", [](QChar c) {
        // Three octal digits: a digit that follows can't become part of the escape.
        const bool isControl = c.unicode() < 0x20 || c.unicode() == 0x7f;
        return isControl ? QString("\\%1").arg(c.unicode(), 3, 8, QChar('0')) : QString(c);
    });
}

QString quotedPascal(const QString& text) {
    QString result;
    bool open = false;
    for (const QChar c : text) {
        const bool control = c.unicode() < 0x20 || c.unicode() == 0x7f;
        if (control == open) {
            result += '\'';
            open = !open;
        }
        if (control)
            result += QString("#%1").arg(c.unicode());
        else if (c == '\'')
            result += "''";
        else
            result += c;
    }
    if (open)
        result += '\'';
    return result.isEmpty() ? QString("''") : result;
}

}  // namespace

QString quoted(const QString& text, Quoting quoting) {
    switch (quoting) {
        case Quoting::JSON:
            return quotedJson(text);
        case Quoting::CPP:
            return quotedCpp(text);
        case Quoting::PASCAL:
            return quotedPascal(text);
        case Quoting::PYTHON:
            return "\"\"\"\n" + text + "\n\"\"\"";
    }
    return text;
}

QMenu* createCopyMenu(QWidget* parent, QObject* receiver, const char* slot) {
    auto* menu = new QMenu(QObject::tr("Copy to clipboard..."), parent);
    menu->setIcon(QIcon(":/resources/gui/copy.png"));
    int variant = 0;
    for (const char* text : copyMenuTexts) {
        QAction* action = menu->addAction(QObject::tr(text));
        action->setData(variant++);
        QObject::connect(action, SIGNAL(triggered()), receiver, slot);
    }
    return menu;
}

void copyToClipboard(const QString& text) {
    QApplication::clipboard()->setText(text);
}

void copyToClipboard(const QString& text, const QAction* action) {
    for (int variant = 0; action && variant < 4; ++variant) {
        if (action->text() == QObject::tr(copyMenuTexts[variant]) && action->data() == variant)
            copyToClipboard(quoted(text, static_cast<Quoting>(variant)));
    }
}

}  // namespace tarvo::window
