// The text pane for JSON, and the places of values in a text.

#include "tests/window/guitestmain.h"
#include "window/common/appearance.h"
#include "window/widgets/jsonpositions.h"
#include "window/widgets/jsontextedit.h"

#include <QTextBlock>
#include <QtTest>

using namespace tarvo::window;

class JsonTextTest : public QObject {
    Q_OBJECT

private slots:
    void paneIndentsAndUndoes();
    void placesAreFound();
};

void JsonTextTest::paneIndentsAndUndoes() {
    JsonTextEdit edit;
    edit.show();
    QTest::keyClicks(&edit, "{");
    QTest::keyClick(&edit, Qt::Key_Return);
    QTest::keyClicks(&edit, "\"a\": 1,");
    QTest::keyClick(&edit, Qt::Key_Return);
    QCOMPARE(edit.toPlainText(), "{\n    \"a\": 1,\n    ");
    edit.replaceText("{}");
    QTest::keyClick(&edit, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(edit.toPlainText(), "{\n    \"a\": 1,\n    ");
    // Names, texts, numbers and what is wrong look different.
    edit.setPlainText("{\"a\": \"b\", \"c\": 1, \"d\": true, x");
    QSet<QRgb> colours;
    for (const auto& range : edit.document()->firstBlock().layout()->formats())
        colours.insert(range.format.foreground().color().rgb());
    QCOMPARE(colours.size(), 5);
    edit.setColoured(false);
    QVERIFY(edit.document()->firstBlock().layout()->formats().isEmpty());

    edit.setColoured(true);
    edit.setPlainText("\"a\" : \"a\"");
    const auto formats = edit.document()->firstBlock().layout()->formats();
    QCOMPARE(formats.size(), 2);
    QVERIFY(formats[0].format != formats[1].format);
    edit.setPlainText("  [");
    QTest::keyClick(&edit, Qt::Key_End);
    QTest::keyClick(&edit, Qt::Key_Enter, Qt::KeypadModifier);
    QCOMPARE(edit.toPlainText(), "  [\n      ");
    // Brackets in texts are no partners.
    edit.setPlainText("[\"\\\"]\", \"[\"]");
    QList<int> brackets;
    for (const auto& selection : edit.extraSelections())
        if (selection.cursor.hasSelection())
            brackets += selection.cursor.selectionStart();
    QCOMPARE(brackets, QList<int>({0, int(edit.toPlainText().size()) - 1}));
    // Line numbers get the room that they need.
    const int margin = edit.viewport()->x();
    setTextSize(textSize() + 10);
    QVERIFY(edit.viewport()->x() > margin);
    resetTextSize();
}

void JsonTextTest::placesAreFound() {
    const QString json = QString::fromUtf8(
        "{\"\xc3\xa4\": [1, {\"b~/\": \"\xf0\x9f\x98\x80 x\"}],\n \"c\": null, \"d\":[[ ] ,{}, "
        "[]]}");
    const auto places = placesOf(
        json, {"", QString::fromUtf8("/\xc3\xa4/1/b~0~1"), QString::fromUtf8("/\xc3\xa4/0"), "/c",
               QString::fromUtf8("/\xc3\xa4/7/x"), "/e", "/d/2", "/d/0"});
    const auto textAt = [&](std::size_t i) {
        return places[i] ? json.mid(places[i]->begin, places[i]->end - places[i]->begin)
                         : QString("(none)");
    };
    QCOMPARE(textAt(0), json);
    QCOMPARE(textAt(1), QString::fromUtf8("\"\xf0\x9f\x98\x80 x\""));
    QCOMPARE(textAt(2), "1");
    QCOMPARE(textAt(3), "null");
    QVERIFY(textAt(4).startsWith('[') && textAt(4).endsWith(']'));  // the value around it
    QCOMPARE(textAt(5), json);
    QCOMPARE(textAt(6), "[]");  // what comes behind brackets
    QCOMPARE(textAt(7), "[ ]");
    const auto at = lineAndColumn(json, places[3]->begin);
    QCOMPARE(at.line, 2);
    QCOMPARE(at.column, 7);
    QVERIFY(!jsonFaultOf(json));
    const auto fault = jsonFaultOf(QString::fromUtf8("[\"\xf0\x9f\x98\x80\", }"));
    QVERIFY(fault);
    QCOMPARE(fault->position, 7);
    const QString deep = QString(200'000, '[');
    QCOMPARE(placesOf(deep, {"/0/0"}).size(), 1u);
    QVERIFY(jsonFaultOf(deep));
    // Escapes are undone once; of members with the same name the last one counts.
    const QString names = "{\"~1\": 1, \"/\": 2, \"a\": {\"b\": 3}, \"a\": {\"b\": [4]}}";
    const std::pair<const char*, const char*> values[] = {
        {"/~01", "1"}, {"/~1", "2"}, {"/a", "{\"b\": [4]}"}, {"/a/b", "[4]"}};
    for (const auto& [pointer, value] : values) {
        const auto place = placesOf(names, {pointer}).front();
        QVERIFY(place);
        QCOMPARE(names.mid(place->begin, place->end - place->begin), value);
    }
}

GUI_TEST_MAIN(JsonTextTest)
#include "jsontexttest.moc"
