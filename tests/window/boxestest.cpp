// The pieces that all tabs and dialogs share: boxes with a message or a question, the list of what
// is checked, the colours of the changelog, and what the window takes from outside.

#include "files/error.h"
#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"
#include "window/common/appearance.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/programsettings.h"
#include "window/common/textfiles.h"
#include "window/dialogs/workingdialog.h"
#include "window/panels/listfindbar.h"
#include "window/widgets/checklist.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QTextBlock>
#include <QTextLayout>
#include <QTreeWidget>
#include <QUrl>
#include <QtTest>
#include <memory>
#include <stdexcept>

using namespace tarvo::window;

class BoxesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void questionsBeginWithTheAnswerThatLosesNothing();
    void messagesHaveTheirKindAndStayText();
    void errorsTellFileAndReason();
    void waitingEndsWithTheWork();
    void workThatWasCancelledCanBeDoneAgain();
    void checkListChecksWhatItShows();
    void findBarFindsLettersOfBothCases();
    void changelogIsColoured();
    void textSizeHasLimits();
    void onlyFilesThatCanBeShownAreTaken();
    void folderIsShownWhereNoFileManagerListens();

public slots:
    void openOutside(const QUrl& url) { m_openedOutside += url; }

private:
    std::unique_ptr<SampleDatabase> m_sample;
    QList<QUrl> m_openedOutside;
};

void BoxesTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void BoxesTest::questionsBeginWithTheAnswerThatLosesNothing() {
    const struct {
        std::function<bool()> ask;
        bool loss;
    } questions[] = {{[] { return confirmed(nullptr, "<b>Go on</b>?"); }, false},
                     {[] { return lossConfirmed(nullptr, "<b>Go on</b>?"); }, true},
                     {[] { return lossConfirmed(nullptr, "<b>Go on</b>?", "Do it"); }, true}};
    for (const auto key : {Qt::Key_Return, Qt::Key_Escape})
        for (const auto& question : questions) {
            QString text;
            Qt::TextFormat format = Qt::AutoText;
            ModalScript script({[&](QDialog* dialog) {
                auto* box = qobject_cast<QMessageBox*>(dialog);
                text = box->text();
                format = box->textFormat();
                QTest::keyClick(box->defaultButton(), key);
            }});
            QCOMPARE(question.ask(), !question.loss && key == Qt::Key_Return);
            QCOMPARE(text, "<b>Go on</b>?");
            QCOMPARE(format, Qt::PlainText);
        }
    ModalScript script({ModalScript::press("Do it")});
    QVERIFY(lossConfirmed(nullptr, "Go on?", "Do it"));
}

void BoxesTest::messagesHaveTheirKindAndStayText() {
    const QString many = QString("line\n").repeated(40);
    const struct {
        std::function<void()> show;
        QMessageBox::Icon icon;
        QString title;
        QString text;
        QString details;
        QString buttons;
    } boxes[] = {
        {[] { showInformation(nullptr, "<i>done"); }, QMessageBox::Information, "", "<i>done", "",
         "OK"},
        {[] { showWarning(nullptr, "<i>odd"); }, QMessageBox::Warning, "qrbadmin", "<i>odd", "",
         "OK"},
        {[] { showError(nullptr, "<i>bad", "worse"); }, QMessageBox::Critical, "qrbadmin",
         "<i>bad\n\nworse", "", "Copy,OK"},
        {[&] { showError(nullptr, "bad", many); }, QMessageBox::Critical, "qrbadmin", "bad", many,
         "Copy,OK,Show Details..."},
    };
    for (const auto& expected : boxes) {
        ModalScript script({[&](QDialog* dialog) {
            const auto* box = qobject_cast<QMessageBox*>(dialog);
            QStringList buttons;
            for (const auto* button : box->buttons())
                buttons += button->text().remove('&');
            buttons.sort();
            const QStringList shown = {box->windowTitle(), box->text(), box->detailedText(),
                                       buttons.join(',')};
            const auto icon = box->icon();
            const auto format = box->textFormat();
            QTest::keyClick(dialog, Qt::Key_Escape);
            QCOMPARE(shown, QStringList({expected.title, expected.text, expected.details,
                                         expected.buttons}));
            QCOMPARE(icon, expected.icon);
            QCOMPARE(format, Qt::PlainText);
        }});
        expected.show();
        QCOMPARE(script.answered(), 1u);
        QVERIFY(!QApplication::activeModalWidget());
    }
}

void BoxesTest::errorsTellFileAndReason() {
    const auto told = [](const std::function<void()>& action) {
        try {
            action();
        } catch (...) {
            const auto [text, details] = describe(std::current_exception());
            return text + '|' + details;
        }
        return QString();
    };
    QCOMPARE(told([] { throw tarvo::files::FileError("No room.", "Free some."); }),
             "No room.|Free some.");
    // It can be opened, but not read.
    const QString unreadable = told([] { readFile("/proc/self/mem"); });
    QVERIFY2(unreadable.contains("/proc/self/mem"), qUtf8Printable(unreadable));
    const QString refused = told([] { openOutput("/proc/own.json", "No export."); });
    QVERIFY2(
        QRegularExpression(R"(\ANo export\.\|.*/proc/own\.json.*\n.+\z)").match(refused).hasMatch(),
        qUtf8Printable(refused));
}

void BoxesTest::waitingEndsWithTheWork() {
    ModalScript script({ModalScript::press("OK")});
    QVERIFY(!guarded(nullptr, [] {
        const WaitCursor outer;
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        throw std::runtime_error("It failed.");
    }));
    QCOMPARE(script.texts(), QStringList("It failed."));
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(guarded(nullptr, [] {}));
}

void BoxesTest::workThatWasCancelledCanBeDoneAgain() {
    struct Worker : WorkingDialog {
        Worker() : WorkingDialog(nullptr) { useProgressBar(&bar); }
        using WorkingDialog::work;
        QProgressBar bar;
    } worker;
    for (const bool cancels : {true, false, true, false}) {
        QString failure;
        int steps = 0;
        int first = -1;
        try {
            worker.work("Stopped.", [&](const tarvo::qrb::pointcloud::Progress& progress) {
                QMetaObject::invokeMethod(
                    &worker, [&] { first = worker.bar.value(); }, Qt::BlockingQueuedConnection);
                if (cancels)
                    QMetaObject::invokeMethod(
                        &worker, [&] { worker.reject(); }, Qt::BlockingQueuedConnection);
                for (; steps < 3; ++steps)
                    progress(steps);
            });
        } catch (const std::runtime_error& error) {
            failure = error.what();
        }
        QCOMPARE(failure, cancels ? "Stopped." : "");
        QCOMPARE(steps, cancels ? 0 : 3);
        QCOMPARE(first, 0);             // not where the last run ended
        QApplication::processEvents();  // takes what is left of its progress
        QVERIFY(worker.isEnabled() && worker.bar.isHidden());
    }
}

void BoxesTest::checkListChecksWhatItShows() {
    CheckList list;
    list.setEntries("Things", "Search in things", {"a\nb"});
    QCOMPARE(in<QListWidget>(&list, "listEntries")->item(0)->text(), QString::fromUtf8("a↵b"));
    QCOMPARE(list.checked(), QStringList("a\nb"));
    list.setEntries("Things", "Search in things", {"one", "two", "Three", "four"});
    list.show();
    const auto* count = in<QLabel>(&list, "labelCount");
    QCOMPARE(count->text(), "4 of 4");
    in<QLineEdit>(&list, "editSearch")->setText(" THR ");
    const auto* entries = in<QListWidget>(&list, "listEntries");
    QStringList shown;
    for (int i = 0; i < entries->count(); ++i)
        if (!entries->item(i)->isHidden())
            shown += entries->item(i)->text();
    QCOMPARE(shown, QStringList("Three"));
    QTest::mouseClick(in<QPushButton>(&list, "buttonNone"), Qt::LeftButton);
    QCOMPARE(list.checked(), QStringList({"one", "two", "four"}));
    QCOMPARE(count->text(), "3 of 4");
    in<QLineEdit>(&list, "editSearch")->clear();
    QTest::mouseClick(in<QPushButton>(&list, "buttonNone"), Qt::LeftButton);
    QCOMPARE(list.checked(), QStringList());
    in<QLineEdit>(&list, "editSearch")->setText("o");
    QTest::mouseClick(in<QPushButton>(&list, "buttonAll"), Qt::LeftButton);
    QCOMPARE(list.checked(), QStringList({"one", "two", "four"}));
}

void BoxesTest::findBarFindsLettersOfBothCases() {
    QTreeWidget tree;
    new QTreeWidgetItem(&tree, {"one"});
    new QTreeWidgetItem(&tree, {"Nan"});
    ListFindBar bar(&tree, {}, nullptr);
    bar.open();
    in<QLineEdit>(&bar, "editFind")->setText("nAN");
    QCOMPARE(in<QLabel>(&bar, "labelFind")->text(), "1 of 1");
    QCOMPARE(tree.currentItem()->text(0), "Nan");
}

void BoxesTest::changelogIsColoured() {
    const SampleWindow window{QString()};
    QFile file(m_sample->path("colours.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly) &&
            file.write("[#1] Head\nText\nSignature: 0aFf\nSignature: none\n") > 0);
    file.close();
    window.window().openFile(file.fileName());
    const auto* document = window.child<QPlainTextEdit>("editChangelog")->document();
    const auto formats = [&](int line) {
        return document->findBlockByNumber(line).layout()->formats();
    };
    QCOMPARE(formats(0).size(), 1);
    QCOMPARE(formats(0)[0].length, 9);
    QCOMPARE(formats(0)[0].format.foreground().color(), QColor(Qt::darkBlue));
    QCOMPARE(formats(0)[0].format.fontWeight(), static_cast<int>(QFont::Bold));
    QVERIFY(formats(1).isEmpty());
    QCOMPARE(formats(2).size(), 1);
    QCOMPARE(formats(2)[0].length, 15);
    QCOMPARE(formats(2)[0].format.foreground().color(), QColor(Qt::darkRed));
    QCOMPARE(formats(2)[0].format.fontWeight(), static_cast<int>(QFont::Light));
    QVERIFY(formats(3).isEmpty());
    // With another palette, too.
    setTheme(Theme::DARK);
    const QColor dark = formats(0)[0].format.foreground().color();
    setTheme(Theme::SYSTEM);
    QVERIFY(dark.lightness() > QColor(Qt::darkBlue).lightness());
    QCOMPARE(formats(0)[0].format.foreground().color(), QColor(Qt::darkBlue));
}

void BoxesTest::textSizeHasLimits() {
    resetTextSize();
    const int usual = textSize();
    setTextSize(1);
    QCOMPARE(textSize(), smallestTextSize);
    setTextSize(1000);
    QCOMPARE(textSize(), largestTextSize);
    // What another program wrote.
    ProgramSettings().setValue("TextSize", 1000);
    QCOMPARE(textSize(), largestTextSize);
    resetTextSize();
    QCOMPARE(textSize(), usual);
}

void BoxesTest::onlyFilesThatCanBeShownAreTaken() {
    const SampleWindow window{QString()};
    const auto path = [&](const char* name) {
        QFile file(m_sample->path(name));
        return file.open(QIODevice::WriteOnly) && file.write("[#1] x\n") > 0 ? file.fileName()
                                                                             : QString();
    };
    const std::pair<QString, bool> files[] = {
        {m_sample->copy(), true},    {path("a.txt"), true},
        {path("a.TXT"), true},       {path("a.pdf"), false},
        {path("false.qrbx"), false}, {m_sample->path("missing.txt"), false}};
    for (const auto& [name, taken] : files) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(name)});
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
        enter.ignore();
        QApplication::sendEvent(&window.window(), &enter);
        QVERIFY2(enter.isAccepted() == taken, qUtf8Printable(name));
    }
    QCOMPARE(window.child<QLabel>("labelStatus")->text(), "no database opened");
}

void BoxesTest::folderIsShownWhereNoFileManagerListens() {
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
    QDesktopServices::setUrlHandler("file", this, "openOutside");
    const SampleWindow window(m_sample->copy());
    window.run("actionDatabaseFileLocateFile", {});
    QTRY_COMPARE(
        m_openedOutside,
        QList<QUrl>(1, QUrl::fromLocalFile(QFileInfo(m_sample->path("work.qrbx")).absolutePath())));
    QDesktopServices::unsetUrlHandler("file");
}

GUI_TEST_MAIN(BoxesTest)
#include "boxestest.moc"
