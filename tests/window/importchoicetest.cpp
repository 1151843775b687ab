// What a user chooses of points that come in: which columns, where they go, which of the points;
// and files that the command line names.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/importanswers.h"
#include "tests/window/testdatabase.h"
#include "window/frame/mainwindow.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QSpinBox>
#include <QToolButton>
#include <QTreeWidget>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

namespace {

using Step = ModalScript::Step;
namespace pointcloud = tarvo::qrb::pointcloud;

QTreeWidgetItem* rowOf(QDialog* dialog, const QString& column) {
    auto* tree = in<QTreeWidget>(dialog, "treeColumns");
    QTreeWidgetItem* row = tree->findItems(column, Qt::MatchExactly).value(0);
    if (!row)
        qFatal("no column %s", qUtf8Printable(column));
    return row;
}

// Types another attribute for a column.
void choose(QDialog* dialog, const QString& column, const QString& attribute) {
    auto* tree = in<QTreeWidget>(dialog, "treeColumns");
    QTreeWidgetItem* row = rowOf(dialog, column);
    tree->scrollToItem(row);
    tree->setCurrentItem(row, 1);
    const QPoint cell = tree->visualRect(tree->currentIndex()).center();
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, cell);
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, cell);
    // Earlier ones may wait for their deletion.
    const auto editors = tree->findChildren<QComboBox*>("editTarget");
    const auto shown = std::ranges::find_if(editors, &QWidget::isVisible);
    QVERIFY(shown != editors.end());
    const QPointer<QComboBox> editor = *shown;
    QTest::keyClicks(editor->lineEdit(), attribute);
    QTest::keyClick(editor->lineEdit(), Qt::Key_Return);
    QTRY_VERIFY(!editor || !editor->isVisible());
}

void uncheck(QDialog* dialog, const QString& column) {
    auto* tree = in<QTreeWidget>(dialog, "treeColumns");
    tree->setCurrentItem(rowOf(dialog, column), 0);
    QTest::keyClick(tree, Qt::Key_Space);
}

void type(QDialog* dialog, const char* field, const QString& text) {
    auto* edit = in<QLineEdit>(dialog, field);
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

}  // namespace

class ImportChoiceTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { tarvo::qrb::loadLibrary(""); }
    void init() { m_window = showFreshWindow(); }
    void cleanup() { m_window.reset(); }
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void columnsOfATextAreNamed();
    void mappingThatCanNotBeIsTold();
    void otherColumnsBecomeCoordinates();
    void pointsAreChosen();
    void columnsGoToAttributesOfTheOpenDatabase();
    void commandLineOffersPoints();

private:
    tarvo::qrb::Pointcloud& database() const { return *m_window->session().database; }
    QString path(const QString& name) const { return m_folder.filePath(name); }
    // Values of a column in the order of the points.
    QList<double> values(const char* descriptor) const;
    void import(const QString& fileName, Answers& answers) const;
    // Of 10 points in a row, 1 apart.
    QString line(const QString& name) const;

    QTemporaryDir m_folder;
    std::unique_ptr<MainWindow> m_window;
};

QList<double> ImportChoiceTest::values(const char* descriptor) const {
    QList<double> result;
    double value = 0;
    auto query = database().select();
    query.bind(descriptor, pointcloud::DataType::DOUBLE, &value, 0);
    while (query.next(1) == 1)
        result += value;
    return result;
}

void ImportChoiceTest::import(const QString& fileName, Answers& answers) const {
    answers.fileName = fileName;
    in<QAction>(m_window.get(), "actionImportPoints")->trigger();
}

QString ImportChoiceTest::line(const QString& name) const {
    QByteArray text = "x,y,z,Echo\n";
    for (int i = 0; i < 10; ++i)
        text += QByteArray::number(i) + ",0,0," + QByteArray::number(10 * i) + "\n";
    return written(path(name), text);
}

void ImportChoiceTest::columnsOfATextAreNamed() {
    const QString name = written(path("numbers.xyz"), "1 2 3 40 0.5 9\n6 7 8 90 0.25 9\n");
    Answers answers({importInto(path("named.qrbx"), [](QDialog* dialog) {
        // What stands in the file, and what its columns are taken for.
        const QTreeWidgetItem* row = rowOf(dialog, "column 4");
        QCOMPARE(row->text(1), "text.column_4");
        QCOMPARE(row->text(2), "40 ... 90");
        QCOMPARE(row->text(5), "40   90");
        choose(dialog, "column 4", "intensity");
        QCOMPARE(row->text(1), "tarvo.intensity");
        choose(dialog, "column 5", "own.score");
        QCOMPARE(rowOf(dialog, "column 5")->text(3), "0.01");
        uncheck(dialog, "column 6");
        QCOMPARE(rowOf(dialog, "column 6")->text(4), "left out");
    })});
    answers.button = "Yes";
    import(name, answers);
    QVERIFY2(answers.texts.size() == 1 && answers.texts[0].startsWith("2 points imported."),
             qUtf8Printable(answers.texts.join('|')));
    QCOMPARE(values("tarvo.intensity"), QList<double>({40, 90}));
    QCOMPARE(values("own.score"), QList<double>({0.5, 0.25}));
    QVERIFY(!database().pointAttributes().exists("text.column_6"));
    const auto& transactions = database().transactions();
    const std::string settings = transactions.details(transactions.current()).settings;
    QVERIFY2(settings.find("text.column_4=tarvo.intensity") != std::string::npos, settings.c_str());
}

void ImportChoiceTest::mappingThatCanNotBeIsTold() {
    const QString name = line("wrong.csv");
    Answers answers({[&answers](QDialog* dialog) {
        auto* fault = in<QLabel>(dialog, "labelFault");
        QVERIFY(!fault->isVisible());
        choose(dialog, "Echo", "x");
        QVERIFY2(fault->isVisible() && fault->text().contains("would both go to \"tarvo.xyz[0]\""),
                 qUtf8Printable(fault->text()));
        ModalScript::press("Import")(dialog);
        QCOMPARE(answers.texts.size(), 1);
        QVERIFY(dialog->isVisible());
        choose(dialog, "Echo", "own value");
        QVERIFY(fault->text().contains("no name of an attribute"));
        choose(dialog, "Echo", "own.value");
        QVERIFY(!fault->isVisible());
        ModalScript::press("Cancel")(dialog);
    }});
    import(name, answers);
    QCOMPARE(answers.offered, 1u);
    QVERIFY(!QFile::exists(path("wrong.qrbx")));
}

void ImportChoiceTest::otherColumnsBecomeCoordinates() {
    const QString name = written(path("east.csv"), "East,North,Height\n1,2,3\n");
    Answers answers({importInto(path("east"), [](QDialog* dialog) {
        QVERIFY(in<QLabel>(dialog, "labelFault")->text().contains("tarvo.xyz"));
        choose(dialog, "East", "x");
        choose(dialog, "North", "y");
        choose(dialog, "Height", "z");
        QVERIFY(!in<QLabel>(dialog, "labelFault")->isVisible());
        QVERIFY(!(rowOf(dialog, "East")->flags() & Qt::ItemIsUserCheckable));
        QCOMPARE(in<QLabel>(dialog, "labelExtent")->text(), "X: 1 ... 1\nY: 2 ... 2\nZ: 3 ... 3");
    })});
    answers.button = "Yes";
    import(name, answers);
    QCOMPARE(m_window->session().fileName, path("east.qrbx"));
    QCOMPARE(values("tarvo.xyz[1]"), QList<double>({2}));
}

void ImportChoiceTest::pointsAreChosen() {
    const QString name = line("line.csv");
    const auto shape = [](QDialog* dialog) {
        auto* bounds = in<QLineEdit>(dialog, "editBounds");
        if (!bounds->isVisible())
            QTest::mouseClick(in<QToolButton>(dialog, "buttonShape"), Qt::LeftButton);
        QVERIFY(bounds->isVisible());
    };
    std::unique_ptr<Answers> answers;
    answers = std::make_unique<Answers>(
        std::vector<Step>{importInto(path("chosen.qrbx"), [&](QDialog* dialog) {
            shape(dialog);
            type(dialog, "editBounds", "1,0,8");
            ModalScript::press("Import")(dialog);
            QVERIFY2(answers->texts.size() == 1 && answers->texts[0].contains("3 numbers"),
                     qUtf8Printable(answers->texts.join('|')));
            type(dialog, "editBounds", "1,-1,8,1");
            auto* every = in<QSpinBox>(dialog, "editEvery");
            every->selectAll();
            QTest::keyClicks(every, "2");
            type(dialog, "editDistance", "2.5");
            answers->button = "Yes";
        })});
    import(name, *answers);
    QVERIFY2(answers->texts.last().startsWith("2 points imported."),
             qUtf8Printable(answers->texts.last()));
    QCOMPARE(values("tarvo.xyz[0]"), QList<double>({1, 5}));
    answers.reset();  // two would race for the dialogs
    Answers more({[&](QDialog* dialog) {
        shape(dialog);
        type(dialog, "editBounds", "9,-1,9,1");
        intoOpen(dialog);
    }});
    import(name, more);
    QCOMPARE(more.texts, QStringList("One point imported."));
    QCOMPARE(values("tarvo.xyz[0]"), QList<double>({1, 5, 9}));
}

void ImportChoiceTest::columnsGoToAttributesOfTheOpenDatabase() {
    QCOMPARE(runTool({"import", line("base.csv"), path("base.qrbx"), "--map", "Echo=own.echo"}),
             QString());
    m_window->openDatabase(path("base.qrbx"), true);
    const QString name = written(path("more.csv"), "x,y,z,Other\n1,1,1,70\n");
    {
        Answers answers({[](QDialog* dialog) {
            choose(dialog, "Other", "own.echo");
            intoOpen(dialog);
        }});
        import(name, answers);
        QCOMPARE(answers.texts, QStringList("One point imported."));
    }
    QCOMPARE(values("own.echo").size(), 11);
    QVERIFY(values("own.echo").contains(70));
    QVERIFY(!database().pointAttributes().exists("csv.other"));
    // What the database can't hold is told in words of the window.
    const QString fine = written(path("fine.csv"), "x,y,z,Other\n1,1,1,70.123\n");
    Answers refused({[](QDialog* dialog) {
                         choose(dialog, "Other", "own.echo");
                         intoOpen(dialog);
                     },
                     ModalScript::press("Cancel")});
    import(fine, refused);
    QVERIFY2(refused.texts.size() == 1 && refused.texts[0].contains("own.echo") &&
                 !refused.texts[0].contains("--"),
             qUtf8Printable(refused.texts.join('|')));
    QCOMPARE(values("own.echo").size(), 11);
    QVERIFY(!database().transactions().pending());
}

void ImportChoiceTest::commandLineOffersPoints() {
    const QString points = line("points.csv");
    QCOMPARE(runTool({"import", points, path("open.qrbx"), "--overwrite"}), QString());
    const QString numbers = written(path("numbers.txt"), "1 2 3\n4 5 6\n");
    QStringList shown;
    QList<bool> into;
    const Step look = [&](QDialog* dialog) {
        shown += in<QLabel>(dialog, "labelFiles")->text();
        into += in<QRadioButton>(dialog, "radioOpen")->isChecked();
        ModalScript::press("Cancel")(dialog);
    };
    Answers answers({look, look});
    m_window->openArguments({"--window=0,0,900,600", points, numbers}, true);
    QVERIFY(!m_window->session().database);
    m_window->openArguments({points, path("open.qrbx")}, true);
    QCOMPARE(m_window->session().fileName, path("open.qrbx"));
    QCOMPARE(shown, QStringList({"points.csv, numbers.txt", "points.csv"}));
    QCOMPARE(into, QList<bool>({false, true}));
    QCOMPARE(answers.texts, QStringList());
    // A further window shows the database alone.
    MainWindow further;
    further.openArguments({path("missing.las"), points, path("open.qrbx")}, false);
    QCOMPARE(further.session().fileName, path("open.qrbx"));
    QCOMPARE(answers.offered, 2u);

    QFile database(path("open.qrbx"));
    QVERIFY(database.open(QIODevice::ReadOnly));
    const QString strangers[] = {path("missing.las"),
                                 m_folder.path(),
                                 written(path("paper.pdf"), "%PDF-1.7"),
                                 written(path("empty.qrbx"), ""),
                                 written(path("cut.las"), "LASF and no more"),
                                 written(path("cut.qrbx"), database.read(5000))};
    const char* const words[] = {"no such file", "folder",  "a PDF document",
                                 "empty",        "cut.las", "cut.qrbx"};
    for (std::size_t i = 0; i < std::size(strangers); ++i) {
        answers.texts.clear();
        m_window->openArguments({strangers[i]}, true);
        QVERIFY2(answers.texts.size() == 1 && answers.texts[0].contains(words[i]),
                 qUtf8Printable(strangers[i] + answers.texts.join('|')));
    }
}

GUI_TEST_MAIN(ImportChoiceTest)
#include "importchoicetest.moc"
