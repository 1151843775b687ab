#include "window/app/qrbadminapplication.h"
#include "window/app/startup.h"
#include "window/common/appearance.h"
#include "window/dialogs/importadvice.h"

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
    setAdvice();
    // Updates of tables of thousands of cells would slow the program down.
    QAccessible::installUpdateHandler([](QAccessibleEvent*) {});
    applyTheme();
    applyStyleSheet();
    return runWindows();
}
