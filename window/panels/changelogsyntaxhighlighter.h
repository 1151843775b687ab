// Marks the header and the signature of each entry of a changelog.
#pragma once

#include <QRegularExpression>
#include <QSyntaxHighlighter>
#include <QTextCharFormat>
#include <vector>

namespace tarvo::window {

class ChangelogSyntaxHighlighter : public QSyntaxHighlighter {
    Q_OBJECT

public:
    explicit ChangelogSyntaxHighlighter(QTextDocument* document);

    // Colours that can be read on the palette's base.
    void adaptTo(const QPalette& palette);

protected:
    void highlightBlock(const QString& text) override;

private:
    struct Rule {
        QRegularExpression pattern;
        QTextCharFormat format;
    };
    std::vector<Rule> m_rules;
};

}  // namespace tarvo::window
