#include "window/widgets/jsontextedit.h"

#include "window/common/appearance.h"
#include "window/common/theme.h"
#include "window/widgets/jsonsyntaxhighlighter.h"

#include <QMimeData>
#include <QPainter>
#include <QTextBlock>
#include <algorithm>

namespace tarvo::window {

namespace {

constexpr int indent = 4;
constexpr int farthestPartner = 50'000;  // characters
constexpr std::size_t mostMarks = 1000;
// Measured: half a second to lay out, a tenth of a second for each key in the longest line.
constexpr qsizetype longestText = 2'000'000;
constexpr qsizetype longestLine = 250'000;

qsizetype longestLineOf(QStringView text) {
    qsizetype longest = 0;
    for (qsizetype begin = 0; begin <= text.size();) {
        qsizetype end = text.indexOf(QLatin1Char('\n'), begin);
        end = end < 0 ? text.size() : end;
        longest = std::max(longest, end - begin);
        begin = end + 1;
    }
    return longest;
}

}  // namespace

// The margin with the numbers; painted by the edit.
class JsonTextEdit::LineNumbers : public QWidget {
public:
    explicit LineNumbers(JsonTextEdit* edit) : QWidget(edit), m_edit(edit) {}
    QSize sizeHint() const override { return {m_edit->lineNumbersWidth(), 0}; }

protected:
    void paintEvent(QPaintEvent* event) override { m_edit->paintLineNumbers(event); }

private:
    JsonTextEdit* m_edit;
};

JsonTextEdit::JsonTextEdit(QWidget* parent)
    : QPlainTextEdit(parent),
      m_lineNumbers(new LineNumbers(this)),
      m_highlighter(new JsonSyntaxHighlighter(document())) {
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setTabChangesFocus(true);
    useTextPaneFont(this);
    m_highlighter->adaptTo(palette());
    connect(this, &QPlainTextEdit::blockCountChanged, this, &JsonTextEdit::layOutLineNumbers);
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& area, int scrolled) {
        if (scrolled != 0)
            m_lineNumbers->scroll(0, scrolled);
        else
            m_lineNumbers->update(0, area.y(), m_lineNumbers->width(), area.height());
    });
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &JsonTextEdit::updateSelections);
    layOutLineNumbers();
    updateSelections();
}

bool JsonTextEdit::canHold(const QString& text) {
    return text.size() <= longestText && longestLineOf(text) <= longestLine;
}

QString JsonTextEdit::beginningOf(const QString& text) {
    constexpr qsizetype length = 100'000;
    // Not half of a character.
    const bool cuts = text.size() > length && text[length - 1].isHighSurrogate();
    return text.left(cuts ? length - 1 : length);
}

QString JsonTextEdit::text() const {
    return document()->toRawText().replace(QChar::ParagraphSeparator, '\n');
}

void JsonTextEdit::replaceText(const QString& text) {
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    cursor.insertText(text);
    moveCursor(QTextCursor::Start);
}

void JsonTextEdit::setColoured(bool coloured) {
    m_highlighter->setActive(coloured);
}

void JsonTextEdit::setMarks(const std::vector<TextSpan>& marks) {
    m_marks = marks;
    updateSelections();
}

QTextCursor JsonTextEdit::cursorOf(const TextSpan& place) const {
    const qsizetype last = document()->characterCount() - 1;
    QTextCursor cursor(document());
    cursor.setPosition(static_cast<int>(std::min(place.begin, last)));
    const qsizetype endOfLine = cursor.block().position() + cursor.block().length() - 1;
    cursor.setPosition(static_cast<int>(std::min(place.end, endOfLine)), QTextCursor::KeepAnchor);
    return cursor;
}

void JsonTextEdit::goTo(const TextSpan& place) {
    setTextCursor(cursorOf(place));
    centerCursor();
}

void JsonTextEdit::insertFromMimeData(const QMimeData* source) {
    if (source->hasText() && !canHold(source->text()))
        emit tooLongToPaste();
    else
        QPlainTextEdit::insertFromMimeData(source);
}

int JsonTextEdit::lineNumbersWidth() const {
    const int digits = std::max<int>(3, QString::number(blockCount()).size());
    return fontMetrics().horizontalAdvance(QLatin1Char('9')) * digits + 12;
}

void JsonTextEdit::layOutLineNumbers() {
    setViewportMargins(lineNumbersWidth(), 0, 0, 0);
    const QRect inside = contentsRect();
    m_lineNumbers->setGeometry(inside.left(), inside.top(), lineNumbersWidth(), inside.height());
}

void JsonTextEdit::paintLineNumbers(QPaintEvent* event) {
    QPainter painter(m_lineNumbers);
    painter.fillRect(event->rect(), palette().color(QPalette::AlternateBase));
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.setFont(font());
    QTextBlock block = firstVisibleBlock();
    qreal top = blockBoundingGeometry(block).translated(contentOffset()).top();
    while (block.isValid() && top <= event->rect().bottom()) {
        const qreal height = blockBoundingRect(block).height();
        if (block.isVisible() && top + height >= event->rect().top())
            painter.drawText(QRectF(0, top, m_lineNumbers->width() - 6, height),
                             Qt::AlignRight | Qt::AlignTop,
                             QString::number(block.blockNumber() + 1));
        block = block.next();
        top += height;
    }
}

void JsonTextEdit::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    layOutLineNumbers();
}

void JsonTextEdit::changeEvent(QEvent* event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        m_highlighter->adaptTo(palette());
        updateSelections();
    } else if (event->type() == QEvent::FontChange) {
        setTabStopDistance(indent * fontMetrics().horizontalAdvance(QLatin1Char(' ')));
        layOutLineNumbers();
    }
}

void JsonTextEdit::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isReturn || isReadOnly() || event->modifiers() & ~Qt::KeypadModifier) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    QTextCursor cursor = textCursor();
    const QString line = cursor.block().text().left(cursor.positionInBlock());
    qsizetype blanks = 0;
    while (blanks < line.size() && line[blanks].isSpace())
        ++blanks;
    const QString trimmed = line.trimmed();
    const bool opens = trimmed.endsWith('{') || trimmed.endsWith('[');
    cursor.insertText('\n' + line.left(blanks) + QString(opens ? indent : 0, ' '));
    setTextCursor(cursor);
    ensureCursorVisible();
}

int JsonTextEdit::partnerOf(int position) const {
    static const QString opening = "{[";
    static const QString closing = "}]";
    const QChar bracket = document()->characterAt(position);
    const bool forwards = opening.contains(bracket);
    if (!forwards && !closing.contains(bracket))
        return -1;
    const int step = forwards ? 1 : -1;
    int depth = 0;
    bool quoted = false;
    for (int i = position, seen = 0; i >= 0 && seen < farthestPartner; i += step, ++seen) {
        const QChar c = document()->characterAt(i);
        if (c.isNull())
            return -1;
        // Texts end in their line, so a quote that is missing does not spoil what follows.
        if (c == QChar::ParagraphSeparator)
            quoted = false;
        else if (c == '"' && document()->characterAt(i - 1) != '\\')
            quoted = !quoted;
        if (quoted)
            continue;
        if (opening.contains(c))
            depth += step;
        else if (closing.contains(c))
            depth -= step;
        if (depth == 0)
            return i;
    }
    return -1;
}

void JsonTextEdit::updateSelections() {
    QList<QTextEdit::ExtraSelection> selections;
    const auto add = [&](qsizetype begin, qsizetype end) -> QTextCharFormat& {
        selections.emplaceBack();
        selections.last().cursor = cursorOf({begin, end});
        return selections.last().format;
    };
    if (!isReadOnly()) {
        const int position = textCursor().position();
        QTextCharFormat& line = add(position, position);
        line.setBackground(palette().color(QPalette::AlternateBase));
        line.setProperty(QTextFormat::FullWidthSelection, true);
    }
    for (std::size_t i = 0; i < std::min(m_marks.size(), mostMarks); ++i) {
        QTextCharFormat& mark = add(m_marks[i].begin, m_marks[i].end);
        mark.setUnderlineStyle(QTextCharFormat::WaveUnderline);
        mark.setUnderlineColor(readable(QColor("#c62828"), palette()));
    }
    for (const int position : {textCursor().position(), textCursor().position() - 1}) {
        const int partner = position < 0 ? -1 : partnerOf(position);
        if (partner < 0)
            continue;
        const QColor ground(isDark(palette()) ? "#3f5f8f" : "#c8d8f0");
        for (const int bracket : {position, partner})
            add(bracket, bracket + 1).setBackground(ground);
        break;
    }
    setExtraSelections(selections);
}

}  // namespace tarvo::window
