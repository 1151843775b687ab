#include "window/dialogs/plugin/outputpane.h"

#include "window/common/appearance.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>

namespace tarvo::window {

OutputPane::OutputPane(QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    useTextPaneFont(this);
}

void OutputPane::add(const QString& text) {
    QScrollBar* bar = verticalScrollBar();
    const bool atEnd = bar->value() == bar->maximum();
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(text);
    if (document()->characterCount() > keptCharacters + keptCharacters / 8)
        forgetBeginning();
    if (atEnd)
        bar->setValue(bar->maximum());
}

void OutputPane::forgetBeginning() {
    const int excess = document()->characterCount() - keptCharacters;
    QTextCursor cursor(document());
    cursor.setPosition(document()->findBlock(excess).position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

}  // namespace tarvo::window
