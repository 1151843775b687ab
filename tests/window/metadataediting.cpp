#include "tests/window/metadataediting.h"

#include "qrb/loader.h"
#include "qrb/pointcloud.h"
#include "tests/window/guitestmain.h"

#include <QFile>
#include <QtTest>

void MetaDataEditingTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
}

void MetaDataEditingTest::init() {
    m_file = m_folder.filePath("work.qrbx");
    QFile::remove(m_file);
    QVERIFY(QFile::copy(QRB_GOLDEN "/latin1.qrbx", m_file));  // has "own.bytes"
    QVERIFY(QFile::setPermissions(m_file, QFile::ReadOwner | QFile::WriteOwner));
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud cloud(context);
    cloud.open(m_file.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
    tarvo::qrb::pointcloud::TransactionGuard guard(cloud.transactions(), "Items", "tests");
    cloud.metaData().set("tarvo.geo_tag", R"({"crs":{"epsg":5,"name":"x"},"pose":[[1,2],"y"]})");
    cloud.metaData().set("own.signed", "{\"b\":1.50}");
    cloud.metaData().set("own.text", "no { JSON");
    cloud.metaData().set("own.lines", "one\r\ntwo\xe2\x80\xa9three");
    cloud.metaData().set("own.blanks",
                         "1\xc2\xa0"
                         "000 m");
    cloud.metaData().createSignature("own.signed", 1, {1, 2});
    guard.commit();
    cloud.close();
    m_window = showFreshWindow();
    m_window->openDatabase(m_file, true);
}

void MetaDataEditingTest::cleanup() {
    ModalScript drop({ModalScript::press("Yes")});  // only where a transaction is pending
    m_window->close();
    m_window.reset();
}

void MetaDataEditingTest::cleanupTestCase() {
    tarvo::qrb::freeLibrary();
}

void MetaDataEditingTest::begin() {
    run("actionTransactionBegin", {ModalScript::press("OK")});
    driver().showTab("tabMetaData");
}

std::string MetaDataEditingTest::committed(const char* name) {
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud cloud(context);
    cloud.open(m_file.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
    return cloud.metaData().get(name, "(none)");
}

void MetaDataEditingTest::type(QDialog* dialog, const QString& text) {
    pane(dialog)->setFocus();
    pane(dialog)->selectAll();
    QTest::keyClicks(pane(dialog), text);
}
