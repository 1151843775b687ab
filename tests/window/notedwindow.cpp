#include "tests/window/notedwindow.h"

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"

#include <QFile>
#include <QLineEdit>
#include <QtTest>

using namespace tarvo::window;

void NotedWindowTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_original = makeTestDatabase(m_folder.path());
    QVERIFY2(m_original.error.isEmpty(), qUtf8Printable(m_original.error));
}

void NotedWindowTest::init() {
    m_file = m_folder.filePath("work.qrbx");
    QFile::remove(m_file);
    QVERIFY(QFile::copy(m_original.fileName, m_file));
    prepare([](tarvo::qrb::Pointcloud& cloud) {
        tarvo::qrb::pointcloud::TransactionGuard guard(cloud.transactions(), "Notes", "tests");
        cloud.metaData().set("own.note", "{\"a\": [1, 2.50]}");
        cloud.metaData().set("own.text", "no { JSON");
        guard.commit({1, {0x0a, 0x1b, 0x2c}});
    });
    m_window = showFreshWindow();
    m_window->openDatabase(m_file, true);
}

void NotedWindowTest::cleanup() {
    ModalScript drop({ModalScript::press("Yes")});  // only where a transaction is pending
    m_window->close();
    m_window.reset();
}

void NotedWindowTest::cleanupTestCase() {
    tarvo::qrb::freeLibrary();
}

void NotedWindowTest::prepare(const std::function<void(tarvo::qrb::Pointcloud&)>& change) {
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud cloud(context);
    cloud.open(m_file.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
    change(cloud);
}

void NotedWindowTest::begin(const QString& title) {
    run("actionTransactionBegin", {[&](QDialog* dialog) {
            QTest::keyClicks(in<QLineEdit>(dialog, "editTitle"), title);
            ModalScript::press("OK")(dialog);
        }});
}
