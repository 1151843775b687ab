#include "window/panels/textfindbar.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>
#include <algorithm>

namespace tarvo::window {

TextFindBar::TextFindBar(QTextEdit* text, const QString& hint, QWidget* parent,
                         const QString& suffix)
    : FindBar(text, hint, parent, suffix), m_pane(text) {
    // Another text has other hits.
    connect(text->document(), &QTextDocument::contentsChanged, this, &FindBar::refresh);
}

// In the plain text each character stands at its position in the document.
void TextFindBar::search(const QString& text) {
    m_hits.clear();
    m_length = text.size();
    if (text.isEmpty())
        return;
    const QString whole = m_pane->document()->toPlainText();
    for (qsizetype at = 0; (at = whole.indexOf(text, at, Qt::CaseInsensitive)) >= 0; at += m_length)
        m_hits.push_back(at);
}

std::size_t TextFindBar::firstFromHere() const {
    const qsizetype here = m_pane->textCursor().selectionStart();
    return static_cast<std::size_t>(std::lower_bound(m_hits.begin(), m_hits.end(), here) -
                                    m_hits.begin());
}

// A cursor that merely stands before a hit is not on it.
std::size_t TextFindBar::firstBehindHere() const {
    const QTextCursor cursor = m_pane->textCursor();
    return cursor.hasSelection()
               ? static_cast<std::size_t>(
                     std::upper_bound(m_hits.begin(), m_hits.end(), cursor.selectionStart()) -
                     m_hits.begin())
               : firstFromHere();
}

void TextFindBar::show(std::size_t hit) {
    QTextCursor cursor = m_pane->textCursor();
    cursor.setPosition(static_cast<int>(m_hits[hit]));
    cursor.setPosition(static_cast<int>(m_hits[hit] + m_length), QTextCursor::KeepAnchor);
    m_pane->setTextCursor(cursor);
}

}  // namespace tarvo::window
