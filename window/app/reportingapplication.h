// An application whose event handlers and slots may fail: what they throw ends in the general error
// report instead of in the event loop.
#pragma once

#include <QApplication>
#include <QSet>
#include <exception>

namespace tarvo::window {

class ReportingApplication : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override;

private:
    void report(const std::exception_ptr& error);

    bool m_reporting = false;
    QSet<QString> m_reportedWhilePainting;
};

}  // namespace tarvo::window
