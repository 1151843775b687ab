// For those who can't see the window, and those who use no mouse.

#include "tests/window/guitestmain.h"
#include "tests/window/notedwindow.h"

#include <QAction>
#include <QDialog>
#include <QMenu>
#include <QToolButton>
#include <QtTest>

using namespace tarvo::window;

class AccessTest : public NotedWindowTest {
    Q_OBJECT

private slots:
    void everyControlHasANameAndAWayToIt();
    void dialogsCanBeUsedWithoutSightAndMouse();
};

// For those who can't see the window, and those who use no mouse.
void AccessTest::everyControlHasANameAndAWayToIt() {
    const QStringList nameless = namelessControls(m_window.get());
    QVERIFY2(nameless.isEmpty(), qUtf8Printable(nameless.join(", ")));

    QStringList unreachable;
    for (const QAction* action : m_window->findChildren<QAction*>()) {
        if (!action->objectName().startsWith("action") || !action->isVisible())
            continue;
        bool reachable = !action->shortcut().isEmpty();
        // Behind a button of the database tab.
        if (action->objectName() == "actionSwitchLibrary")
            reachable =
                child<QToolButton>("toolButtonCurrentLibrary")->focusPolicy() & Qt::TabFocus;
        for (const QObject* place : action->associatedObjects()) {
            const auto* widget = qobject_cast<const QWidget*>(place);
            reachable = reachable || qobject_cast<const QMenu*>(place) ||
                        (widget && widget->focusPolicy() != Qt::NoFocus);
        }
        unreachable += reachable ? QStringList() : QStringList(action->objectName());
    }
    QVERIFY2(unreachable.isEmpty(), qUtf8Printable(unreachable.join(", ")));
}

void AccessTest::dialogsCanBeUsedWithoutSightAndMouse() {
    showTab("tabPointAttributes");
    QVERIFY(select("treePointAttributes", "tarvo.class"));
    showTab("tabMetaData");
    QVERIFY(select("treeMetaData", "own.note"));
    for (const char* action :
         {"actionPointAttributeEdit", "actionMetaDataEdit", "actionMetaDataSignature", "actionNew",
          "actionOpen", "actionExportAsQRB", "actionValidate", "actionPointIndexStats",
          "actionManagementLevelOfDetail", "actionTransactionBegin"})
        run(action, {[action](QDialog* dialog) {
                const QStringList nameless = namelessControls(dialog);
                const QStringList taken = keysClaimedTwice(dialog);
                dialog->reject();
                QVERIFY2(nameless.isEmpty(), qPrintable(action + (": " + nameless.join(", "))));
                QVERIFY2(taken.isEmpty(), qPrintable(action + (": " + taken.join(", "))));
            }});
}

GUI_TEST_MAIN(AccessTest)
#include "accesstest.moc"
