#include "window/app/qrbadminapplication.h"
#include "window/app/startup.h"
#include "window/common/appearance.h"

#include <QAccessible>
#include <QLocale>

#include <csignal>

using namespace tarvo::window;

int main(int argc, char* argv[]) {
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);  // a limit of the file size is an error of the write
#endif
    QLocale::setDefault(QLocale("en"));
    QRBAdminApplication application(argc, argv);
    Q_INIT_RESOURCE(qrbadmin);
    setApplicationNames();
    // Updates of tables of thousands of cells would slow the program down.
    QAccessible::installUpdateHandler([](QAccessibleEvent*) {});
    applyTheme();
    applyStyleSheet();
    return runWindows();
}
