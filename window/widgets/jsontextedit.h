// A text pane for JSON: line numbers, colours, the bracket that belongs to the one at the cursor,
// an indent that goes on in the next line, and marks for places that are wrong.
#pragma once

#include "window/widgets/jsonpositions.h"

#include <QPlainTextEdit>
#include <vector>

namespace tarvo::window {

class JsonSyntaxHighlighter;

class JsonTextEdit : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit JsonTextEdit(QWidget* parent = nullptr);

    // Whether typing stays fluent with the text: the pane lays out each line as a whole.
    static bool canHold(const QString& text);
    // The beginning of a text that it can't hold.
    static QString beginningOf(const QString& text);

    // The text as it stands: toPlainText() makes blanks of no-break spaces.
    QString text() const;
    // Puts another text in place as one step that can be undone.
    void replaceText(const QString& text);
    // Whether the text is coloured as JSON.
    void setColoured(bool coloured);
    // Underlines the places, as far as their first lines go, until the next call.
    void setMarks(const std::vector<TextSpan>& marks);
    // Selects the place, as far as its first line goes, and shows it in the middle.
    void goTo(const TextSpan& place);

signals:
    // Nothing was pasted.
    void tooLongToPaste();

protected:
    void insertFromMimeData(const QMimeData* source) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    class LineNumbers;

    // The place as far as its first line goes.
    QTextCursor cursorOf(const TextSpan& place) const;
    int lineNumbersWidth() const;
    void paintLineNumbers(QPaintEvent* event);
    void layOutLineNumbers();
    void updateSelections();
    // The bracket that belongs to the one at the position; -1: none, or too far away.
    int partnerOf(int position) const;

    LineNumbers* m_lineNumbers = nullptr;
    JsonSyntaxHighlighter* m_highlighter = nullptr;
    std::vector<TextSpan> m_marks;
};

}  // namespace tarvo::window
