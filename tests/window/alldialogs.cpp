#include "tests/window/alldialogs.h"

#include "window/dialogs/attribute/dialognamedvalues.h"
#include "window/dialogs/attribute/dialogpointattributelod.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTreeWidget>
#include <QtTest>
#include <string>

using namespace tarvo::window;

using Step = ModalScript::Step;

namespace {

void goToEntry(const SampleWindow& window, int entry) {
    window.driver().showTab("tabChangelog");
    auto* log = window.child<QPlainTextEdit>("editChangelog");
    QTextCursor cursor = log->textCursor();
    cursor.setPosition(
        static_cast<int>(log->toPlainText().indexOf(QString("[#%0]").arg(entry)) + 1));
    log->setTextCursor(cursor);
}

void editAs(const SampleWindow& window, const char* tab, const char* tree, const char* row,
            const char* action, Step step) {
    window.driver().showTab(tab);
    QVERIFY(window.driver().select(tree, row));
    window.run(action, {std::move(step)});
}

OpenDialog byAction(const char* action, bool pending = false) {
    return [=](const SampleWindow& window, Step step) {
        if (pending && window.child<QAction>("actionTransactionBegin")->isEnabled())
            window.begin();
        window.run(action, {std::move(step)});
    };
}

}  // namespace

const std::map<QString, OpenDialog>& allDialogs() {
    static const std::map<QString, OpenDialog> all = {
        {"DialogOpenSettings", byAction("actionOpen")},
        {"DialogCreateSettings", byAction("actionNew")},
        {"DialogExportAsQRB", byAction("actionExportAsQRB")},
        {"DialogLicences",
         [](const SampleWindow& window, Step step) {
             // Opens upon the about box, which stays.
             const Step about = [](QDialog* box) {
                 ModalScript::press(QObject::tr("&Licences ...").remove('&'))(box);
                 ModalScript::press("OK")(box);
             };
             window.run("actionAbout", {about, std::move(step)});
         }},
        {"DialogImportPoints",
         [](const SampleWindow& window, Step step) {
             const QFileInfo database(window.window().session().fileName);
             QFile file(database.dir().filePath("points.csv"));
             QVERIFY(file.open(QIODevice::WriteOnly) && file.write("x,y,z\n1,2,3\n") > 0);
             file.close();
             window.run("actionImportPoints",
                        {ModalScript::chooseFile(file.fileName()), std::move(step)});
         }},
        {"DialogTransaction", byAction("actionTransactionBegin")},
        {"DialogTransactionCommit", byAction("actionTransactionCommit", true)},
        {"DialogLevelOfDetail", byAction("actionManagementLevelOfDetail")},
        {"DialogIndexStatistics", byAction("actionPointIndexStats")},
        {"DialogValidate", byAction("actionValidate")},
        {"DialogChangelogMessage", byAction("actionChangelogAppendMessage", true)},
        {"DialogChangelogSignature",
         [](const SampleWindow& window, Step step) {
             goToEntry(window, 2);
             window.run("actionChangelogVerifyLogEntry", {std::move(step)});
         }},
        {"DialogMetaDataSignature",
         [](const SampleWindow& window, Step step) {
             editAs(window, "tabMetaData", "treeMetaData", "own.signed", "actionMetaDataSignature",
                    std::move(step));
         }},
        {"DialogMetaData",
         [](const SampleWindow& window, Step step) {
             editAs(window, "tabMetaData", "treeMetaData", "own.note", "actionMetaDataEdit",
                    std::move(step));
         }},
        {"DialogPointAttribute",
         [](const SampleWindow& window, Step step) {
             editAs(window, "tabPointAttributes", "treePointAttributes", "own.single",
                    "actionPointAttributeEdit", std::move(step));
         }},
        {"DialogPointAttributeLod",
         [](const SampleWindow& window, Step step) {
             ModalScript script({std::move(step)});
             std::string settings = "default";
             DialogPointAttributeLod::edit(settings, &window.window());
             QCOMPARE(settings, std::string("default"));
         }},
        {"DialogNamedValues",
         [](const SampleWindow& window, Step step) {
             ModalScript script({std::move(step)});
             std::string values = "1=one";
             DialogNamedValues::edit(values, nullptr, &window.window());
             QCOMPARE(values, std::string("1=one"));
         }},
    };
    return all;
}
