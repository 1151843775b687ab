#include "tests/gui/guitestmain.h"

#include "app/qrbadminapplication.h"
#include "app/startup.h"
#include "common/appearance.h"

#include <QLocale>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

int runGuiTest(int argc, char* argv[], const std::function<QObject*()>& make) {
    const QTemporaryDir home;
    for (const char* name : {"config", "run"}) {
        QDir(home.path()).mkdir(name);
        QFile::setPermissions(home.filePath(name),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    qputenv("XDG_CONFIG_HOME", home.filePath("config").toUtf8());
    qputenv("XDG_RUNTIME_DIR", home.filePath("run").toUtf8());

    QLocale::setDefault(QLocale("en"));
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QRBAdminApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    Q_INIT_RESOURCE(qrbadmin);
    setApplicationNames();
    tarvo::common::applyTheme();
    applyStyleSheet();
    const std::unique_ptr<QObject> test(make());
    return QTest::qExec(test.get(), argc, argv);
}
