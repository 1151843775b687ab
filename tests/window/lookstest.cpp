// Texts and icons in the light and the dark theme, measured in pictures of every tab and dialog,
// also after switching from one theme to the other and back.

#include "qrb/loader.h"
#include "tests/window/alldialogs.h"
#include "tests/window/guitestmain.h"
#include "tests/window/pictureprobe.h"
#include "tests/window/samplewindow.h"
#include "window/common/appearance.h"
#include "window/dialogs/workingdialog.h"

#include <QHelpEvent>
#include <QLineEdit>
#include <QProgressBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QThread>
#include <QTimer>
#include <QToolButton>
#include <QToolTip>
#include <QTreeWidget>
#include <QtTest>
#include <atomic>
#include <memory>

using namespace tarvo::window;

namespace {

// From the theme before to each of these, which the next one leaves again.
constexpr Theme themes[] = {Theme::LIGHT, Theme::DARK, Theme::LIGHT};

// QRB_PICTURES names a folder that keeps what was measured, to look at.
void keepPicture(QWidget* window, const QString& name, Theme theme) {
    if (const QString folder = qEnvironmentVariable("QRB_PICTURES"); !folder.isEmpty())
        window->grab().save(
            QString("%1/%2-%3.png").arg(folder, name, theme == Theme::DARK ? "dark" : "light"));
}

// What is faint in one of the themes.
QStringList faintIn(QWidget* window, const QString& name) {
    QStringList faint;
    for (int i = 0; i < static_cast<int>(std::size(themes)); ++i) {
        setTheme(themes[i]);
        QCoreApplication::processEvents();
        keepPicture(window, name, themes[i]);
        for (const QString& one : faintParts(window))
            faint += QString("%1 %2 (theme %3): %4")
                         .arg(name, themes[i] == Theme::DARK ? "dark" : "light")
                         .arg(i)
                         .arg(one);
    }
    setTheme(Theme::LIGHT);
    return faint;
}

QStringList tabNames(const SampleWindow& window) {
    QStringList names;
    const auto* tabs = window.child<QTabWidget>("tabWidget");
    for (int i = 0; i < tabs->count(); ++i)
        names += tabs->widget(i)->objectName();
    return names;
}

}  // namespace

class LooksTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void tabsStandOut();
    void dialogsStandOut_data();
    void dialogsStandOut();
    void toolTipsFollowTheTheme();
    void paneOfTabsIsTheWindows();
    void foundCellIsMarkedAlone();
    void progressStandsOutWhileADialogWorks();

private:
    std::unique_ptr<SampleDatabase> m_sample;
};

void LooksTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void LooksTest::tabsStandOut() {
    const SampleWindow window(m_sample->copy());
    window.window().resize(1100, 700);
    QStringList faint;
    for (const QString& tab : tabNames(window)) {
        window.driver().showTab(qUtf8Printable(tab));
        if (tab == "tabPointData")
            window.run("actionQuerySelectNext", {});
        if (tab == "tabInspection") {
            window.child<QTextBrowser>("textInspectionResult")
                ->setHtml("<h1>Report</h1><p>Text with a <a href=\"#there\">linked place</a></p>");
        }
        faint += faintIn(&window.window(), tab);
        // Selected rows, with their icons.
        const auto trees = window.child<QWidget>(qUtf8Printable(tab))->findChildren<QTreeWidget*>();
        for (QTreeWidget* tree : trees)
            tree->selectAll();
        if (!trees.isEmpty())
            faint += faintIn(&window.window(), tab + "Selected");
    }
    QVERIFY2(faint.isEmpty(), qUtf8Printable(faint.join('\n')));
}

void LooksTest::dialogsStandOut_data() {
    QTest::addColumn<QString>("group");
    for (const auto& [group, open] : allDialogs())
        QTest::newRow(qUtf8Printable(group)) << group;
}

void LooksTest::dialogsStandOut() {
    QFETCH(QString, group);
    const SampleWindow window(m_sample->copy());
    QStringList faint;
    allDialogs().at(group)(window, [&](QDialog* dialog) {
        faint = faintIn(dialog, group);
        dialog->reject();
    });
    QVERIFY2(faint.isEmpty(), qUtf8Printable(faint.join('\n')));
}

void LooksTest::toolTipsFollowTheTheme() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabTransactions");
    QStringList faint;
    const auto measure = [&](QWidget* parent, Theme theme) {
        setTheme(theme);
        QCoreApplication::processEvents();
        int told = 0;
        for (auto* child : parent->findChildren<QWidget*>()) {
            if (!child->isVisible() || child->toolTip().isEmpty() || told == 5)
                continue;
            QHelpEvent ask(QEvent::ToolTip, QPoint(2, 2), child->mapToGlobal(QPoint(2, 2)));
            QCoreApplication::sendEvent(child, &ask);
            for (QWidget* top : QApplication::topLevelWidgets())
                if (top->inherits("QTipLabel") && top->isVisible()) {
                    ++told;
                    // The tip has no children: a widget around it is measured.
                    QWidget frame;
                    top->setParent(&frame);
                    top->show();
                    frame.resize(top->size());
                    for (const QString& one : faintParts(&frame))
                        faint += child->objectName() + ' ' + one;
                    top->setParent(nullptr);
                    top->close();
                }
            QToolTip::hideText();
        }
        QVERIFY(told > 0);
    };
    for (const Theme theme : themes)
        measure(&window.window(), theme);
    window.run("actionTransactionBegin", {[&](QDialog* dialog) {
                   for (const Theme theme : themes)
                       measure(dialog, theme);
                   dialog->reject();
               }});
    setTheme(Theme::LIGHT);
    faint.removeDuplicates();
    QVERIFY2(faint.isEmpty(), qUtf8Printable(faint.join('\n')));
}

void LooksTest::paneOfTabsIsTheWindows() {
    const SampleWindow window(m_sample->copy());
    for (const Theme theme : themes) {
        setTheme(theme);
        QCoreApplication::processEvents();
        const QImage picture = window.window().grab().toImage();
        const auto* tabs = window.child<QTabWidget>("tabWidget");
        const QColor pane =
            picture.pixelColor(tabs->mapTo(&window.window(), QPoint(4, tabs->height() - 4)));
        const QColor ground = window.window().palette().color(QPalette::Window);
        QVERIFY2(contrast(pane, ground) < 1.06, qUtf8Printable(pane.name() + ground.name()));
    }
    setTheme(Theme::LIGHT);
}

void LooksTest::progressStandsOutWhileADialogWorks() {
    class Working : public WorkingDialog {
    public:
        Working() : WorkingDialog(nullptr), m_progress(new QProgressBar(this)) {
            m_progress->resize(300, 24);
            useProgressBar(m_progress);
        }
        // The contrast of the bar's text, which stands in its middle, while the dialog works.
        double measured() {
            std::atomic<bool> isMeasured = false;
            double best = 0;
            QTimer::singleShot(100, this, [&] {
                m_progress->setValue(10);
                const QImage picture = m_progress->grab().toImage();
                const QRect middle(135, 4, 30, 16);
                const QColor ground = groundOf(picture, middle);
                for (int x = middle.left(); x <= middle.right(); ++x)
                    for (int y = middle.top(); y <= middle.bottom(); ++y)
                        best = std::max(best, contrast(picture.pixelColor(x, y), ground));
                isMeasured = true;
            });
            work("cancelled", [&](const auto&) {
                while (!isMeasured)
                    QThread::msleep(10);
            });
            return best;
        }

    private:
        QProgressBar* m_progress;
    };
    for (const Theme theme : themes) {
        setTheme(theme);
        Working dialog;
        dialog.show();
        const double found = dialog.measured();
        QVERIFY2(found >= textContrast, qPrintable(QString::number(found)));
    }
    setTheme(Theme::LIGHT);
}

void LooksTest::foundCellIsMarkedAlone() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointData");
    window.run("actionQuerySelectNext", {});
    window.run("actionQuerySelectFind", {});
    auto* tree = window.child<QTreeWidget>("treePointData");
    QTest::keyClicks(window.child<QLineEdit>("editFind"), tree->topLevelItem(2)->text(2));
    const QModelIndex found = tree->currentIndex();
    const QImage picture = tree->viewport()->grab().toImage();
    const auto ground = [&](int column) {
        return groundOf(picture, tree->visualRect(found.siblingAtColumn(column)) & picture.rect());
    };
    const QColor mark = tree->palette().color(QPalette::Highlight);
    QCOMPARE(ground(found.column()), mark);
    for (const int column : {0, 1})
        QVERIFY(column == found.column() || ground(column) != mark);
    QTest::keyClick(window.child<QLineEdit>("editFind"), Qt::Key_Escape);
    QVERIFY(groundOf(tree->viewport()->grab().toImage(), tree->visualRect(found)) != mark);
}

GUI_TEST_MAIN(LooksTest)
#include "lookstest.moc"
