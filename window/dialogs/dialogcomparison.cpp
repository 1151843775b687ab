#include "window/dialogs/dialogcomparison.h"

#include "window/common/appearance.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace tarvo::window {

DialogComparison::DialogComparison(const QString& states, const QString& report, QWidget* parent)
    : QDialog(parent), m_settings("DialogComparison") {
    setWindowTitle(tr("Compare Transactions"));
    auto* layout = new QVBoxLayout(this);
    auto* label = new QLabel(this);
    label->setObjectName("labelStates");
    label->setTextFormat(Qt::PlainText);
    label->setText(states);
    layout->addWidget(label);
    auto* pane = new QPlainTextEdit(this);
    pane->setObjectName("textComparison");
    pane->setAccessibleName(tr("Differences"));
    pane->setReadOnly(true);
    // Keys can go through it and select, too.
    pane->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    pane->setTabChangesFocus(true);
    pane->setLineWrapMode(QPlainTextEdit::NoWrap);
    useTextPaneFont(pane);
    pane->setPlainText(report);
    layout->addWidget(pane);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addWidget(buttons);
    setMinimumSize(420, 240);
    resize(640, 420);
    m_settings.restoreGeometryOf(this);
}

DialogComparison::~DialogComparison() {
    m_settings.saveGeometryOf(this);
}

}  // namespace tarvo::window
