#include "window/widgets/elided.h"

#include "window/common/textformat.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QToolTip>

namespace tarvo::window {

namespace {

// As the toolkit's line edit has them.
constexpr int textMargin = 2;

QString elided(const QWidget* widget, const QString& text, int width) {
    return widget->fontMetrics().elidedText(text, Qt::ElideMiddle, width);
}

bool tellWhole(QEvent* event, const QWidget* widget, const QString& text) {
    if (event->type() != QEvent::ToolTip || !widget->toolTip().isEmpty())
        return false;
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), plainToolTip(text));
    return true;
}

}  // namespace

bool ElidedLabel::fits() const {
    return fontMetrics().horizontalAdvance(text()) <= contentsRect().width();
}

bool ElidedLabel::event(QEvent* event) {
    return (!fits() && tellWhole(event, this, text())) || QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent* event) {
    if (fits() || hasSelectedText()) {
        QLabel::paintEvent(event);
        return;
    }
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(),
                          isEnabled(), elided(this, text(), contentsRect().width()),
                          foregroundRole());
}

QRect ElidedLineEdit::textRect() const {
    QStyleOptionFrame option;
    initStyleOption(&option);
    return style()
        ->subElementRect(QStyle::SE_LineEditContents, &option, this)
        .adjusted(textMargin, 0, -textMargin, 0);
}

bool ElidedLineEdit::fits() const {
    return fontMetrics().horizontalAdvance(text()) <= textRect().width();
}

bool ElidedLineEdit::event(QEvent* event) {
    return (!fits() && tellWhole(event, this, text())) || QLineEdit::event(event);
}

void ElidedLineEdit::paintEvent(QPaintEvent* event) {
    if (fits() || hasFocus()) {
        QLineEdit::paintEvent(event);
        return;
    }
    QStyleOptionFrame option;
    initStyleOption(&option);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &option, &painter, this);
    const QRect rect = textRect();
    style()->drawItemText(&painter, rect, Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
                          elided(this, text(), rect.width()), QPalette::Text);
}

}  // namespace tarvo::window
