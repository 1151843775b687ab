#include "app/qrbadminapplication.h"
#include "app/startup.h"
#include "common/appearance.h"

#include <QAccessible>
#include <QLocale>

int main(int argc, char* argv[]) {
    QLocale::setDefault(QLocale("en"));
    QRBAdminApplication application(argc, argv);
    Q_INIT_RESOURCE(qrbadmin);
    setApplicationNames();
    // Updates of tables of thousands of cells would slow the program down.
    QAccessible::installUpdateHandler([](QAccessibleEvent*) {});
    tarvo::common::applyTheme();
    applyStyleSheet();
    return runWindows();
}
