// What the rooms below the window tell people, in the language of the window: faults that are
// really made leave no English, and what users wrote stays as it is.

#include "core/areatext.h"
#include "core/attributerules.h"
#include "core/lodsettings.h"
#include "core/namedvalues.h"
#include "core/shape.h"
#include "exchange/opensource.h"
#include "qrb/loader.h"
#include "tests/window/attributesamples.h"
#include "tests/window/guitestmain.h"
#include "tests/window/importanswers.h"
#include "tests/window/samplewindow.h"
#include "tests/window/testdatabase.h"
#include "window/app/language.h"
#include "window/common/guard.h"
#include "window/common/messages.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QtTest>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>

using namespace tarvo;
using namespace tarvo::window;

// Words that no German sentence has; what stands in quotation marks is left out.
static QStringList englishIn(QString text) {
    static const QRegularExpression quoted("„[^“]*“|\"[^\"]*\"");
    static const QRegularExpression words(
        "\\b([Tt]he|is|are|has|have|its?|of|and|not|no|with|can't|which|be|by|to|from|at|than|more|"
        "other|there|without|file|value|points?|give|read|left|found|expected)\\b");
    QStringList found;
    text.remove(quoted);
    for (auto word = words.globalMatch(text); word.hasNext();)
        found += word.next().captured();
    return found;
}

class MessagesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init() {
        useLanguage("de");
        m_english.clear();
        m_told = 0;
    }
    void cleanup() { useLanguage("en"); }
    void cleanupTestCase() { qrb::freeLibrary(); }

    void valuesStayAndReasonsDont_data();
    void valuesStayAndReasonsDont();
    void englishStaysEnglish();
    void hostileTextsAreQuick();
    void damagedFilesAreToldOf();
    void mistypedTextsAreToldOf();
    void refusalsOfTheLibraryAreToldOf();
    void definitionsAreJudged();
    void windowShowsThem();

private:
    // Fails where what the action throws, or what it returns, has English.
    void check(const QString& name, const std::function<std::vector<std::string>()>& action);
    QString path(const QString& name) const { return m_sample->path(name); }

    std::unique_ptr<SampleDatabase> m_sample;
    QStringList m_english;
    int m_told = 0;
};

void MessagesTest::initTestCase() {
    qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void MessagesTest::check(const QString& name,
                         const std::function<std::vector<std::string>()>& action) {
    QStringList texts;
    QString plain;
    try {
        texts = translatedMessages(action());
    } catch (const std::exception& failure) {
        const auto [text, details] = describe(std::current_exception());
        texts = {text, details};
        plain = failure.what();
    }
    for (const QString& text : texts) {
        m_told += !text.isEmpty();
        if (const QStringList words = englishIn(text); !words.isEmpty())
            m_english += name + ": " + text + " [" + words.join(' ') + "] " + plain;
    }
}

void MessagesTest::valuesStayAndReasonsDont_data() {
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("german");
    const auto row = [](const char* english, const char* german) {
        QTest::newRow(english) << english << german;
    };
    row("The disk is full", "The disk is full");
    row("The file \"The file is empty.\" is empty.", "Die Datei „The file is empty.“ ist leer.");
    row("The tag \"no values\" stands twice.", "Das Schlagwort „no values“ steht zweimal da.");
    row("\"Give the name of a file.\" is a folder.", "„Give the name of a file.“ ist ein Ordner.");
    row("Writing There is no polygon in it", "There is no polygon in it wird geschrieben");
    row("%1 %2 \"%3\" is a folder.", "%1 %2 \"%3\" is a folder.");
    row("\"%2\" can't be renamed to \"%1\": Permission denied.",
        "„%2“ kann nicht in „%1“ umbenannt werden: Zugriff verweigert.");
    row("The area in \"a.wkt\" can't be read: ring 2 of polygon 7 has fewer than 3 corners.",
        "Die Fläche in „a.wkt“ kann nicht gelesen werden: Ring 2 von Polygon 7 hat weniger als 3 "
        "Ecken.");
    row("scan.las: 3 points that their scans call invalid were left out.",
        "scan.las: 3 Punkte, die ihre Scans als ungültig bezeichnen, wurden weggelassen.");
    row("\n  There is an empty tag.  \nmy own line\nGive another name.",
        "\n  Es gibt ein leeres Schlagwort.  \nmy own line\nEinen anderen Namen angeben.");
    row("Who knows? There is an empty tag. Give another name.",
        "Who knows? Es gibt ein leeres Schlagwort. Einen anderen Namen angeben.");
}

void MessagesTest::valuesStayAndReasonsDont() {
    QFETCH(QString, english);
    QFETCH(QString, german);
    QCOMPARE(translatedMessage(english), german);
}

void MessagesTest::englishStaysEnglish() {
    useLanguage("en-GB");
    QCOMPARE(translatedMessage("There is an empty tag."), "There is an empty tag.");
    useLanguage("de-AT");
    QCOMPARE(translatedMessage("There is an empty tag."), "Es gibt ein leeres Schlagwort.");
    // What databases hold in reports of comparisons is no message.
    QCOMPARE(translatedReport("Point attributes\n      title: There is an empty tag. -> \"\"\n"),
             "Punktattribute\n      title: There is an empty tag. -> \"\"\n");
}

void MessagesTest::hostileTextsAreQuick() {
    const auto much = [](const QString& text) { return text.repeated(1'000'000 / text.size()); };
    const QString texts[] = {
        much("x"),
        much("\""),
        much("\n"),
        much(": "),
        much(". "),
        much("; "),
        much("The file \""),
        much(" is empty."),
        much("The area in \"x\" can't be read: "),
        much("There is an empty tag.\n"),
        "The file \"" + much("\" is empty. The file \"") + "\" is empty.",
        "Line 1 of \"" + much("\" of ") + " has no id.",
    };
    for (const QString& text : texts) {
        QElapsedTimer clock;
        clock.start();
        const QString translated = translatedMessage(text);
        QVERIFY2(clock.elapsed() < 3000, qUtf8Printable(text.left(40)));
        QVERIFY(translated.size() > text.size() / 2 && translated.size() < text.size() * 2);
    }
}

void MessagesTest::damagedFilesAreToldOf() {
    const unsigned seed = qEnvironmentVariableIsSet("QRB_SEED")
                              ? qEnvironmentVariable("QRB_SEED").toUInt()
                              : QRandomGenerator::system()->generate();
    qInfo("QRB_SEED=%u", seed);
    QRandomGenerator random(seed);
    const QString source = m_sample->copy();
    for (const char* format : {"las", "laz", "ply", "csv"}) {
        const QString whole = path(QString("whole.") + format);
        QCOMPARE(runTool({"export", source, whole}), QString());
        QFile file(whole);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        for (int i = 0; i < 150; ++i) {
            QByteArray broken =
                i % 3 == 0 ? bytes.left(random.bounded(static_cast<int>(bytes.size()))) : bytes;
            // Most faults are in the beginning, where the tables are.
            for (int k = 0; k < i % 4 + 1 && !broken.isEmpty(); ++k)
                broken[random.bounded(
                    std::min(static_cast<int>(broken.size()), i % 2 ? 400 : 40000))] =
                    static_cast<char>(1 + random.bounded(255));
            const QString name = written(path(QString("broken.") + format), broken);
            check(QString("%1 %2").arg(format).arg(i), [&] {
                auto points = exchange::openSource(name.toStdString(), format);
                while (points->next() > 0) {
                }
                return points->notes();
            });
        }
    }
    QVERIFY(m_told > 100);
    QVERIFY2(m_english.isEmpty(), qUtf8Printable(m_english.join('\n')));
}

void MessagesTest::mistypedTextsAreToldOf() {
    int texts = 0;
    for (const char* text : {"POINT (1 2)", "POLYGON ((0 0, 1 1))", "POLYGON ((0 0, 1 x))", "{",
                             "{\"type\": \"Point\"}", "{\"type\": \"Polygon\"}", "POLYGON ((0 0) 7",
                             "POLYGON ((0 0, 1e200 1, 2 2))", "[]", "", "POLYGON EMPTY"}) {
        ++texts;
        check(text, [text]() -> std::vector<std::string> {
            (void)core::areaFromText(text, "\"area.wkt\"");
            return {};
        });
    }
    for (const char* text : {"1,2", "1,2,x", "4,4,1,1", "1,2,3,4 5", ""}) {
        ++texts;
        check(text, [text]() -> std::vector<std::string> {
            (void)core::boundsFromText(text);
            return {};
        });
    }
    for (const char* text : {"{", "{\"method\": \"mean\"}", "[1]", "\"average\" more", "mean"}) {
        ++texts;
        check(text, [text] { return std::vector{core::lodSettingsProblem(text).text}; });
    }
    QVERIFY(m_told >= texts);
    QVERIFY2(m_english.isEmpty(), qUtf8Printable(m_english.join('\n')));
}

void MessagesTest::refusalsOfTheLibraryAreToldOf() {
    const QString name = m_sample->copy();
    const SampleWindow window(name);
    qrb::Pointcloud& database = window.database();
    const char* const filters[] = {"tarvo.xyz[0] >",    "1 < 2 < 3",       "(1 < 2",   "a && b",
                                   "tarvo.xyz[7] > 1",  "tarvo.xyz > 1",   "1 @ 2",    "1 < 2)",
                                   "tarvo.xyz[0] = 5",  "tarvo.xyz[",      "12x < 3",  "1e999 > 2",
                                   "tarvo.clas == 1",   "\"ground\" == 1", "&& 1 < 2", "1 < \"",
                                   "tarvo.class == cat"};
    for (const char* filter : filters)
        check(filter, [&]() -> std::vector<std::string> {
            auto query = database.select(filter);
            (void)query.next(1);
            return {};
        });
    const auto refused = [&](const QString& what, const std::function<void()>& action) {
        const int before = m_told;
        check(what, [&]() -> std::vector<std::string> {
            action();
            return {};
        });
        if (m_told == before)
            m_english += what + ": taken";
    };
    const qrb::Context context("OFF", "");
    qrb::Pointcloud other(context);
    const auto openOther = [&](const QString& file) {
        other.open(file.toStdString(), qrb::pointcloud::OpenSettings(context));
    };
    refused("no transaction", [&] { database.metaData().set("a.b", "1"); });
    refused("no item", [&] { (void)database.pointAttributes().get("no.such"); });
    refused("no file", [&] { openOther(path("none.qrbx")); });
    refused("no database", [&] { openOther(written(path("text.qrbx"), "no database at all")); });
    QFile whole(name);
    QVERIFY(whole.open(QIODevice::ReadOnly));
    QByteArray bytes = whole.readAll();
    refused("cut", [&] { openOther(written(path("cut.qrbx"), bytes.left(9000))); });
    window.begin();
    refused("second", [&] { database.transactions().begin("", "", "", ""); });
    openOther(name);
    refused("second writer", [&] { other.transactions().begin("", "", "", ""); });
    refused("attribute", [&] { database.pointAttributes().add(byteAttribute("no name")); });
    refused("schema", [&] { database.metaData().validateJson("{}", "{\"type\": 7}"); });
    check("findings", [&] {
        std::vector<std::string> texts;
        const char* const schema = R"({"properties": {"a": {"type": "integer", "minimum": 5},
            "b": {"enum": [1, 2]}, "c": {"maxLength": 2}, "d": {"pattern": "^x$"},
            "e": {"minItems": 2, "uniqueItems": true}, "f": false},
            "required": ["z"], "additionalProperties": false})";
        const auto findings = database.metaData().findingsOfJson(
            R"({"a": "x", "b": 3, "c": "long", "d": "y", "e": [1], "f": 1, "g": 1})", schema);
        for (const auto& finding : findings.list)
            texts.push_back(finding.text);
        for (const std::string& note : findings.notes)
            texts.push_back(note);
        return texts;
    });
    QVERIFY(m_told > 30);
    QVERIFY2(m_english.isEmpty(), qUtf8Printable(m_english.join('\n')));
}

void MessagesTest::definitionsAreJudged() {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    const double numbers[] = {none, -1, 0, 0.3, 1, 2.5, 255, 1e30, HUGE_VAL};
    QRandomGenerator random(1);
    const auto number = [&] {
        return numbers[random.bounded(static_cast<int>(std::size(numbers)))];
    };
    for (int i = 0; i < 2000; ++i) {
        PointAttribute attribute = byteAttribute(i % 5 ? "own.value" : i % 2 ? "" : "9 lives");
        attribute.title = i % 7 ? "Title" : "";
        attribute.tags = i % 11 ? "" : "a,,a";
        attribute.length = i % 13 ? 1 : 300 * (i % 2);
        attribute.minimumValue = i % 3 ? 0 : number();
        attribute.maximumValue = i % 4 ? 255 : number();
        attribute.resolution = i % 5 ? 1 : number();
        attribute.invalidValue = number();
        attribute.defaultValue = number();
        attribute.scaleFactor = number();
        attribute.storageClass = static_cast<std::uint8_t>(1 + random.bounded(4));
        attribute.namedValues = i % 6 ? "" : "1=a\n1=b\nx\n900=c\n2=";
        attribute.lodSettings = i % 9 ? "" : "{\"method\": \"mean\"}";
        core::AttributeUse use;
        use.primary = i % 8 == 0;
        use.takenNames = {"own.value"};
        check("definition", [&] {
            std::vector<std::string> texts;
            for (const auto& finding : core::checkAttribute(attribute, use))
                texts.push_back(finding.text);
            return texts;
        });
    }
    QVERIFY(m_told > 2000);
    m_english.removeDuplicates();
    QVERIFY2(m_english.isEmpty(), qUtf8Printable(m_english.join('\n')));
}

void MessagesTest::windowShowsThem() {
    const SampleWindow window(m_sample->copy());
    window.driver().showTab("tabPointData");
    auto* filter = window.child<QComboBox>("PointDataFilter");
    filter->setFocus();
    filter->setEditText("tarvo.clas == 1");
    Answers answers({});
    QTest::keyClick(filter, Qt::Key_Return);
    QTRY_COMPARE(answers.texts.size(), 1);
    QVERIFY2(answers.texts[0].contains("Es gibt kein Attribut „tarvo.clas“"),
             qUtf8Printable(answers.texts[0]));
}

GUI_TEST_MAIN(MessagesTest)
#include "messagestest.moc"
