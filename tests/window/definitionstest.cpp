// Metadata items and attributes, removed, signed, exported and imported with mouse and keys.

#include "tests/window/guitestmain.h"
#include "tests/window/notedwindow.h"

#include <QAction>
#include <QDialog>
#include <QFile>
#include <QPlainTextEdit>
#include <QtTest>

using namespace tarvo::window;

class DefinitionsTest : public NotedWindowTest {
    Q_OBJECT

private slots:
    void metadataIsRemovedExportedAndImported();
    void metadataFilesThatAreWrongAreExplained();
    void metadataItemIsSignedAndUnsigned();
    void attributesAreRemovedAfterAsking();
};

void DefinitionsTest::metadataIsRemovedExportedAndImported() {
    showTab("tabMetaData");
    QVERIFY(!child<QAction>("actionMetaDataRemove")->isEnabled());
    QVERIFY(select("treeMetaData", "own.note"));
    auto* text = select("treeMetaData", "own.text", true);
    QVERIFY(text);
    QCOMPARE(text->text(1), "text");
    const QString file = m_folder.filePath("items.json");
    QCOMPARE(run("actionMetaDataExport", {ModalScript::chooseFile(file), ModalScript::press("OK")}),
             QStringList("Export successfully finished."));
    begin("remove");
    QVERIFY(select("treeMetaData", "own.note"));
    QVERIFY(select("treeMetaData", "own.text", true));
    QCOMPARE(run("actionMetaDataRemove", {ModalScript::press("Yes")}),
             QStringList("Remove 2 entries?"));
    QVERIFY(!select("treeMetaData", "own.note"));
    QCOMPARE(run("actionMetaDataImport", {ModalScript::chooseFile(file), ModalScript::press("OK")}),
             QStringList("Import successfully finished.\n\nItems added: own.note, own.text\n"
                         "Items updated: (none)"));
    run("actionTransactionCommit", {ModalScript::press("OK")});
    prepare([](tarvo::qrb::Pointcloud& cloud) {
        QCOMPARE(cloud.metaData().get("own.text"), std::string("no { JSON"));
        QCOMPARE(cloud.metaData().get("own.note"), std::string("{\"a\":[1,2.50]}"));
    });
}

void DefinitionsTest::metadataFilesThatAreWrongAreExplained() {
    showTab("tabMetaData");
    begin("import");
    const auto import = [this](const QByteArray& text) {
        QFile file(m_folder.filePath("wrong.json"));
        if (!file.open(QIODevice::WriteOnly))
            return QString("the file can't be made");
        file.write(text);
        file.close();
        return run("actionMetaDataImport",
                   {ModalScript::chooseFile(file.fileName()), ModalScript::press("OK")})
            .value(0);
    };
    QCOMPARE(import("[1, 2]"), "The top-level element is expected to be an object.");
    QVERIFY(import("{\"a\": ").startsWith("Failed to parse JSON string: "));
    QVERIFY(import("{\"a\": ").contains(" Position: "));
    QCOMPARE(import("{\"x.a\": \"one\", \"x.b\": 2, \"own.note\": {\"c\": 3}}"),
             "Import successfully finished.\n\nItems added: x.a\nItems updated: own.note\n"
             "Members skipped: x.b (number)");
    QVERIFY(!select("treeMetaData", "x.b"));
}

void DefinitionsTest::metadataItemIsSignedAndUnsigned() {
    showTab("tabMetaData");
    begin("sign");
    const auto withKey = [this](const QString& button, bool close = true) -> Step {
        return [=, this](QDialog* dialog) {
            in<QPlainTextEdit>(dialog, "editKey")->setPlainText(m_key);
            ModalScript::press(button)(dialog);
            if (close)
                ModalScript::press("Close")(dialog);
        };
    };
    const Step ok = ModalScript::press("OK");
    const auto act = [&](std::vector<Step> steps) {
        select("treeMetaData", "own.note");
        return run("actionMetaDataSignature", std::move(steps));
    };
    QCOMPARE(act({withKey("Delete Signature"), ok}), QStringList("The item is not signed."));
    QCOMPARE(act({withKey("Create Signature"), ok}),
             QStringList("Signature successfully created."));
    QCOMPARE(act({withKey("Verify Signature", false), ok}),
             QStringList("Signature successfully verified."));
    QCOMPARE(act({withKey("Create Signature"), ModalScript::press("No")}),
             QStringList("The item is already signed.\nOverwrite existing signature?"));
    QCOMPARE(act({withKey("Delete Signature"), ModalScript::press("Yes"), ok}),
             QStringList({"Delete signature?", "Signature successfully deleted."}));
}

void DefinitionsTest::attributesAreRemovedAfterAsking() {
    showTab("tabPointAttributes");
    begin("remove");
    auto* row = select("treePointAttributes", "tarvo.target_index");
    QVERIFY(row);
    QCOMPARE(run("actionPointAttributeRemove", {ModalScript::press("Yes")}),
             QStringList("Remove attribute \"tarvo.target_index\"?"));
    QVERIFY(!select("treePointAttributes", "tarvo.target_index"));
    // The primary one can't go: one box, and it is still there.
    QVERIFY(select("treePointAttributes", "tarvo.xyz[3]*"));
    QCOMPARE(
        run("actionPointAttributeRemove", {ModalScript::press("Yes"), ModalScript::press("OK")})
            .size(),
        2);
    QVERIFY(select("treePointAttributes", "tarvo.xyz[3]*"));
}

GUI_TEST_MAIN(DefinitionsTest)
#include "definitionstest.moc"
