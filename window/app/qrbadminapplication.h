// The application object. Hands files that the desktop wants opened to the first open main window.
#pragma once

#include "window/app/reportingapplication.h"

namespace tarvo::window {

class QRBAdminApplication : public ReportingApplication {
public:
    QRBAdminApplication(int& argc, char** argv);
    ~QRBAdminApplication() override;

    bool event(QEvent* event) override;

private:
    void open(const QString& fileName);
};

}  // namespace tarvo::window
