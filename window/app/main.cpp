#include "window/app/language.h"
#include "window/app/qrbadminapplication.h"
#include "window/app/startup.h"
#include "window/common/appearance.h"
#include "window/common/dialogroom.h"
#include "window/common/messageboxes.h"
#include "window/common/programsettings.h"
#include "window/dialogs/importadvice.h"
#include "window/frame/commandline.h"

#include <QAccessible>
#include <QLocale>
#include <QTimer>

#include <csignal>
#include <cstdio>

using namespace tarvo::window;

int main(int argc, char* argv[]) {
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN);  // a limit of the file size is an error of the write
#endif
    // Also where no window could be opened.
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments += QString::fromLocal8Bit(argv[i]);
    if (const auto answer = answerToCommandLine(arguments)) {
        std::fputs(qUtf8Printable(*answer), stdout);
        return 0;
    }
    const auto language = languageOption(arguments);
    if (language && !speaks(*language)) {
        std::fputs(qUtf8Printable(unknownLanguage(*language)), stderr);
        return 2;
    }
    QRBAdminApplication application(argc, argv);
    useLanguage(language ? *language : spokenLanguage(QLocale::system().uiLanguages()));
    Q_INIT_RESOURCE(qrbadmin);
    setApplicationNames();
    setAdvice();
    onUnwrittenSettings([](const QString& fileName) {
        // In the middle of what keeps them nobody expects a box.
        QTimer::singleShot(0, qApp, [fileName] {
            showWarning(QApplication::activeWindow(),
                        QObject::tr("The settings can't be written to \"%1\".\n"
                                    "What is chosen now is gone when the program ends.")
                            .arg(fileName));
        });
    });
    // Updates of tables of thousands of cells would slow the program down.
    QAccessible::installUpdateHandler([](QAccessibleEvent*) {});
    applyTheme();
    applyStyleSheet();
    keepDialogsOnScreen();
    return runWindows();
}
