#include "window/app/qrbadminapplication.h"
#include "window/app/startup.h"
#include "window/common/appearance.h"
#include "window/dialogs/importadvice.h"
#include "window/frame/commandline.h"

#include <QAccessible>
#include <QLocale>

#include <csignal>
#include <cstdio>

using namespace tarvo::window;

int main(int argc, char* argv[]) {
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);  // a limit of the file size is an error of the write
#endif
    QLocale::setDefault(QLocale("en"));
    // Also where no window could be opened.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    if (const auto answer = answerToCommandLine(arguments)) {
        std::fputs(qUtf8Printable(*answer), stdout);
        return 0;
    }
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
