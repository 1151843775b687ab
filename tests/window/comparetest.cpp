// "Compare ..." of the transactions: which two are compared, and what is shown of them.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"
#include "window/panels/transactioncomparison.h"

#include <QAction>
#include <QLabel>
#include <QPlainTextEdit>
#include <QToolBar>
#include <QToolButton>
#include <QtTest>

using namespace tarvo::window;

class CompareTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() {
        tarvo::qrb::loadLibrary("");
        m_sample = std::make_unique<SampleDatabase>();
        QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
        m_file = m_sample->copy();
        change(1);
        change(2);
    }
    void cleanupTestCase() {
        m_sample.reset();
        tarvo::qrb::freeLibrary();
    }

    void selectionsMeanTwoTransactions();
    void whatDiffersIsShownAsPlainText();
    void thatWhichIsGoneIsToldAndTheWindowGoesOn();

private:
    // A transaction with an item whose name looks like rich text.
    void change(int value) {
        const tarvo::qrb::Context context("OFF", "");
        tarvo::qrb::Pointcloud cloud(context);
        cloud.open(m_file.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
        tarvo::qrb::pointcloud::TransactionGuard guard(cloud.transactions(), "<b>change</b>", "x");
        cloud.metaData().set("<b>bold</b>", std::to_string(value));
        guard.commit();
        m_last = guard.id();
    }
    // Presses the button in the toolbar; returns the report, or what a box tells.
    static QString compare(const SampleWindow& window) {
        QString report;
        ModalScript script({[&](QDialog* dialog) {
            if (auto* pane = dialog->findChild<QPlainTextEdit*>("textComparison")) {
                report =
                    dialog->findChild<QLabel*>("labelStates")->text() + "\n" + pane->toPlainText();
                QVERIFY(pane->isReadOnly());
                QTest::keyClick(dialog, Qt::Key_Escape);
            } else {
                ModalScript::pressButton(dialog, "OK");
            }
        }});
        QWidget* const button =
            window.child<QToolBar>("toolBarTransactions")
                ->widgetForAction(window.child<QAction>("actionTransactionCompare"));
        QTest::mouseClick(button, Qt::LeftButton);
        return report.isEmpty() ? script.texts().value(0) : report;
    }

    std::unique_ptr<SampleDatabase> m_sample;
    QString m_file;
    std::uint32_t m_last = 0;
};

void CompareTest::selectionsMeanTwoTransactions() {
    using Two = std::pair<std::uint32_t, std::uint32_t>;
    const std::vector<std::uint32_t> kept{1, 4, 7, 9};
    QCOMPARE(comparedTransactions({7, 4}, kept, 9), Two(4, 7));
    QCOMPARE(comparedTransactions({4}, kept, 9), Two(4, 9));
    QCOMPARE(comparedTransactions({9}, kept, 9), Two(7, 9));
    QCOMPARE(comparedTransactions({9}, kept, 4), Two(4, 9));  // after a restore
    QCOMPARE(comparedTransactions({1}, kept, 1), Two(1, 4));
    QCOMPARE(comparedTransactions({1}, {1}, 1), Two(1, 1));
}

void CompareTest::whatDiffersIsShownAsPlainText() {
    const SampleWindow window(m_file);
    window.driver().showTab("tabTransactions");
    QCOMPARE(compare(window), "No transaction selected.");
    QVERIFY(window.driver().select("treeTransactions", QString("%0*").arg(m_last)));
    const QString report = compare(window);
    QVERIFY2(report.startsWith(QString("From transaction %0 (<b>change</b>)\nto transaction %1 (")
                                   .arg(m_last - 1)
                                   .arg(m_last)),
             qUtf8Printable(report));
    QVERIFY2(report.contains("Metadata items\n  * <b>bold</b>: another value\nPoints: no "
                             "differences (600)."),
             qUtf8Printable(report));
    // A pending transaction is in nobody's way.
    window.begin();
    QVERIFY(window.driver().select("treeTransactions", QString::number(m_last - 2)));
    QVERIFY(compare(window).contains("  + <b>bold</b>\n"));
}

void CompareTest::thatWhichIsGoneIsToldAndTheWindowGoesOn() {
    const SampleWindow window(m_file);
    window.driver().showTab("tabTransactions");
    {
        const tarvo::qrb::Context context("OFF", "");
        tarvo::qrb::Pointcloud other(context);
        other.open(m_file.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
        other.transactions().discard({m_last - 1});
    }
    QVERIFY(window.driver().select("treeTransactions", QString::number(m_last - 1)));
    QVERIFY(compare(window).contains(QString("does not keep transaction %0").arg(m_last - 1)));
    QVERIFY(window.driver().select("treeTransactions", QString::number(m_last - 2)));
    QVERIFY(compare(window).contains("  + <b>bold</b>\n"));
}

GUI_TEST_MAIN(CompareTest)

#include "comparetest.moc"
