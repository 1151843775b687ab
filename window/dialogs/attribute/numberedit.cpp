#include "window/dialogs/attribute/numberedit.h"

#include "window/common/localnumbers.h"
#include "window/dialogs/attribute/numbertext.h"

#include <QKeyEvent>

namespace tarvo::window {

NumberEdit::NumberEdit(QWidget* parent) : QLineEdit(parent) {
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    setNumber(0);
}

void NumberEdit::setNumber(double number) {
    m_set = number;
    m_setText = localNumber(number);
    setText(m_setText);
    setCursorPosition(0);
}

std::optional<double> NumberEdit::number() const {
    return text() == m_setText ? m_set : readNumber(withPoint(text()));
}

void NumberEdit::setStep(std::function<std::optional<double>()> step) {
    m_step = std::move(step);
}

void NumberEdit::keyPressEvent(QKeyEvent* event) {
    int steps = 0;
    switch (event->key()) {
        case Qt::Key_Up:
            steps = event->modifiers() & Qt::ControlModifier ? 10 : 1;
            break;
        case Qt::Key_Down:
            steps = event->modifiers() & Qt::ControlModifier ? -10 : -1;
            break;
        default:
            break;
    }
    const std::optional<double> before = number();
    if (steps == 0 || isReadOnly() || !before) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    double step = m_step ? m_step().value_or(0) : 0;
    if (!(step > 0))
        step = lastDigitOf(*before);
    // As typing does: the change can be undone.
    selectAll();
    insert(localNumber(steppedNumber(*before, step, steps)));
    selectAll();
    event->accept();
}

}  // namespace tarvo::window
