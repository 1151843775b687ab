#include "tests/window/dialogprobe.h"

#include "tests/window/windowdriver.h"

#include <QAction>
#include <QDialog>
#include <QDialogButtonBox>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

QString kindOf(const QDialog* dialog) {
    return QString(dialog->metaObject()->className()).section("::", -1);
}

bool isOkEnabled(QDialog* dialog) {
    return in<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok)->isEnabled();
}

QStringList menuOf(QDialog* dialog) {
    const auto* button = in<QToolButton>(dialog, "buttonMenu");
    QStringList entries;
    for (const QAction* action : button->menu()->actions()) {
        const QString text = action->isSeparator() ? QString("-") : action->text();
        entries += action->isEnabled() || action->isSeparator() ? text : '[' + text + ']';
    }
    return button->styleSheet() == "QToolButton::menu-indicator { image: none; }"
               ? entries
               : QStringList("the indicator is shown");
}

QStringList disabledOf(QDialog* dialog, const QStringList& names) {
    QStringList disabled;
    for (const QString& name : names)
        if (!in<QWidget>(dialog, qUtf8Printable(name))->isEnabled())
            disabled += name;
    return disabled;
}
