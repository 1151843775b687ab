// Colours JSON texts line by line: names, texts, numbers, literals, and what is none of them.
#pragma once

#include <QSyntaxHighlighter>
#include <QTextCharFormat>

namespace tarvo::window {

class JsonSyntaxHighlighter : public QSyntaxHighlighter {
    Q_OBJECT

public:
    explicit JsonSyntaxHighlighter(QTextDocument* document);

    // Colours that can be read on the palette's base.
    void adaptTo(const QPalette& palette);
    // Whether to colour at all; texts that are no JSON look better without.
    void setActive(bool active);

protected:
    void highlightBlock(const QString& text) override;

private:
    bool m_active = true;
    QTextCharFormat m_name, m_string, m_number, m_literal, m_error;
};

}  // namespace tarvo::window
