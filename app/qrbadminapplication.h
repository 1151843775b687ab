// The application object. Hands files that the desktop wants opened to the first main window.
#pragma once

#include "app/reportingapplication.h"

class QRBAdminApplication : public ReportingApplication {
public:
    QRBAdminApplication(int& argc, char** argv);
    ~QRBAdminApplication() override;

    bool event(QEvent* event) override;
};
