#include "window/common/longtext.h"

#include "window/common/aside.h"
#include "window/common/stepdialog.h"

#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QTextCursor>
#include <algorithm>

namespace tarvo::window {

namespace {

constexpr qsizetype pieceSize = 32 << 10;  // characters that take a few milliseconds

// Behind a line's end where there is one.
qsizetype endOfPiece(const QString& text, qsizetype begin) {
    const qsizetype end = std::min(begin + pieceSize, text.size());
    const qsizetype line = end < text.size() ? text.lastIndexOf('\n', end - 1) : -1;
    return line > begin ? line + 1 : end;
}

void append(QPlainTextEdit* pane, const QString& text) {
    StepDialog dialog(pane, QObject::tr("Showing the text..."));
    QTextCursor cursor(pane->document());
    for (qsizetype begin = 0, end = 0; begin < text.size(); begin = end) {
        end = endOfPiece(text, begin);
        cursor.insertText(text.mid(begin, end - begin));
        if (!dialog.goesOn(static_cast<double>(end) / static_cast<double>(text.size())))
            throw Cancelled();
    }
}

}  // namespace

void showLongText(QPlainTextEdit* pane, const QString& text) {
    if (text.size() <= pieceSize) {
        pane->setPlainText(text);
        return;
    }
    try {
        const QSignalBlocker quiet(pane);
        pane->clear();
        const bool undoes = pane->isUndoRedoEnabled();
        pane->setUndoRedoEnabled(false);
        append(pane, text);
        pane->setUndoRedoEnabled(undoes);
        pane->moveCursor(QTextCursor::Start);
    } catch (...) {
        pane->clear();
        throw;
    }
    emit pane->textChanged();
}

}  // namespace tarvo::window
