#include "tests/window/guitestmain.h"

#include "window/app/language.h"
#include "window/app/qrbadminapplication.h"
#include "window/app/startup.h"
#include "window/common/appearance.h"
#include "window/common/dialogroom.h"
#include "window/common/programsettings.h"
#include "window/dialogs/importadvice.h"
#include "window/frame/mainwindow.h"

#include <QTemporaryDir>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

int runGuiTest(int argc, char* argv[], const std::function<QObject*()>& make) {
    const QTemporaryDir home;
    for (const char* name : {"config", "run"}) {
        QDir(home.path()).mkdir(name);
        QFile::setPermissions(home.filePath(name),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    qputenv("XDG_CONFIG_HOME", home.filePath("config").toUtf8());
    qputenv("XDG_RUNTIME_DIR", home.filePath("run").toUtf8());

    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QRBAdminApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Q_INIT_RESOURCE(qrbadmin);
    useLanguage(qEnvironmentVariable("QRB_TEST_LANGUAGE", "en"));
    setApplicationNames();
    setAdvice();
    applyTheme();
    applyStyleSheet();
    keepDialogsOnScreen();
    const std::unique_ptr<QObject> test(make());
    return QTest::qExec(test.get(), argc, argv);
}

std::unique_ptr<MainWindow> showFreshWindow() {
    // A slot that fits no signal is a mistake that the toolkit only warns about.
    QTest::failOnWarning(QRegularExpression("No matching signal|QMetaObject|QObject::connect"));
    ProgramSettings("").clear();
    DialogSettings("").clear();
    auto window = std::make_unique<MainWindow>();
    window->show();
    if (!QTest::qWaitForWindowExposed(window.get()))
        qFatal("the window does not come up");
    window->activateWindow();
    return window;
}
