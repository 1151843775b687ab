#include "window/common/longtext.h"

#include "window/common/aside.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QSignalBlocker>
#include <QTextCursor>
#include <algorithm>
#include <limits>

namespace tarvo::window {

namespace {

constexpr qsizetype pieceSize = 32 << 10;  // characters that take a few milliseconds
constexpr int dialogAfter = 500;           // milliseconds

// Behind a line's end where there is one.
qsizetype endOfPiece(const QString& text, qsizetype begin) {
    const qsizetype end = std::min(begin + pieceSize, text.size());
    const qsizetype line = end < text.size() ? text.lastIndexOf('\n', end - 1) : -1;
    return line > begin ? line + 1 : end;
}

void append(QPlainTextEdit* pane, const QString& text) {
    QProgressDialog dialog(QObject::tr("Showing the text..."), QObject::tr("Cancel"), 0, 100,
                           pane->window());
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setWindowTitle("qrbadmin");
    dialog.setAutoClose(false);
    dialog.setAutoReset(false);
    dialog.setMinimumDuration(std::numeric_limits<int>::max());
    QElapsedTimer elapsed;
    elapsed.start();
    QTextCursor cursor(pane->document());
    for (qsizetype begin = 0, end = 0; begin < text.size(); begin = end) {
        end = endOfPiece(text, begin);
        cursor.insertText(text.mid(begin, end - begin));
        if (elapsed.elapsed() > dialogAfter && !dialog.isVisible())
            dialog.show();
        if (dialog.isVisible())
            dialog.setValue(static_cast<int>(end * 100 / text.size()));
        QApplication::processEvents(dialog.isVisible() ? QEventLoop::AllEvents
                                                       : QEventLoop::ExcludeUserInputEvents);
        if (dialog.wasCanceled())
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
