// Somebody who presses whatever can be pressed, and types whatever comes to mind: nothing may
// crash, and what was committed stays readable. Prints its seed, the same in each run unless
// QRB_SEED gives another.

#include "qrb/loader.h"
#include "qrb/pointcloud.h"
#include "tests/window/guitestmain.h"
#include "tests/window/pointtable.h"
#include "tests/window/testdatabase.h"
#include "window/frame/mainwindow.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>
#include <memory>
#include <random>

using namespace tarvo::window;

namespace {

constexpr unsigned usualSeed = 1;
constexpr int steps = 250;
constexpr int actionsPerDialog = 6;
constexpr int breath = 3;  // milliseconds between what is done in dialogs

}  // namespace

class MonkeyTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }
    void nothingBreaks();

private:
    int random(int count) {
        return std::uniform_int_distribution<int>(0, std::max(count - 1, 0))(m_random);
    }
    template <typename List>
    auto anyOf(const List& list) {
        return list[random(static_cast<int>(list.size()))];
    }
    QString anyText();
    void openWindow();
    void step();
    void press(QAction* action);
    void clickSomewhere();
    // Called again and again, within however many dialogs one stands on the other.
    void play();
    void playWithDialog();
    void playWith(QWidget* widget);
    bool isAllowed(const QAction* action) const;

    QTemporaryDir m_folder;
    TestDatabase m_original;
    QString m_file;
    std::mt19937 m_random;
    std::unique_ptr<MainWindow> m_window;
    QPointer<QDialog> m_dialog;
    int m_played = 0;  // with this dialog
    bool m_playing = false;
    QStringList m_done;
};

void MonkeyTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_original = makeSampleDatabase(m_folder.path(), 3000);
    QVERIFY2(m_original.error.isEmpty(), qUtf8Printable(m_original.error));
    QVERIFY(QDir::setCurrent(m_folder.path()));  // where files of any name may go
    m_file = m_folder.filePath("monkey.qrbx");
    QVERIFY(QFile::copy(m_original.fileName, m_file));
    const unsigned seed = qEnvironmentVariableIsSet("QRB_SEED")
                              ? qEnvironmentVariable("QRB_SEED").toUInt()
                              : usualSeed;
    qInfo("QRB_SEED=%u", seed);
    m_random.seed(seed);
}

QString MonkeyTest::anyText() {
    static const QStringList texts = {
        "",
        "0",
        "-1",
        "1e308",
        "3.25",
        "abc",
        "tarvo.class",
        "tarvo.class == 2",
        "tarvo.xyz[2] > 5 && (",
        "find fullest leaf",
        "1,3-5",
        "{\"a\": [1, {\"b\": null}]}",
        "{\"method\": \"first\"}",
        "[[[[",
        "0f 5a 77",
        QString::fromUtf8("\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80<b>&amp;%1"),
        QString(5000, 'x'),
        m_folder.filePath("new.qrbx"),
        m_folder.filePath("no/such/folder/file.qrbx"),
    };
    return anyOf(texts);
}

void MonkeyTest::openWindow() {
    m_window = showFreshWindow();
    m_window->openDatabase(m_file, true);
}

// What would leave the program, or the test.
bool MonkeyTest::isAllowed(const QAction* action) const {
    static const QStringList forbidden = {"actionQuit", "actionSwitchLibrary", "actionWindowNew",
                                          "actionDatabaseFileLocateFile"};
    return action->isEnabled() && action->isVisible() && !action->menu() &&
           !forbidden.contains(action->objectName());
}

void MonkeyTest::press(QAction* action) {
    m_done += action->objectName();
    action->trigger();
}

void MonkeyTest::clickSomewhere() {
    QList<QWidget*> places;
    for (QWidget* widget : m_window->findChildren<QWidget*>())
        if (widget->isVisible() && widget->isEnabled() &&
            (qobject_cast<QAbstractItemView*>(widget) || qobject_cast<QLineEdit*>(widget) ||
             qobject_cast<QComboBox*>(widget)))
            places += widget;
    if (places.isEmpty())
        return;
    QWidget* place = anyOf(places);
    m_done += "in " + place->objectName();
    playWith(place);
}

void MonkeyTest::step() {
    auto* tabs = m_window->findChild<QTabWidget*>("tabWidget");
    const int kind = random(10);
    if (kind == 0)
        tabs->setCurrentIndex(random(tabs->count()));
    else if (kind < 4)
        clickSomewhere();
    else {
        QList<QAction*> actions;
        for (QAction* action : m_window->findChildren<QAction*>())
            if (isAllowed(action) && action->objectName().startsWith("action"))
                actions += action;
        press(anyOf(actions));
    }
    if (!m_window->findChild<QAction*>("actionClose")->isEnabled())
        m_window->openDatabase(m_file, true);
}

void MonkeyTest::playWith(QWidget* widget) {
    if (auto* edit = qobject_cast<QLineEdit*>(widget)) {
        edit->selectAll();
        edit->insert(anyText());
        if (random(3) == 0)
            QTest::keyClick(edit, Qt::Key_Return);
    } else if (auto* pane = qobject_cast<QPlainTextEdit*>(widget)) {
        if (!pane->isReadOnly())
            pane->setPlainText(anyText());
    } else if (auto* box = qobject_cast<QSpinBox*>(widget)) {
        box->setValue(random(2) == 0 ? box->minimum() + random(50) : box->maximum());
    } else if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        if (combo->isEditable())
            combo->setEditText(anyText());
        else
            combo->setCurrentIndex(random(combo->count()));
    } else if (auto* view = qobject_cast<QAbstractItemView*>(widget)) {
        if (!view->model() || view->model()->rowCount() == 0)
            return;
        const QModelIndex index = view->model()->index(random(view->model()->rowCount()), 0);
        view->scrollTo(index);
        const QPoint place = view->visualRect(index).center();
        if (random(3) == 0)
            QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, place);
        else
            QTest::mouseClick(view->viewport(), Qt::LeftButton,
                              random(2) == 0 ? Qt::ControlModifier : Qt::NoModifier, place);
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        auto* tool = qobject_cast<QToolButton*>(button);
        if (!tool || !tool->menu())
            QTest::mouseClick(button, Qt::LeftButton);
        else if (QAction* action = anyOf(tool->menu()->actions());
                 !action->menu() && action->isEnabled())
            action->trigger();
    }
}

void MonkeyTest::play() {
    if (!m_playing)
        return;
    // First: what is played may open a dialog, which is played with from within.
    QTimer::singleShot(breath, this, &MonkeyTest::play);
    playWithDialog();
}

void MonkeyTest::playWithDialog() {
    if (QWidget* popup = QApplication::activePopupWidget()) {
        popup->close();
        return;
    }
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible() || !dialog->isEnabled())
        return;
    if (dialog != m_dialog) {
        m_dialog = dialog;
        m_played = 0;
        m_done += dialog->metaObject()->className();
    }
    if (auto* files = qobject_cast<QFileDialog*>(dialog)) {
        auto* edit = files->findChild<QLineEdit*>("fileNameEdit");
        if (edit && m_played++ == 0 && random(3) > 0) {
            edit->setText(m_folder.filePath(QString("file%0.json").arg(random(3))));
            QTest::keyClick(edit, Qt::Key_Return);
        } else {
            files->reject();
        }
        return;
    }
    QList<QWidget*> widgets;
    QList<QWidget*> buttons;
    for (QWidget* widget : dialog->findChildren<QWidget*>()) {
        if (!widget->isVisible() || !widget->isEnabled() || widget->window() != dialog)
            continue;
        (qobject_cast<QAbstractButton*>(widget) ? buttons : widgets) += widget;
    }
    // After a while it gets bored of a dialog.
    if (m_played++ > actionsPerDialog * 3)
        dialog->done(QDialog::Rejected);
    else if (m_played > actionsPerDialog && !buttons.isEmpty())
        playWith(anyOf(buttons));
    else if (!widgets.isEmpty())
        playWith(anyOf(widgets + buttons));
}

void MonkeyTest::nothingBreaks() {
    openWindow();
    m_playing = true;
    play();
    for (int i = 0; i < steps; ++i) {
        step();
        QTRY_VERIFY2_WITH_TIMEOUT(!QApplication::activeModalWidget(),
                                  qUtf8Printable(m_done.join("\n")), 30'000);
        QVERIFY(m_window->isVisible() && m_window->isEnabled());
    }
    // Closing may ask whether changes may get lost, and "No" is an answer, too.
    for (int i = 0; i < 50 && m_window->isVisible(); ++i)
        m_window->close();
    QVERIFY(!m_window->isVisible());
    m_playing = false;
    m_window.reset();

    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud cloud(context);
    cloud.open(m_file.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
    const Table table = tableOf(cloud, cloud.pointAttributes().list());
    // The state before the points came in may have been restored.
    QVERIFY(table.empty() || table.size() == static_cast<std::size_t>(m_original.pointCount));
    for (const std::uint32_t id : cloud.transactions().list())
        QVERIFY(!cloud.transactions().details(id).start.empty());
}

GUI_TEST_MAIN(MonkeyTest)
#include "monkeytest.moc"
