// What the window offers where something is missing: a transaction, a database, another library's
// place; and what it tells of the state it is in, from every tab.
#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"
#include "window/common/appearance.h"
#include "window/common/programsettings.h"
#include "window/common/theme.h"
#include "window/frame/startpage.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

using namespace tarvo::window;
using Step = ModalScript::Step;

namespace {

Step typeMessage(const QString& text) {
    return [text](QDialog* dialog) {
        auto* edit = in<QPlainTextEdit>(dialog, "editMessage");
        edit->setFocus();
        QTest::keyClicks(edit, text);
        ModalScript::press("OK")(dialog);
    };
}

}  // namespace

class OffersTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init() { m_window = std::make_unique<SampleWindow>(m_sample->copy()); }
    void cleanup() { m_window.reset(); }

    void transactionIsOfferedAndWhatWasTypedKept();
    void everyActOffersATransaction_data();
    void everyActOffersATransaction();
    void pendingStateIsSeenFromEveryTab();
    void deletionsTellWhatTheyFree();
    void databaseForReadingOnlyIsLeftAlone();
    void changelogSearchTellsWhatItFinds();
    void startPageOpensFiles();
    void windowsAreNamedAndStandBesideEachOther();
    void listsTakeTheUsualKeys();
    void keysAreKeptAndForgotten();
    void settingsThatCanNotBeWrittenAreToldOnce();
    void licencesAreShown();

private:
    QString committedTitle() const;
    QString status() const { return m_window->child<QStatusBar>("statusBar")->currentMessage(); }
    bool isPending() const { return m_window->database().transactions().pending(); }

    std::unique_ptr<SampleDatabase> m_sample;
    std::unique_ptr<SampleWindow> m_window;
};

void OffersTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void OffersTest::cleanupTestCase() {
    tarvo::qrb::freeLibrary();
}

QString OffersTest::committedTitle() const {
    const auto& transactions = m_window->database().transactions();
    return QString::fromStdString(transactions.details(transactions.current()).title);
}

void OffersTest::transactionIsOfferedAndWhatWasTypedKept() {
    m_window->driver().showTab("tabChangelog");
    const QStringList texts = m_window->run("actionChangelogAppendMessage",
                                            {typeMessage("Looked at"), ModalScript::press("No"),
                                             typeMessage(" twice"), ModalScript::press("Yes")});
    QCOMPARE(texts.value(0), texts.value(1));
    QCOMPARE(texts.value(0),
             "No transaction is pending.\n"
             "Begin the transaction \"Append a message to the changelog\" and go on?");
    QVERIFY(isPending());
    auto* log = m_window->child<QPlainTextEdit>("editChangelog");
    QVERIFY(log->toPlainText().contains("Looked at twice"));
    // It is seen at once.
    QVERIFY(log->textCursor().atEnd());
    QCOMPARE(status(), "Message appended.");
    m_window->run("actionTransactionCommit", {ModalScript::press("OK")});
    QCOMPARE(committedTitle(), "Append a message to the changelog");
    QCOMPARE(log->toPlainText().count("Looked at twice"), 1);
    // What is only announced goes with the transaction.
    m_window->begin();
    m_window->run("actionChangelogAppendMessage", {typeMessage("Never mind")});
    QVERIFY(log->toPlainText().contains("Never mind"));
    QVERIFY(m_window->child<QLabel>("labelChangelogEntries")
                ->text()
                .endsWith(QString::number(log->toPlainText().count("[#"))));
    m_window->run("actionTransactionRollback", {ModalScript::press("Yes")});
    QVERIFY(!log->toPlainText().contains("Never mind"));
}

void OffersTest::everyActOffersATransaction_data() {
    QTest::addColumn<QString>("tab");
    QTest::addColumn<QString>("tree");
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("title");
    QTest::newRow("remove item") << "tabMetaData"
                                 << "treeMetaData"
                                 << "own.note"
                                 << "actionMetaDataRemove"
                                 << "Remove meta data items";
    QTest::newRow("remove attribute") << "tabPointAttributes"
                                      << "treePointAttributes"
                                      << "own.single"
                                      << "actionPointAttributeRemove"
                                      << "Remove point attributes";
}

void OffersTest::everyActOffersATransaction() {
    QFETCH(QString, tab);
    QFETCH(QString, tree);
    QFETCH(QString, row);
    QFETCH(QString, action);
    QFETCH(QString, title);
    const auto driver = m_window->driver();
    driver.showTab(qUtf8Printable(tab));
    QVERIFY(driver.select(qUtf8Printable(tree), row));
    QStringList texts = m_window->run(qUtf8Printable(action),
                                      {ModalScript::press("Yes"), ModalScript::press("No")});
    QVERIFY2(texts.value(1).contains('"' + title + '"'), qUtf8Printable(texts.value(1)));
    QVERIFY(!isPending());
    QVERIFY(driver.select(qUtf8Printable(tree), row));
    m_window->run(qUtf8Printable(action), {ModalScript::press("Yes"), ModalScript::press("Yes")});
    QVERIFY(isPending());
    QVERIFY(!driver.select(qUtf8Printable(tree), row));
    m_window->run("actionTransactionCommit", {ModalScript::press("OK")});
    QCOMPARE(committedTitle(), title);
}

void OffersTest::pendingStateIsSeenFromEveryTab() {
    auto* bar = m_window->child<QWidget>("pendingBar");
    QVERIFY(!bar->isVisible());
    m_window->begin();
    const auto* tabs = m_window->child<QTabWidget>("tabWidget");
    for (int i = 0; i < tabs->count(); ++i) {
        m_window->driver().showTab(qUtf8Printable(tabs->widget(i)->objectName()));
        QVERIFY(bar->isVisible());
    }
    m_window->driver().showTab("tabMetaData");
    ModalScript script({ModalScript::press("Yes")});
    for (auto* button : bar->findChildren<QToolButton*>())
        if (button->text() == "Rollback")
            QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(script.answered(), std::size_t(1));
    QVERIFY(!isPending());
    QVERIFY(!bar->isVisible());
}

void OffersTest::deletionsTellWhatTheyFree() {
    const auto driver = m_window->driver();
    driver.showTab("tabTransactions");
    const std::uint64_t size = m_window->database().transactions().size({2});
    const QStringList texts = m_window->run("actionManagementFinalize", {ModalScript::press("No")});
    QVERIFY2(texts.value(0).contains("1 transaction can't be restored then. That frees about " +
                                     QString::number(size / 1024).left(1)),
             qUtf8Printable(texts.value(0)));
    // The first and the current one can't go.
    for (const char* id : {"1", "2", "3*"})
        QVERIFY(driver.select("treeTransactions", id, *id != '1'));
    QCOMPARE(m_window->run("actionTransactionDiscard", {ModalScript::press("No")})
                 .value(0)
                 .section("\n\n", -1),
             texts.value(0).section("\n\n", -1));
}

void OffersTest::databaseForReadingOnlyIsLeftAlone() {
    const QString name = m_window->window().session().fileName;
    m_window->run("actionOpen", {[](QDialog* dialog) {
                      QTest::mouseClick(in<QCheckBox>(dialog, "checkReadOnly"), Qt::LeftButton, {},
                                        QPoint(8, 8));
                      QVERIFY(in<QCheckBox>(dialog, "checkReadOnly")->isChecked());
                      ModalScript::press("OK")(dialog);
                  }});
    QVERIFY(m_window->window().session().readOnly);
    QVERIFY(m_window->child<QLabel>("labelStatus")->text().endsWith(" (for reading only)"));
    m_window->driver().showTab("tabMetaData");
    QVERIFY(m_window->driver().select("treeMetaData", "own.note"));
    for (const char* action :
         {"actionTransactionBegin", "actionManagementVacuum", "actionMetaDataAdd",
          "actionMetaDataRemove", "actionMetaDataImport", "actionPointAttributeAdd",
          "actionChangelogAppendMessage", "actionChangelogImportFromDatabase"})
        QVERIFY2(!m_window->child<QAction>(action)->isEnabled(), action);
    // An item can still be looked at.
    QString told;
    const QStringList texts = m_window->run(
        "actionMetaDataEdit", {[&](QDialog* dialog) {
                                   told = in<QLabel>(dialog, "labelTransaction")->text();
                                   in<QPlainTextEdit>(dialog, "editValue")->setPlainText("1");
                                   ModalScript::press("OK")(dialog);
                               },
                               ModalScript::press("OK"), [](QDialog* dialog) { dialog->reject(); },
                               ModalScript::press("Yes")});
    QCOMPARE(told, "The database was opened for reading only: changes can't be saved.");
    QVERIFY2(texts.value(0).startsWith("The database was opened for reading only."),
             qUtf8Printable(texts.join('|')));
    m_window->driver().showTab("tabPointAttributes");
    QVERIFY(m_window->driver().select("treePointAttributes", "own.single"));
    m_window->run("actionPointAttributeEdit", {[&](QDialog* dialog) {
                      in<QLineEdit>(dialog, "editTitle")->setText("Typed");
                      QVERIFY(in<QLabel>(dialog, "labelSummary")->text().endsWith(told));
                      QVERIFY(!in<QDialogButtonBox>(dialog, "buttonBox")
                                   ->button(QDialogButtonBox::Ok)
                                   ->isEnabled());
                      ModalScript::press("Cancel")(dialog);
                  }});
    // Others may change it meanwhile.
    const SampleWindow other(name);
    other.begin();
    QVERIFY(other.database().transactions().pending());
}

void OffersTest::changelogSearchTellsWhatItFinds() {
    m_window->driver().showTab("tabChangelog");
    auto* field = m_window->child<QLineEdit>("editChangelogSearch");
    const auto search = [&](const QString& pattern) {
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, pattern);
        m_window->child<QStatusBar>("statusBar")->clearMessage();
        QTest::keyClick(field, Qt::Key_Return);
        return status();
    };
    QCOMPARE(search("#2"), "");
    QCOMPARE(search("nowhere at all"), "No \"nowhere at all\" after the cursor.");
    const QString fault = search("a(b");
    QVERIFY2(fault.startsWith("\"a(b\" is no regular expression: "), qUtf8Printable(fault));
    // Before an entry's first character one is in none.
    auto* log = m_window->child<QPlainTextEdit>("editChangelog");
    QTextCursor cursor = log->textCursor();
    cursor.setPosition(static_cast<int>(log->toPlainText().indexOf("[#2]")));
    log->setTextCursor(cursor);
    QCOMPARE(m_window->run("actionChangelogVerifyLogEntry", {ModalScript::press("OK")}).value(0),
             "Please select (double click) a signature first.");
}

void OffersTest::startPageOpensFiles() {
    const QString name = m_window->window().session().fileName;
    const QString gone = m_sample->copy("gone.qrbx");
    m_window->window().openDatabase(gone, true);
    auto* page = m_window->window().findChild<StartPage*>();
    m_window->driver().showTab("tabDatabase");
    QVERIFY(!page->isVisible());
    QVERIFY(m_window->child<QLineEdit>("editDatabaseUUID")->isVisible());
    m_window->run("actionClose", {});
    QVERIFY(page->isVisible());
    QVERIFY(!m_window->child<QLineEdit>("editDatabaseUUID")->isVisible());
    QVERIFY(m_window->child<QLineEdit>("editCurrentLibrary")->isVisible());
    QVERIFY(QFile::remove(gone));
    page->refresh();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const auto buttons = page->findChildren<QPushButton*>();
    QVERIFY(buttons.size() >= 2);
    QVERIFY(!buttons[0]->isEnabled());
    QVERIFY(buttons[1]->text().contains(QFileInfo(name).fileName()));
    QTest::mouseClick(buttons[1], Qt::LeftButton);
    QTRY_COMPARE(m_window->window().session().fileName, name);
    QVERIFY(!page->isVisible());
}

void OffersTest::windowsAreNamedAndStandBesideEachOther() {
    MainWindow& first = m_window->window();
    QCOMPARE(first.windowTitle(), "work.qrbx - qrbadmin");
    const auto before = QApplication::topLevelWidgets();
    m_window->run("actionWindowNew", {});
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* second = qobject_cast<MainWindow*>(widget);
        if (!second || before.contains(widget))
            continue;
        QCOMPARE(second->windowTitle(), "qrbadmin");
        QCOMPARE(second->size(), first.size());
        QVERIFY(second->pos() != first.pos());
        second->close();
        return;
    }
    QFAIL("there is no second window");
}

void OffersTest::listsTakeTheUsualKeys() {
    m_window->begin();
    for (const auto& [tab, tree, row] :
         {std::tuple("tabMetaData", "treeMetaData", "own.note"),
          std::tuple("tabPointAttributes", "treePointAttributes", "own.single")}) {
        const auto driver = m_window->driver();
        driver.showTab(tab);
        QVERIFY(driver.select(tree, row));
        const auto press = [&](Qt::Key key) {
            m_window->window().activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&m_window->window()));
            QVERIFY(m_window->child<QTreeWidget>(tree)->hasFocus());
            QTest::keyClick(m_window->child<QTreeWidget>(tree), key);
        };
        ModalScript edit({[](QDialog* dialog) { dialog->reject(); }});
        press(Qt::Key_Return);
        QCOMPARE(edit.answered(), std::size_t(1));
        ModalScript remove({ModalScript::press("Yes")});
        press(Qt::Key_Delete);
        QVERIFY2(remove.texts().value(0).startsWith("Remove "), tab);
        QVERIFY(!driver.select(tree, row));
    }
}

void OffersTest::keysAreKeptAndForgotten() {
    const QString name = m_sample->path("key");
    m_window->begin();
    m_window->driver().showTab("tabMetaData");
    QVERIFY(m_window->driver().select("treeMetaData", "own.note"));
    QString key;
    QString loaded;
    QStringList states;
    m_window->run("actionMetaDataSignature", {[&](QDialog* dialog) {
                      const auto state = [&] {
                          states += in<QLabel>(dialog, "labelState")->text();
                      };
                      const auto click = [&](const char* button) {
                          QTest::mouseClick(in<QPushButton>(dialog, button), Qt::LeftButton);
                      };
                      state();
                      click("buttonRandomKey");
                      key = in<QPlainTextEdit>(dialog, "editKey")->toPlainText();
                      {
                          ModalScript save({ModalScript::chooseFile(name)});
                          click("buttonSaveKey");
                      }
                      {
                          ModalScript told({ModalScript::press("OK")});
                          click("buttonCreate");
                      }
                      state();
                      click("buttonForgetKey");
                      QVERIFY(in<QPlainTextEdit>(dialog, "editKey")->toPlainText().isEmpty());
                      QVERIFY(!in<QPushButton>(dialog, "buttonForgetKey")->isEnabled());
                      {
                          ModalScript load({ModalScript::chooseFile(name + ".txt")});
                          click("buttonLoadKey");
                      }
                      loaded = in<QPlainTextEdit>(dialog, "editKey")->toPlainText();
                      click("buttonForgetKey");
                      dialog->reject();
                  }});
    QCOMPARE(states, QStringList({"The item is not signed.", "The item is signed."}));
    QVERIFY(
        DialogSettings("DialogMetaDataSignature").value("SignatureKey").toByteArray().isEmpty());
    QCOMPARE(loaded, key);
    // The dialog that loads keys shows files of that extension.
    QFile file(name + ".txt");
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()).trimmed(), key.trimmed());
    QVERIFY(!(file.permissions() & (QFile::ReadGroup | QFile::ReadOther)));
}

void OffersTest::settingsThatCanNotBeWrittenAreToldOnce() {
    const QString place = QFileInfo(ProgramSettings().fileName()).path();
    QStringList told;
    onUnwrittenSettings([&](const QString& fileName) { told += fileName; });
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, "/proc/none");
    setTheme(Theme::DARK);
    const bool isDark = tarvo::window::isDark(QApplication::palette());
    setTheme(Theme::LIGHT);
    const bool isLight = !tarvo::window::isDark(QApplication::palette());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QFileInfo(place).path());
    QVERIFY(isDark && isLight);
    QCOMPARE(told.size(), 1);
    QVERIFY(told[0].startsWith("/proc/none"));
}

void OffersTest::licencesAreShown() {
    QString text;
    m_window->run("actionAbout", {[](QDialog* box) {
                                      ModalScript::press("Licences ...")(box);
                                      QVERIFY(box->isVisible());
                                      ModalScript::press("OK")(box);
                                  },
                                  [&](QDialog* dialog) {
                                      text =
                                          in<QPlainTextEdit>(dialog, "editLicences")->toPlainText();
                                      dialog->reject();
                                  }});
    // The program's own, and one whose text comes from the packages, without the marks in it.
    QVERIFY(text.contains("MIT License\n\nCopyright"));
    QVERIFY(text.contains("met:\n\n* Redistributions of source code"));
    QVERIFY(!text.contains('@'));
    // The style forgets the box' widgets.
    setTheme(Theme::DARK);
    setTheme(Theme::LIGHT);
}

GUI_TEST_MAIN(OffersTest)
#include "offerstest.moc"
