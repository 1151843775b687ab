// A text browser that shows only what its text holds: it loads nothing from disk or network, so
// that a report from a foreign file can't reach out.
#pragma once

#include <QTextBrowser>

namespace tarvo::window {

class ReportView : public QTextBrowser {
    Q_OBJECT

public:
    using QTextBrowser::QTextBrowser;

protected:
    QVariant loadResource(int, const QUrl&) override { return {}; }
};

}  // namespace tarvo::window
