#include "window/widgets/reportview.h"

#include <QEvent>
#include <QTextBlock>
#include <QTextCursor>
#include <vector>

namespace tarvo::window {

ReportView::ReportView(QWidget* parent) : QTextBrowser(parent) {
    // Names in narrow columns are to be read, and copied, as they are.
    setWordWrapMode(QTextOption::WordWrap);
}

void ReportView::changeEvent(QEvent* event) {
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        recolourLinks();
}

// A link is given its colour once, when the text is read.
void ReportView::recolourLinks() {
    struct Link {
        int begin, length;
    };
    std::vector<Link> links;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part)
            if (part.fragment().charFormat().isAnchor() &&
                !part.fragment().charFormat().anchorHref().isEmpty())
                links.push_back({part.fragment().position(), part.fragment().length()});
    QTextCharFormat colour;
    colour.setForeground(palette().brush(QPalette::Link));
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    for (const Link& link : links) {
        cursor.setPosition(link.begin);
        cursor.setPosition(link.begin + link.length, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(colour);
    }
    cursor.endEditBlock();
}

}  // namespace tarvo::window
