#include "window/app/qrbadminapplication.h"

#include "window/frame/mainwindow.h"
#include "window/frame/openwindows.h"

#include <QFileOpenEvent>
#include <QTimer>

namespace tarvo::window {

namespace {

constexpr int retryDelay = 200;  // milliseconds

}  // namespace

QRBAdminApplication::QRBAdminApplication(int& argc, char** argv)
    : ReportingApplication(argc, argv) {}

QRBAdminApplication::~QRBAdminApplication() = default;

bool QRBAdminApplication::event(QEvent* event) {
    if (event->type() == QEvent::FileOpen)
        open(static_cast<QFileOpenEvent*>(event)->file());
    return ReportingApplication::event(event);
}

void QRBAdminApplication::open(const QString& fileName) {
    const QList<MainWindow*> windows = openWindows();
    if (windows.isEmpty())  // the program starts, or exchanges its library
        QTimer::singleShot(retryDelay, this, [this, fileName] { open(fileName); });
    else
        windows.first()->openFile(fileName);
}

}  // namespace tarvo::window
