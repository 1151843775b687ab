// A text browser that shows only what its text holds: it loads nothing from disk or network, so
// that a report from a foreign file can't reach out. Links keep to the theme, and
// words stay whole.
#pragma once

#include <QTextBrowser>

namespace tarvo::window {

class ReportView : public QTextBrowser {
    Q_OBJECT

public:
    explicit ReportView(QWidget* parent = nullptr);

protected:
    QVariant loadResource(int, const QUrl&) override { return {}; }
    void changeEvent(QEvent* event) override;

private:
    void recolourLinks();
};

}  // namespace tarvo::window
