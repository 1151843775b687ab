#include "window/panels/changelogsyntaxhighlighter.h"

#include "window/common/theme.h"

namespace tarvo::window {

ChangelogSyntaxHighlighter::ChangelogSyntaxHighlighter(QTextDocument* document)
    : QSyntaxHighlighter(document) {
    Rule header{QRegularExpression(R"(\[#\d+\].*$)"), {}};
    header.format.setFontWeight(QFont::Bold);
    Rule signature{QRegularExpression("^Signature: [0-9a-fA-F]+$"), {}};
    signature.format.setFontWeight(QFont::Light);
    m_rules = {header, signature};
}

void ChangelogSyntaxHighlighter::adaptTo(const QPalette& palette) {
    m_rules[0].format.setForeground(readable(Qt::darkBlue, palette));
    m_rules[1].format.setForeground(readable(Qt::darkRed, palette));
    rehighlight();
}

void ChangelogSyntaxHighlighter::highlightBlock(const QString& text) {
    for (const Rule& rule : m_rules) {
        auto matches = rule.pattern.globalMatch(text);
        while (matches.hasNext()) {
            const auto match = matches.next();
            setFormat(static_cast<int>(match.capturedStart()),
                      static_cast<int>(match.capturedLength()), rule.format);
        }
    }
}

}  // namespace tarvo::window
