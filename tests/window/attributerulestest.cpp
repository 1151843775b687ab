// The rules of point attribute definitions: numbers as texts, the checks of the editor against the
// library, and the texts of level-of-detail settings.

#include "core/attributerules.h"
#include "core/defaultattribute.h"
#include "core/lodsettings.h"
#include "core/redefinition.h"
#include "qrb/loader.h"
#include "qrb/pointcloud.h"
#include "tests/window/attributesamples.h"
#include "tests/window/guitestmain.h"
#include "tests/window/testdatabase.h"
#include "window/dialogs/attribute/attributesuggestions.h"
#include "window/dialogs/attribute/numbertext.h"

#include <QRandomGenerator>
#include <QTreeWidget>
#include <QtTest>
#include <algorithm>
#include <cmath>
#include <limits>

using namespace tarvo::core;
using namespace tarvo::window;

namespace {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

// Whether the library that comes with the programs is said to refuse it.
bool isRefused(const std::vector<AttributeFinding>& findings) {
    return std::any_of(findings.begin(), findings.end(),
                       [](const auto& each) { return each.severity != Severity::NOTE; });
}

}  // namespace

class AttributeRulesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void stepsKeepTheDigitsOfNumbers();
    void checksAgreeWithTheLibrary();
    void limitsAreThoseOfTheLibrary();
    void errorsAreWhatNoLibraryCouldTake();
    void doubtfulDefinitionsAreNoted();
    void everyChangeIsSeen();
    void catalogueIsTakenWhole();
    void freeSuggestionsComeFirst();
    void lodSettingsKeepWhatTheyHold();

private:
    void withDatabase(const std::function<void(tarvo::qrb::Pointcloud&)>& action);

    QTemporaryDir m_folder;
    TestDatabase m_original;
};

void AttributeRulesTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_original = makeTestDatabase(m_folder.path());
    QVERIFY2(m_original.error.isEmpty(), qUtf8Printable(m_original.error));
}

void AttributeRulesTest::withDatabase(const std::function<void(tarvo::qrb::Pointcloud&)>& action) {
    const QString file = m_folder.filePath("work.qrbx");
    QFile::remove(file);
    QVERIFY(QFile::copy(m_original.fileName, file));
    const tarvo::qrb::Context context("OFF", "");
    tarvo::qrb::Pointcloud cloud(context);
    cloud.open(file.toStdString(), tarvo::qrb::pointcloud::OpenSettings(context));
    action(cloud);
}

void AttributeRulesTest::stepsKeepTheDigitsOfNumbers() {
    QCOMPARE(steppedNumber(0.2, 0.1, 1), 0.3);
    QCOMPARE(steppedNumber(-535000, 0.00025, 3), -534999.99925);
    QCOMPARE(steppedNumber(1e300, 1, 1), 1e300);
    const std::pair<double, double> lastDigits[] = {{1000, 1}, {7, 1}, {0, 1}, {0.25, 0.01}};
    for (const auto& [number, digit] : lastDigits)
        QCOMPARE(lastDigitOf(number), digit);
}

// Of every definition that the library refuses that is said, and of no other one.
void AttributeRulesTest::checksAgreeWithTheLibrary() {
    const double limits[] = {0,
                             1,
                             -1,
                             255,
                             65535,
                             0.5,
                             -535000,
                             535000.1,
                             4294967295.0,
                             1e9,
                             1e15,
                             1e300,
                             -1e300,
                             9007199254740992.0,
                             9223372036854775808.0,
                             -9223372036854775808.0,
                             18446744073709551616.0,
                             none};
    const double resolutions[] = {1, 1, 0.1, 0.00025, 0, 0.3, 1e-9, 2, -1, none};
    const char* const names[] = {"own.a", "own.a", "own.a",      "_a9", "9a",
                                 "a b",   "a-b",   "\xc3\xa4.b", ".a",  ""};
    const char* const lods[] = {"default",
                                "first",
                                "",
                                "thinout",
                                "\"majority\"",
                                "{\"method\":\"minimum\",\"more\":[1]}",
                                "{\"method\":5}",
                                "[1]",
                                "{\"method\":\"first\"} tail",
                                "{\"other\":1}",
                                "{",
                                "\"first",
                                " "};
    withDatabase([&](tarvo::qrb::Pointcloud& cloud) {
        cloud.transactions().begin("checks", "tests");
        AttributeUse use;
        for (const std::string& name : cloud.pointAttributes().list())
            use.takenNames.push_back(name);
        QRandomGenerator random(11);
        const auto pick = [&](const auto& list) {
            return list[random.bounded(int(std::size(list)))];
        };
        int taken = 0;
        int refused = 0;
        for (int i = 0; i < 6000; ++i) {
            PointAttribute attribute = byteAttribute("own.a");
            attribute.minimumValue = pick(limits);
            attribute.maximumValue = pick(limits);
            attribute.resolution = pick(resolutions);
            attribute.invalidValue = random.bounded(2) ? none : pick(limits);
            attribute.defaultValue = random.bounded(3) ? attribute.minimumValue : pick(limits);
            // Most faults one at a time: a definition that has several tells nothing.
            if (i % 4 == 0)
                attribute = byteAttribute(pick(names));
            if (i % 4 == 1) {
                attribute = byteAttribute("own.a");
                attribute.lodSettings = pick(lods);
            }
            if (i % 40 == 0)
                attribute.length = static_cast<std::uint32_t>(random.bounded(300));
            if (i % 40 == 4)
                attribute.storageClass = static_cast<std::uint8_t>(random.bounded(5));
            if (i % 40 == 8)
                attribute.compressionOptions = static_cast<std::uint8_t>(random.bounded(6));
            if (i == 12)
                attribute.name = "tarvo.xyz";
            if (i == 16)
                attribute.name = std::string(256, 'a');
            const QString refusal = messageOf([&] { cloud.pointAttributes().add(attribute); });
            if (refusal.isEmpty())
                cloud.pointAttributes().remove(attribute.name);
            (refusal.isEmpty() ? taken : refused) += 1;
            const auto findings = checkAttribute(attribute, use);
            QVERIFY2(isRefused(findings) == !refusal.isEmpty(),
                     qPrintable(QString::fromStdString(attribute.toJson()) + '\n' + refusal + '\n' +
                                (findings.empty() ? QString()
                                                  : QString::fromStdString(findings[0].text))));
        }
        QVERIFY(taken > 1000 && refused > 1000);
        cloud.transactions().rollback();
    });
}

// The last value that is taken and the first one that is not, each alone.
void AttributeRulesTest::limitsAreThoseOfTheLibrary() {
    std::vector<std::pair<PointAttribute, bool>> definitions;
    const auto expect = [&](bool taken, const auto& change) {
        definitions.emplace_back(byteAttribute("own.a"), taken);
        change(definitions.back().first);
    };
    for (const std::size_t size : {1u, 254u, 255u, 256u, 257u})
        expect(size <= 255, [&](PointAttribute& each) { each.name = std::string(size, 'a'); });
    for (const char* name : {"A", "Z", "_", "z", "a0", "a9", "a."})
        expect(true, [&](PointAttribute& each) { each.name = name; });
    for (const char* name : {"@", "[", "`", "{", "0", ".", "a/", "a:", "a-"})
        expect(false, [&](PointAttribute& each) { each.name = name; });
    for (const std::uint32_t length : {0u, 1u, 2u, 254u, 255u, 256u})
        expect(length >= 1 && length <= 255, [&](PointAttribute& each) { each.length = length; });
    for (const std::uint8_t storage : {0, 1, 2, 3, 4})
        expect(storage >= 1 && storage <= 3,
               [&](PointAttribute& each) { each.storageClass = storage; });
    for (const std::uint8_t options : {0, 1, 2, 3, 4})
        expect(options <= 3, [&](PointAttribute& each) { each.compressionOptions = options; });
    for (const double value : {-1.0, 0.0, 1.0, 254.0, 255.0, 256.0})
        expect(value >= 0 && value <= 255,
               [&](PointAttribute& each) { each.defaultValue = value; });
    for (const double minimum : {-2.0, 254.0, 255.0, 256.0})
        expect(minimum <= 255, [&](PointAttribute& each) {
            each.minimumValue = minimum;
            each.defaultValue = 255;
        });
    withDatabase([&](tarvo::qrb::Pointcloud& cloud) {
        cloud.transactions().begin("limits", "tests");
        for (const auto& [attribute, taken] : definitions) {
            const QString refusal =
                messageOf([&, each = attribute] { cloud.pointAttributes().add(each); });
            if (refusal.isEmpty())
                cloud.pointAttributes().remove(attribute.name);
            const std::string json = attribute.toJson();
            QVERIFY2(refusal.isEmpty() == taken, json.c_str());
            QVERIFY2(isRefused(checkAttribute(attribute, {})) != taken, json.c_str());
        }
        cloud.transactions().rollback();
    });
}

// What only this library refuses is left to the one that is loaded.
void AttributeRulesTest::errorsAreWhatNoLibraryCouldTake() {
    const std::pair<std::function<void(PointAttribute&)>, Severity> changes[] = {
        {[](auto& each) { each.name = ""; }, Severity::ERROR},
        {[](auto& each) { each.name = std::string("a\0b", 3); }, Severity::ERROR},
        {[](auto& each) { each.name = "taken"; }, Severity::ERROR},
        {[](auto& each) { each.length = 0; }, Severity::ERROR},
        {[](auto& each) { each.minimumValue = 300; }, Severity::ERROR},
        {[](auto& each) { each.maximumValue = none; }, Severity::ERROR},
        {[](auto& each) { each.resolution = none; }, Severity::ERROR},
        {[](auto& each) { each.scaleFactor = none; }, Severity::ERROR},
        {[](auto& each) { each.lodSettings = "{"; }, Severity::ERROR},
        {[](auto& each) { each.name = "9 a"; }, Severity::REFUSAL},
        {[](auto& each) { each.length = 256; }, Severity::REFUSAL},
        {[](auto& each) { each.resolution = -1; }, Severity::REFUSAL},
        {[](auto& each) { each.resolution = 1e-15; }, Severity::REFUSAL},
        {[](auto& each) { each.maximumValue = 1e300; }, Severity::REFUSAL},
        {[](auto& each) { each.defaultValue = 300; }, Severity::REFUSAL},
        {[](auto& each) { each.storageClass = 4; }, Severity::REFUSAL},
        {[](auto& each) { each.compressionOptions = 4; }, Severity::REFUSAL},
        {[](auto& each) { each.lodSettings = "guess"; }, Severity::REFUSAL},
        {[](auto& each) { each.namedValues = "what"; }, Severity::NOTE}};
    AttributeUse use;
    use.takenNames = {"taken"};
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        PointAttribute attribute = byteAttribute("own.a");
        changes[i].first(attribute);
        const auto findings = checkAttribute(attribute, use);
        QVERIFY2(!findings.empty(), qPrintable(QString::number(i)));
        const auto gravest =
            std::min_element(findings.begin(), findings.end(),
                             [](const auto& a, const auto& b) { return a.severity < b.severity; });
        QVERIFY2(gravest->severity == changes[i].second, gravest->text.c_str());
    }
}

void AttributeRulesTest::doubtfulDefinitionsAreNoted() {
    const auto textsOf = [](const PointAttribute& attribute, const AttributeUse& use = {}) {
        QStringList texts;
        for (const auto& finding : checkAttribute(attribute, use)) {
            if (finding.severity != Severity::NOTE)
                texts += "refused";
            texts += QString::fromStdString(finding.text);
        }
        return texts.join('|');
    };
    PointAttribute attribute = byteAttribute("own.a");
    QCOMPARE(textsOf(attribute), QString());
    attribute.resolution = 2;
    QCOMPARE(textsOf(attribute),
             QString("The range is no multiple of the resolution; the largest value is 254."));
    attribute = byteAttribute("own.a");
    attribute.resolution = 0.5;
    attribute.defaultValue = 3.3;
    QCOMPARE(textsOf(attribute),
             QString("The default value is no multiple of the resolution; it is "
                     "stored as 3.5."));
    attribute = byteAttribute("own.a");
    attribute.namedValues = "1=one\n300=far\n2.5=half";
    QCOMPARE(textsOf(attribute), QString("300 is out of the range. (And 1 more.)"));
    const std::pair<const char*, const char*> tags[] = {
        {"a, b", ""}, {"a, a", "The tag \"a\" stands twice."}, {"a, ", "There is an empty tag."}};
    for (const auto& [text, note] : tags) {
        attribute = byteAttribute("own.a");
        attribute.tags = text;
        QCOMPARE(textsOf(attribute), note);
    }
    // A primary attribute is indexed, the stored values of one can't change.
    PointAttribute id = defaultAttribute("tarvo.id");
    id.resolution = 0.5;
    AttributeUse use;
    use.primary = true;
    QVERIFY(textsOf(id, use).startsWith("refused"));
    const PointAttribute stored = defaultAttribute("tarvo.xyz");
    PointAttribute changed = stored;
    changed.title = "other";
    use = {};
    use.key = true;
    use.stored = &stored;
    QCOMPARE(textsOf(changed, use), QString());
    changed.maximumValue = 100;
    QVERIFY(textsOf(changed, use).startsWith("refused"));
}

// What is not seen is not stored.
void AttributeRulesTest::everyChangeIsSeen() {
    const PointAttribute before = byteAttribute("own.a");
    const std::function<void(PointAttribute&)> changes[] = {
        [](auto& each) { each.name = "own.b"; },
        [](auto& each) { each.title = "b"; },
        [](auto& each) { each.tags = "b"; },
        [](auto& each) { each.description = "b"; },
        [](auto& each) { each.unitSymbol = "b"; },
        [](auto& each) { each.length = 2; },
        [](auto& each) { each.resolution = 0.5; },
        [](auto& each) { each.minimumValue = -1; },
        [](auto& each) { each.maximumValue = 254; },
        [](auto& each) { each.defaultValue = 1; },
        [](auto& each) { each.invalidValue = 255; },
        [](auto& each) { each.namedValues = "1=b"; },
        [](auto& each) { each.storageClass = 3; },
        [](auto& each) { each.scaleFactor = 2; },
        [](auto& each) { each.lodSettings = "first"; },
        [](auto& each) { each.scaleFactor = none; },
        [](auto& each) { each.compressionOptions = 1; }};
    for (std::size_t i = 0; i < std::size(changes); ++i) {
        PointAttribute attribute = before;
        QVERIFY(sameAttribute(attribute, before));
        changes[i](attribute);
        QVERIFY2(!sameAttribute(attribute, before), qPrintable(QString::number(i)));
        QVERIFY(sameAttribute(attribute, PointAttribute(attribute)));
    }
    // And what becomes of stored values is told.
    PointAttribute stored = before;
    PointAttribute attribute = before;
    stored.length = 3;
    const auto told = [&] { return QString::fromStdString(conversionHint(stored, attribute)); };
    QVERIFY2(told().endsWith("become the default value. Elements from number 1 on are dropped."),
             qPrintable(told()));
    std::swap(stored, attribute);
    QVERIFY2(told().endsWith("become the default value. New elements have the default value."),
             qPrintable(told()));
    attribute.invalidValue = 255;
    QVERIFY2(told().contains(" become invalid. "), qPrintable(told()));
    stored = attribute;
    attribute.title = "b";
    QCOMPARE(told(), "");
    // Floating-point values have one without a word of it.
    attribute.invalidValue = std::numeric_limits<double>::quiet_NaN();
    attribute.resolution = 0;
    QVERIFY2(told().endsWith(" become invalid."), qPrintable(told()));
}

void AttributeRulesTest::catalogueIsTakenWhole() {
    const tarvo::catalogue::AttributeEntry entry{"own.a", "b", "c",   "d", "e", 2,       0.5, -1, 9,
                                                 1,       8,   "1=f", 3,   1,   "first", 2,   "g"};
    const PointAttribute attribute = tarvo::core::defaultAttribute(entry);
    const std::pair<bool, const char*> members[] = {
        {attribute.name == "own.a", "name"},
        {attribute.title == "b" && attribute.tags == "c", "title, tags"},
        {attribute.description == "d" && attribute.unitSymbol == "e", "description, unit"},
        {attribute.length == 2 && attribute.resolution == 0.5, "length, resolution"},
        {attribute.minimumValue == -1 && attribute.maximumValue == 9, "range"},
        {attribute.defaultValue == 1 && attribute.invalidValue == 8, "default, invalid value"},
        {attribute.namedValues == "1=f" && attribute.lodSettings == "first", "further texts"},
        {attribute.storageClass == 3 && attribute.compressionOptions == 1, "storage"},
        {attribute.scaleFactor == 2, "scale factor"}};
    for (const auto& [taken, member] : members)
        QVERIFY2(taken, member);
}

void AttributeRulesTest::freeSuggestionsComeFirst() {
    QTreeWidget tree;
    fillSuggestions(&tree, {});
    filterSuggestions(&tree, "xyz");
    QVERIFY(tree.currentItem());
    const QString first = tree.currentItem()->text(0);
    fillSuggestions(&tree, {first});
    QVERIFY(filterSuggestions(&tree, "xyz") > 1);
    QVERIFY(tree.currentItem());
    QVERIFY(!tree.currentItem()->text(0).endsWith("(exists already)"));
    QVERIFY(suggestionOf(tree.currentItem()));
    QCOMPARE(filterSuggestions(&tree, first + " noSuchWordAnywhere"), 0);
    QVERIFY(!tree.currentItem());
}

void AttributeRulesTest::lodSettingsKeepWhatTheyHold() {
    const auto settings = readLodSettings(
        "{\"a\": [1.50, {\"method\": 12345678901234567890123}], \"method\": \"first\", \"b\": "
        "null}");
    QCOMPARE(settings.method, std::string("first"));
    QCOMPARE(
        writeLodSettings("minimum", settings.members),
        std::string("{\"method\":\"minimum\",\"a\":[1.50,{\"method\":12345678901234567890123}],"
                    "\"b\":null}"));
    QCOMPARE(writeLodSettings("first", "{\"a\": {\"method\": 1}}"),
             std::string("{\"method\":\"first\",\"a\":{\"method\":1}}"));
    QCOMPARE(writeLodSettings("first", " {} "), std::string("first"));
    QCOMPARE(readLodSettings("\"first\" tail").lost, std::string("tail"));
    for (const char* members : {"[1]", "5", "{\"a\":}", "{\"method\": \"first\"}", "{} x"})
        QVERIFY2(!messageOf([&] { (void)writeLodSettings("first", members); }).isEmpty(), members);
    const std::string deep = "{\"a\":" + std::string(100000, '[') + std::string(100000, ']') + "}";
    QVERIFY(lodSettingsProblem(deep).text.find("nests") != std::string::npos);
}

GUI_TEST_MAIN(AttributeRulesTest)
#include "attributerulestest.moc"
