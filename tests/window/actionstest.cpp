// Every action of the window: its text, shortcut and icon, where it is to be found, and in which
// states of the window it can be used. An action that is not in the table is a fault.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"

#include <QAction>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>

using namespace tarvo::window;

namespace {

// The states of the window, a letter each:
// n no database yet           t a changelog text file without a database
// o open, nothing selected    s one selected in each list   m several selected in each list
// p transaction pending       P pending, something changed, one selected in each list
// b after a rollback          q a query with a next page    r a query that ended, with its points
// e an empty database         c closed again
// C closed, O opened once more while a transaction was pending
const QString always = "ntosmpPbqrecCO";
const QString open = "osmpPbqreO";
const QString idle = "osmbqreO";  // open, and no transaction pending
const QString pending = "pP";
const QString one = "sP";
const QString some = "smP";
const QString never = "";

struct Expected {
    const char* name;
    const char* text;
    const char* shortcut;
    const char* icon;  // empty: any or none
    QString states;    // in which it is enabled
};

const Expected actions[] = {
    {"actionOpen", "Open ...", "Ctrl+O", "db-open", always},
    {"actionClose", "Close", "Ctrl+W", "db-close", open + "t"},
    {"actionNew", "New ...", "Ctrl+N", "db-new", always},
    {"actionAbout", "About", "F1", "help", always},
    {"actionTransactionBegin", "New", "", "add", idle},
    {"actionTransactionCommit", "Commit", "", "ok", pending},
    {"actionTransactionRollback", "Rollback", "", "cancel", pending},
    {"actionReload", "Reload", "F5", "refresh", open},
    {"actionTransactionRestore", "Restore", "", "undo", "sm"},
    {"actionMetaDataAdd", "Add", "", "add", open},
    {"actionMetaDataRemove", "Remove", "", "cancel", some},
    {"actionMetaDataEdit", "Edit", "", "edit", one},
    {"actionPointAttributeAdd", "Add", "", "add", open},
    {"actionPointAttributeRemove", "Remove", "", "cancel", some},
    {"actionPointIndexNodeExpand", "Expand tree", "", "tree-expand", open},
    {"actionPointIndexNodeCollapse", "Collapse tree", "", "tree-collapse", open},
    {"actionQuerySelectNext", "Run/Next", "F3", "filter", open},
    {"actionQuerySelectCancel", "Cancel", "Esc", "cancel", "q"},
    {"actionQuerySelectExport", "Export", "", "db-save", open},
    {"actionQuerySelectExportPoints", "Export points ...", "", "points-save", open},
    {"actionFactoryMode", "Factory mode", "", "", never},
    {"actionColumnsShowAll", "Show all", "", "show-full", open},
    {"actionColumnsHideAll", "Hide all", "", "show-none", open},
    {"actionColumnsShowDefault", "Show default", "", "show-medium", open},
    {"actionInspectionUpdate", "Update", "", "refresh", open},
    {"actionManagementFinalize", "Delete All", "", "", idle},
    {"actionManagementVacuum", "Cleanup (vacuum)", "", "vacuum", idle},
    {"actionManagementLevelOfDetail", "Level of Detail", "", "level-of-detail", idle},
    {"actionPointIndexFilterNodes", "Filter Nodes", "", "", open},
    {"actionDatabaseFileCopyPath", "Copy file path", "", "", open},
    {"actionDatabaseFileCopyName", "Copy file name", "", "", open},
    {"actionDatabaseFileCopyFolder", "Copy folder path", "", "", open},
    {"actionDatabaseFileLocateFile", "Locate file...", "", "", open},
    {"actionQuerySelectMore", "Next 1,000", "Shift+F3", "", open},
    {"actionQuerySelectAll", "All", "Ctrl+F3", "", open},
    {"actionQuerySelectCopy", "Copy rows", "Ctrl+C", "", "qr"},
    {"actionQuerySelectCopyCsv", "Copy rows as CSV", "", "", "qr"},
    {"actionQuerySelectCopyFilter", "Copy a filter of the rows", "", "", "qr"},
    {"actionQuerySelectFind", "Find", "Ctrl+F", "", "qr"},
    {"actionQuerySelectCount", "Count", "F4", "count", open},
    {"actionMetaDataFind", "Find", "", "", open},
    {"actionPointAttributeFind", "Find", "", "", open},
    {"actionTransactionFind", "Find", "", "", open},
    {"actionChangelogFind", "Find", "", "", always},
    {"actionPointIndexFind", "Find", "", "", always},
    {"actionInspectionFind", "Find", "", "", always},
    {"actionFullScreen", "Full Screen", "F11", "", always},
    {"actionViewPointCloud", "Point Cloud View", "Ctrl+Shift+P", "", always},
    {"actionViewTop", "Top", "1", "", always},
    {"actionViewFront", "Front", "3", "", always},
    {"actionViewSide", "Side", "7", "", always},
    {"actionViewCorner", "Corner", "9", "", always},
    {"actionViewPerspective", "Perspective", "5", "", always},
    {"actionViewAll", "Full extent", "Home", "", always},
    {"actionViewChosen", "Selection", "E", "", always},
    {"actionViewZoomIn", "Zoom in", "+", "", always},
    {"actionViewZoomOut", "Zoom out", "-", "", always},
    {"actionViewRectangle", "Rectangle", "R", "", always},
    {"actionViewPolygon", "Polygon", "G", "", always},
    {"actionQuerySelectCopyColumn", "Copy column", "", "", "qr"},
    {"actionQuerySelectCopyCellFilter", "Copy a filter of the value", "", "", "qr"},
    {"actionPointNames", "Show names of values", "", "", always},
    {"actionPointValues", "Show values of the point", "", "", always},
    {"actionQuit", "Quit", "Ctrl+Q", "quit", always},
    {"actionColumnsShow", "Show", "", "item-on", some},
    {"actionColumnsHide", "Hide", "", "item-off", some},
    {"actionColumnsSortByName", "Sort by Name", "", "list-sort", open},
    {"actionColumnsSortDefault", "Default Sort Order", "", "list-sort-default", open},
    {"actionValidate", "Validate", "F9", "validate", open},
    {"actionOpenClipboard", "Open Clipboard", "Ctrl+Shift+V", "db-open", always},
    {"actionOpenLastUsed", "Open Last Used", "Ctrl+Shift+O", "db-open", open + "cC"},
    {"actionExportAsQRB", "Export ...", "Ctrl+E", "db-save", open},
    {"actionImportPoints", "Import points ...", "Ctrl+I", "db-new", always},
    {"actionSample", "Sample ...", "", "db-new", always},
    {"actionMetaDataSignature", "Signature", "", "object-locked", one},
    {"actionSwitchLibrary", "Switch library...", "", "switch", always},
    {"actionChangelogExportToTextfile", "Export changelog to textfile", "", "db-save", open},
    {"actionChangelogImportFromDatabase", "Import changelog from database", "", "db-new", open},
    {"actionChangelogVerifyLogEntry", "Verify log entry signature", "", "object-locked", always},
    {"actionChangelogAppendMessage", "Append message to log entry of current transaction", "",
     "edit", open},
    {"actionChangelogLoadFromTextfile", "Load changelog from textfile", "", "db-open", always},
    {"actionChangelogNext", "Go to next", "Ctrl+PgDown", "go-down", always},
    {"actionChangelogPrevious", "Go to previous", "Ctrl+PgUp", "go-up", always},
    {"actionPointAttributeEdit", "Edit", "", "edit", one},
    {"actionWindowNew", "New", "Ctrl+Shift+N", "", always},
    {"actionPointIndexStats", "Stats", "", "count", open},
    {"actionTransactionDiscard", "Delete Selected", "", "", idle},
    {"actionTransactionSize", "Size", "", "count", open},
    {"actionTransactionCompare", "Compare ...", "", "compare", open},
    {"actionProgramSettings", "Settings ...", "Ctrl+,", "edit", never},
    {"actionMetaDataExport", "Export", "", "db-save", some},
    {"actionMetaDataImport", "Import", "", "db-open", open},
    {"actionPluginSettings", "Settings ...", "", "", always},
    {"actionThemeSystem", "System colours", "", "", always},
    {"actionThemeLight", "Light", "", "", always},
    {"actionThemeDark", "Dark", "", "", always},
    {"actionTextLarger", "Larger text", "Ctrl++", "", always},
    {"actionTextSmaller", "Smaller text", "Ctrl+-", "", always},
    {"actionTextNormal", "Normal text size", "Ctrl+0", "", always},
};

// A menu or toolbar and what is on it; "-" is a separator, "*" a widget.
struct Place {
    const char* name;
    QStringList entries;
};

const Place places[] = {
    {"menuBar", {"menuDatabase", "menuView", "menuWindow", "menuPlugins", "menuHelp"}},
    {"menuDatabase",
     {"actionNew", "actionOpen", "actionOpenLastUsed", "menuRecent", "actionOpenClipboard", "-",
      "actionExportAsQRB", "actionImportPoints", "actionSample", "-", "actionReload",
      "actionValidate", "actionClose", "-", "actionProgramSettings", "actionQuit"}},
    {"menuWindow", {"actionWindowNew"}},
    {"menuPlugins", {"actionPluginSettings"}},
    {"menuHelp", {"actionAbout"}},
    {"mainToolBar",
     {"actionNew", "actionOpen", "-", "actionReload", "actionValidate", "actionClose", "-",
      "actionAbout"}},
    {"toolBarTransactions",
     {"actionTransactionBegin", "-", "actionTransactionRollback", "actionTransactionCommit", "-",
      "actionTransactionRestore", "-", "actionTransactionSize", "actionManagementLevelOfDetail",
      "-", "actionManagementVacuum", "*", "-", "actionTransactionCompare"}},
    {"toolBarChangelog",
     {"actionChangelogLoadFromTextfile", "actionChangelogExportToTextfile",
      "actionChangelogVerifyLogEntry", "-", "actionChangelogAppendMessage",
      "actionChangelogImportFromDatabase"}},
    {"toolBarMetaData",
     {"actionMetaDataAdd", "actionMetaDataEdit", "actionMetaDataRemove", "-",
      "actionMetaDataSignature", "-", "actionMetaDataExport", "actionMetaDataImport"}},
    {"toolBarPointAttributes",
     {"actionPointAttributeAdd", "actionPointAttributeEdit", "actionPointAttributeRemove"}},
    {"toolBarInspection", {"actionInspectionUpdate", "-", "*"}},
};

QImage imageOf(const QIcon& icon) {
    return icon.pixmap(32).toImage();
}

QStringList namesOf(const QList<QAction*>& list) {
    QStringList names;
    for (const QAction* action : list)
        names += action->isSeparator()            ? QString("-")
                 : action->menu()                 ? action->menu()->objectName()
                 : action->objectName().isEmpty() ? QString("*")
                                                  : action->objectName();
    return names;
}

}  // namespace

class ActionsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void actionsAreNamedAndPlacedAsTold();
    void statesEnableWhatTheyAllow_data();
    void statesEnableWhatTheyAllow();
    void filterMenuOffersWhatTheDatabaseHas();
    void groupsAreNoAttributes();
    void selectionThatIsTakenBackDisablesAgain();

private:
    std::unique_ptr<SampleWindow> windowIn(char state);
    static void selectRows(const SampleWindow& window, bool several);

    std::unique_ptr<SampleDatabase> m_sample;
    QString m_empty;
    QString m_log;
};

void ActionsTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
    m_empty = m_sample->path("empty.qrbx");
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud empty(context);
    empty.create(m_empty.toStdString(), tarvo::qrb::pointcloud::CreateSettings(context));
    m_log = m_sample->path("log.txt");
    QFile log(m_log);
    QVERIFY(log.open(QIODevice::WriteOnly) && log.write("[#1] one\n") > 0);
}

void ActionsTest::selectRows(const SampleWindow& window, bool several) {
    const struct {
        const char* tab;
        const char* tree;
        const char* first;
        const char* second;
    } lists[] = {
        {"tabTransactions", "treeTransactions", "1", "2"},
        {"tabMetaData", "treeMetaData", "own.note", "own.text"},
        {"tabPointAttributes", "treePointAttributes", "own.single", "own.vector[12]"},
    };
    for (const auto& list : lists) {
        window.driver().showTab(list.tab);
        QVERIFY(window.driver().select(list.tree, list.first));
        if (several)
            QVERIFY(window.driver().select(list.tree, list.second, true));
    }
    window.driver().showTab("tabPointData");
    auto* chooser = window.child<QListWidget>("listPointAttributes");
    for (int row = 0; row < (several ? 2 : 1); ++row)
        QTest::mouseClick(chooser->viewport(), Qt::LeftButton,
                          row > 0 ? Qt::ControlModifier : Qt::NoModifier,
                          chooser->visualItemRect(chooser->item(row)).center());
}

std::unique_ptr<SampleWindow> ActionsTest::windowIn(char state) {
    const bool none = state == 'n' || state == 't';
    auto result = std::make_unique<SampleWindow>(none           ? QString()
                                                 : state == 'e' ? m_empty
                                                                : m_sample->copy());
    const SampleWindow& window = *result;
    switch (state) {
        case 't':
            window.window().openFile(m_log);
            break;
        case 'c':
            window.run("actionClose", {});
            break;
        case 'C':
            window.begin();
            window.run("actionClose", {ModalScript::press("Yes")});
            break;
        case 'O': {
            window.begin();
            ModalScript drop({ModalScript::press("Yes")});
            window.window().openDatabase(m_sample->path("work.qrbx"), true);
            break;
        }
        case 's':
        case 'm':
            selectRows(window, state == 'm');
            break;
        case 'p':
            window.begin();
            break;
        case 'P':
            window.begin();
            window.database().metaData().set("own.text", "changed");
            window.window().refreshPanels();
            selectRows(window, false);
            break;
        case 'b':
            window.begin();
            window.run("actionTransactionRollback", {ModalScript::press("Yes")});
            break;
        case 'q':
        case 'r':
            window.driver().showTab("tabPointData");
            window.run("actionQuerySelectNext", {});
            if (state == 'r')
                window.run("actionQuerySelectCancel", {});
            break;
        default:
            break;
    }
    return result;
}

void ActionsTest::actionsAreNamedAndPlacedAsTold() {
    const SampleWindow window{QString()};
    for (const Expected& expected : actions) {
        const auto* action = window.child<QAction>(expected.name);
        QCOMPARE(action->text().remove('&'), expected.text);
        QCOMPARE(action->shortcut(), QKeySequence(expected.shortcut));
        const QString icon = QString(":/resources/gui/%0.png").arg(expected.icon);
        if (*expected.icon != '\0')
            QVERIFY2(imageOf(action->icon()) == imageOf(QIcon(icon)), expected.name);
        // What the part of the program shows does not depend on the state.
        QCOMPARE(action->isVisible(), expected.states != never);
        const QStringList views = {"actionPointNames", "actionPointValues", "actionFactoryMode",
                                   "actionFullScreen", "actionViewPointCloud",
                                   "actionViewPerspective", "actionViewRectangle",
                                   "actionViewPolygon"};
        QCOMPARE(action->isCheckable(), views.contains(action->objectName()) ||
                                            action->objectName().startsWith("actionTheme"));
    }
    for (const Place& place : places)
        QCOMPARE(namesOf(window.child<QWidget>(place.name)->actions()), place.entries);
    for (const auto* bar : window.window().findChildren<QToolBar*>())
        QVERIFY2(!bar->isMovable() && !bar->isFloatable(), qUtf8Printable(bar->objectName()));
    const auto menuOf = [&](const char* button) {
        const auto* tool = window.child<QToolButton>(button);
        return tool->popupMode() == QToolButton::InstantPopup && tool->menu()
                   ? namesOf(tool->menu()->actions())
                   : QStringList();
    };
    QCOMPARE(menuOf("buttonFinalize"),
             QStringList({"actionManagementFinalize", "actionTransactionDiscard"}));
    QCOMPARE(menuOf("toolButtonDatabaseFile"),
             QStringList({"actionDatabaseFileCopyPath", "actionDatabaseFileCopyName",
                          "actionDatabaseFileCopyFolder", "actionDatabaseFileLocateFile"}));
    // What a list offers with the right mouse button.
    for (const char* list : {"treeTransactions", "treeMetaData", "treePointAttributes",
                             "treePointData", "listPointAttributes"}) {
        QCOMPARE(window.child<QWidget>(list)->contextMenuPolicy(), Qt::ActionsContextMenu);
        QVERIFY2(!window.child<QWidget>(list)->actions().isEmpty(), list);
    }
    QVERIFY(window.window().actions().contains(window.child<QAction>("actionQuerySelectFind")));
}

void ActionsTest::statesEnableWhatTheyAllow_data() {
    QTest::addColumn<QChar>("state");
    QTest::addColumn<QString>("label");
    const std::pair<char, const char*> labels[] = {
        {'n', "no database opened"},
        {'t', "TEXT"},
        {'o', "FILE"},
        {'s', "FILE"},
        {'m', "FILE"},
        {'p', "FILE"},
        {'P', "FILE"},
        {'b', "FILE"},
        {'q', "FILE"},
        {'r', "FILE"},
        {'e', "EMPTY"},
        {'c', "no database opened"},
        {'C', "no database opened"},
        {'O', "FILE"},
    };
    for (const auto& [state, label] : labels)
        QTest::newRow(std::string(1, state).c_str()) << QChar(state) << QString(label);
}

void ActionsTest::statesEnableWhatTheyAllow() {
    QFETCH(QChar, state);
    QFETCH(QString, label);
    const auto window = windowIn(state.toLatin1());
    QStringList wrong;
    QMap<QString, const Expected*> known;
    for (const Expected& expected : actions)
        known[expected.name] = &expected;
    for (const QAction* action : window->window().findChildren<QAction*>()) {
        if (!action->objectName().startsWith("action"))
            continue;
        const Expected* expected = known.take(action->objectName());
        if (!expected)
            wrong += action->objectName() + " is not in the table";
        else if (action->isEnabled() != expected->states.contains(state))
            wrong += action->objectName() + (action->isEnabled() ? " is enabled" : " is disabled");
    }
    for (const QString& name : known.keys())
        wrong += name + " is missing";
    QVERIFY2(wrong.isEmpty(), qUtf8Printable(wrong.join("; ")));

    const bool isOpen = open.contains(state);
    const auto* tabs = window->child<QTabWidget>("tabWidget");
    for (int i = 0; i < tabs->count(); ++i) {
        const QString name = tabs->widget(i)->objectName();
        QCOMPARE(tabs->isTabEnabled(i), isOpen || name == "tabDatabase" || name == "tabChangelog");
    }
    QCOMPARE(window->child<QToolButton>("toolButtonDatabaseFile")->isEnabled(), isOpen);
    QCOMPARE(window->child<QLabel>("labelStatus")->text(),
             QDir::toNativeSeparators(label == "FILE"    ? m_sample->path("work.qrbx")
                                      : label == "EMPTY" ? m_empty
                                      : label == "TEXT"  ? m_log
                                                         : label));
    QCOMPARE(window->window().windowTitle(), label == "FILE"    ? "work.qrbx - qrbadmin"
                                             : label == "EMPTY" ? "empty.qrbx - qrbadmin"
                                             : label == "TEXT"  ? "log.txt - qrbadmin"
                                                                : "qrbadmin");
    const QString transactions = window->child<QLabel>("labelTransactions")->text();
    QCOMPARE(transactions, pending.contains(state) ? QString("Transaction pending...")
                           : state == 'e' ? QString("Transactions: 1, Current transaction: 1")
                           : isOpen       ? QString("Transactions: 3, Current transaction: 3")
                                          : QString());
}

void ActionsTest::filterMenuOffersWhatTheDatabaseHas() {
    for (const bool isOpen : {false, true}) {
        const SampleWindow window(isOpen ? m_sample->copy() : QString());
        const auto* menu = window.child<QToolButton>("buttonFilterMenu")->menu();
        QStringList entries;
        QStringList disabled;
        for (const QAction* action : menu->actions()) {
            entries += action->isSeparator() ? QString("-") : action->text();
            if (!action->isSeparator() && !action->isEnabled())
                disabled += action->text();
        }
        QCOMPARE(entries,
                 QStringList({"Insert attribute name", "Insert attribute property",
                              "Insert operator", "Insert command", "Insert test for a valid value",
                              "Insert range query...", "-", "Clear history", "Clear filter", "-",
                              "Save filter ...", "Saved filters", "Remove saved filter"}));
        for (const char* needsAttributes : {"Insert attribute name", "Insert range query..."})
            QCOMPARE(disabled.contains(needsAttributes), !isOpen);
        QVERIFY2(!isOpen || disabled.isEmpty(), qUtf8Printable(disabled.join(", ")));
        QStringList names;
        for (const QAction* action : menu->actions().first()->menu()->actions()) {
            QCOMPARE(action->data().toString(), action->text());
            names += action->text();
        }
        QCOMPARE(names, isOpen
                            ? QStringList({"own.constant[0]", "own.constant[1]", "own.constant[2]",
                                           "own.single", "own.vector", "tarvo.class", "tarvo.id",
                                           "tarvo.reflectance", "tarvo.timestamp", "tarvo.xyz[0]",
                                           "tarvo.xyz[1]", "tarvo.xyz[2]"})
                            : QStringList());
    }
}

void ActionsTest::groupsAreNoAttributes() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointAttributes");
    auto* tree = window.child<QTreeWidget>("treePointAttributes");
    QVERIFY(window.driver().select("treePointAttributes", tree->topLevelItem(0)->text(0)));
    QVERIFY(tree->topLevelItem(0)->isSelected());
    QVERIFY(!window.child<QAction>("actionPointAttributeEdit")->isEnabled());
    QVERIFY(!window.child<QAction>("actionPointAttributeRemove")->isEnabled());
    // An attribute beside it is still one attribute.
    QVERIFY(window.driver().select("treePointAttributes", "own.single", true));
    QVERIFY(window.child<QAction>("actionPointAttributeEdit")->isEnabled());
}

void ActionsTest::selectionThatIsTakenBackDisablesAgain() {
    const SampleWindow window(m_sample->copy());
    selectRows(window, false);
    window.child<QListWidget>("listPointAttributes")->clearSelection();
    for (const char* tree : {"treeMetaData", "treePointAttributes"})
        window.child<QTreeWidget>(tree)->clearSelection();
    for (const char* name :
         {"actionMetaDataRemove", "actionMetaDataEdit", "actionMetaDataSignature",
          "actionMetaDataExport", "actionPointAttributeEdit", "actionPointAttributeRemove",
          "actionColumnsShow", "actionColumnsHide"})
        QVERIFY2(!window.child<QAction>(name)->isEnabled(), name);
}

GUI_TEST_MAIN(ActionsTest)
#include "actionstest.moc"
