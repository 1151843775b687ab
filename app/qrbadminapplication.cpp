#include "app/qrbadminapplication.h"

#include "mainwindow/mainwindow.h"

#include <QFileOpenEvent>

QRBAdminApplication::QRBAdminApplication(int& argc, char** argv)
    : ReportingApplication(argc, argv) {}

QRBAdminApplication::~QRBAdminApplication() = default;

bool QRBAdminApplication::event(QEvent* event) {
    if (event->type() == QEvent::FileOpen) {
        const QString fileName = static_cast<QFileOpenEvent*>(event)->file();
        for (QWidget* widget : topLevelWidgets()) {
            if (auto* window = qobject_cast<MainWindow*>(widget)) {
                window->openFile(fileName);
                break;
            }
        }
    }
    return ReportingApplication::event(event);
}
