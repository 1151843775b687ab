#include "window/panels/findbar.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QToolButton>

namespace tarvo::window {

FindBar::FindBar(QWidget* view, const QString& hint, QWidget* parent, const QString& suffix)
    : QWidget(parent),
      m_view(view),
      m_suffix(suffix),
      m_text(new QLineEdit(this)),
      m_count(new QLabel(this)) {
    setObjectName("findBar" + suffix);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    m_text->setObjectName("editFind" + suffix);
    m_text->setPlaceholderText(hint);
    m_text->setAccessibleName(tr("Text to find"));
    m_text->setClearButtonEnabled(true);
    m_text->installEventFilter(this);
    layout->addWidget(m_text, 1);
    m_count->setObjectName("labelFind" + suffix);
    m_count->setMinimumWidth(m_count->fontMetrics().horizontalAdvance(tr("0000 of 0000")));
    layout->addWidget(m_count);
    connect(addButton("buttonFindPrevious", "go-up", tr("Previous hit [Shift+F3]")),
            &QToolButton::clicked, this, &FindBar::previous);
    connect(addButton("buttonFindNext", "go-down", tr("Next hit [F3]")), &QToolButton::clicked,
            this, &FindBar::next);
    connect(addButton("buttonFindClose", "cancel", tr("Close [Esc]")), &QToolButton::clicked, this,
            &FindBar::dismiss);
    connect(m_text, &QLineEdit::textChanged, this, [this] {
        searchAgain();
        if (hitCount() > 0)
            showHit(firstFromHere());
    });
    hide();
}

QToolButton* FindBar::addButton(const QString& name, const QString& icon, const QString& toolTip) {
    auto* button = new QToolButton(this);
    button->setObjectName(name + m_suffix);
    button->setIcon(QIcon(":/resources/gui/" + icon + ".png"));
    button->setToolTip(toolTip);
    button->setAccessibleName(toolTip);
    button->setAutoRaise(true);
    layout()->addWidget(button);
    return button;
}

void FindBar::servePanel() {
    const auto use = [this](const QKeySequence& key, void (FindBar::*step)()) {
        auto* shortcut = new QShortcut(key, parentWidget());
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        shortcut->setEnabled(false);
        connect(shortcut, &QShortcut::activated, this, step);
        m_panelKeys.push_back(shortcut);
    };
    use(QKeySequence("F3"), &FindBar::next);
    use(QKeySequence("Shift+F3"), &FindBar::previous);
    use(QKeySequence("Esc"), &FindBar::dismiss);
}

void FindBar::open() {
    setVisible(true);
    for (QShortcut* key : m_panelKeys)
        key->setEnabled(true);
    m_text->selectAll();
    m_text->setFocus();
    searchAgain();
}

void FindBar::dismiss() {
    hide();
    for (QShortcut* key : m_panelKeys)
        key->setEnabled(false);
    unmark(!m_panelKeys.empty());
    m_view->setFocus();
}

void FindBar::refresh() {
    if (isVisible())
        searchAgain();
}

void FindBar::searchAgain() {
    search(m_text->text());
    updateCount();
}

// Behind the last hit comes the first one.
void FindBar::showHit(std::size_t hit) {
    show(hit < hitCount() ? hit : 0);
    updateCount();
}

void FindBar::updateCount() {
    if (m_text->text().isEmpty()) {
        m_count->clear();
        return;
    }
    const std::size_t here = firstFromHere();
    const bool onHit = here < firstBehindHere();
    m_count->setText(hitCount() == 0 ? tr("no hits")
                     : onHit         ? tr("%0 of %1").arg(here + 1).arg(hitCount())
                                     : tr("%0 hits").arg(hitCount()));
}

void FindBar::next() {
    searchAgain();
    if (hitCount() > 0)
        showHit(firstBehindHere());
}

void FindBar::previous() {
    searchAgain();
    if (hitCount() > 0)
        showHit((firstFromHere() + hitCount() - 1) % hitCount());
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        const bool step = enter || key->key() == Qt::Key_F3;
        if (key->key() == Qt::Key_Escape || step) {
            // Taken before the shortcuts of the window see it.
            event->accept();
            if (event->type() == QEvent::KeyPress) {
                if (!step)
                    dismiss();
                else
                    key->modifiers() & Qt::ShiftModifier ? previous() : next();
            }
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace tarvo::window
