// The view of the points: what it draws, and what becomes of clicks and keys in it. The same cases
// run without OpenGL, and with it where QRB_TEST_OPENGL says that there is some.

#include "qrb/loader.h"
#include "tests/window/guitestmain.h"
#include "tests/window/pictureprobe.h"
#include "tests/window/pointtable.h"
#include "tests/window/samplewindow.h"
#include "window/common/appearance.h"
#include "window/view/cloudcanvas.h"
#include "window/view/cloudview.h"
#include "window/view/glrenderer.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QSpinBox>
#include <QTreeWidget>
#include <QtTest>
#include <cmath>
#include <memory>
#include <set>

using namespace tarvo;
using namespace tarvo::window;

// Of a point: place and class.
struct Known {
    drawing::Vector place;
    std::int64_t kind = 0;
};

namespace {

// Pixels of what is painted over the points.
constexpr int freeBorder = 70;
constexpr int legendWidth = 300;

}  // namespace

class ViewTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { m_window.reset(); }
    void cleanupTestCase() { qrb::freeLibrary(); }

    void isHiddenAtFirstAndRemembered();
    void pointsStandWhereTheyAreInTheirColours_data();
    void pointsStandWhereTheyAreInTheirColours();
    void clickTellsThePointAndMarksItsRow();
    void currentRowIsMarked();
    void rectangleAndPolygonSelectWhatIsInThem();
    void filterOfThePointsHidesTheRest();
    void commitsAreFollowedAndPendingOnesTold();
    void closingAndFloatingWhileReading();
    void lostDeviceDrawsAgain();
    void controlsHaveNamesAndStandOut();

private:
    CloudCanvas* canvas() const { return m_window->child<CloudCanvas>("cloudCanvas"); }
    CloudView* dock() const { return m_window->child<CloudView>("dockPointCloudView"); }
    void showDock() const;
    void choose(const char* combo, const QString& text) const;
    QString state() const { return canvas()->state().value(0); }
    int idColumn() const;
    QImage picture() const;
    QPointF seen(const drawing::Vector& place) const;
    // Whose neighbours on the screen are so many pixels away, and which nothing is painted over.
    std::vector<std::uint64_t> lonely(double pixels) const;

    std::unique_ptr<SampleDatabase> m_sample;
    std::unique_ptr<SampleWindow> m_window;
    std::map<std::uint64_t, Known> m_points;
};

void ViewTest::initTestCase() {
    qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void ViewTest::init() {
    m_window = std::make_unique<SampleWindow>(m_sample->copy());
    m_window->window().resize(1500, 900);
    m_points.clear();
    for (const auto& [id, values] : tableOf(m_window->database(), {"tarvo.xyz", "tarvo.class"}))
        m_points[id] = {{values[0], values[1], values[2]}, std::llround(values[3])};
    QCOMPARE(m_points.size(), std::size_t(SampleDatabase::points));
}

void ViewTest::showDock() const {
    m_window->run("actionViewPointCloud", {});
    m_window->window().resizeDocks({dock()}, {700}, Qt::Horizontal);
    QTRY_COMPARE(state(), "600 of 600 points");
    // Docks take their new size in several steps.
    (void)picture();
}

void ViewTest::choose(const char* combo, const QString& text) const {
    auto* box = m_window->child<QComboBox>(combo);
    const int index = box->findText(text);
    QVERIFY2(index >= 0, qUtf8Printable(text));
    box->setCurrentIndex(index);
    emit box->activated(index);
}

int ViewTest::idColumn() const {
    const auto* header = m_window->child<QTreeWidget>("treePointData")->headerItem();
    for (int column = 0; column < header->columnCount(); ++column)
        if (header->text(column) == "tarvo.id")
            return column;
    return -1;
}

// Once it does not change any more.
QImage ViewTest::picture() const {
    QImage last;
    for (int same = 0; same < 4;) {
        QTest::qWait(60);
        const QImage now = canvas()->grab().toImage();
        same = now == last ? same + 1 : 0;
        last = now;
    }
    return last;
}

QPointF ViewTest::seen(const drawing::Vector& place) const {
    const auto projected = canvas()->camera().project(place);
    return projected ? QPointF(projected->x, projected->y) : QPointF(-1e6, -1e6);
}

std::vector<std::uint64_t> ViewTest::lonely(double pixels) const {
    const QRectF room =
        canvas()->rect().toRectF().adjusted(freeBorder, freeBorder, -legendWidth, -freeBorder);
    std::vector<std::uint64_t> found;
    for (const auto& [id, point] : m_points) {
        const QPointF at = seen(point.place);
        const bool isLonely =
            std::none_of(m_points.begin(), m_points.end(), [&](const auto& other) {
                const QPointF way = seen(other.second.place) - at;
                return other.first != id && std::hypot(way.x(), way.y()) < pixels;
            });
        if (isLonely && room.contains(at))
            found.push_back(id);
    }
    return found;
}

void ViewTest::isHiddenAtFirstAndRemembered() {
    QVERIFY(!dock()->isVisible());
    showDock();
    const bool isPlain = canvas()->state().join('\n').contains("without OpenGL");
    QCOMPARE(isPlain, qEnvironmentVariableIsEmpty("QRB_TEST_OPENGL"));
    choose("comboViewColour", "tarvo.class");
    m_window->child<QSpinBox>("spinViewPointSize")->setValue(5);
    choose("comboViewGround", "Dark");
    m_window->child<QAction>("actionViewPerspective")->trigger();
    const QString file = m_window->window().session().fileName;
    m_window->window().close();
    m_window.reset();

    MainWindow again;
    again.show();
    again.openDatabase(file, true);
    QVERIFY(in<QWidget>(&again, "dockPointCloudView")->isVisible());
    auto* shown = in<CloudCanvas>(&again, "cloudCanvas");
    QTRY_COMPARE(in<QComboBox>(&again, "comboViewColour")->currentText(), "tarvo.class");
    QCOMPARE(in<QSpinBox>(&again, "spinViewPointSize")->value(), 5);
    QVERIFY(shown->ground().lightness() < 128);
    QVERIFY(shown->camera().isPerspective());
    again.close();
}

void ViewTest::pointsStandWhereTheyAreInTheirColours_data() {
    QTest::addColumn<QString>("from");
    QTest::addColumn<bool>("perspective");
    QTest::newRow("top") << "actionViewTop" << false;
    QTest::newRow("front") << "actionViewFront" << false;
    QTest::newRow("corner in perspective") << "actionViewCorner" << true;
}

void ViewTest::pointsStandWhereTheyAreInTheirColours() {
    QFETCH(QString, from);
    QFETCH(bool, perspective);
    showDock();
    choose("comboViewColour", "tarvo.class");
    m_window->child<QSpinBox>("spinViewPointSize")->setValue(3);
    m_window->child<QAction>("actionViewPerspective")->setChecked(perspective);
    m_window->run(qUtf8Printable(from), {});
    m_window->run("actionViewAll", {});
    QTRY_COMPARE(state(), "600 of 600 points");
    const auto checked = lonely(6);
    QVERIFY(checked.size() > 50);
    const QImage image = picture();
    for (const std::uint64_t id : checked) {
        const QPointF at = seen(m_points[id].place);
        const drawing::Colour colour = drawing::paletteColour(m_points[id].kind);
        const QColor wanted(colour.red, colour.green, colour.blue);
        const QColor shown = image.pixelColor(static_cast<int>(std::floor(at.x())),
                                              static_cast<int>(std::floor(at.y())));
        QVERIFY2(shown == wanted, qPrintable(QString("point %1 at %2, %3: %4, not %5")
                                                 .arg(id)
                                                 .arg(at.x())
                                                 .arg(at.y())
                                                 .arg(shown.name(), wanted.name())));
    }
}

void ViewTest::clickTellsThePointAndMarksItsRow() {
    showDock();
    m_window->driver().showTab("tabPointData");
    m_window->run("actionQuerySelectAll", {});
    auto* rows = m_window->child<QTreeWidget>("treePointData");
    QCOMPARE(rows->topLevelItemCount(), SampleDatabase::points);
    const auto* title = m_window->child<QLabel>("labelPickedPoint");
    auto clicked = lonely(4);
    QVERIFY(clicked.size() > 20);
    clicked.resize(4);
    for (const std::uint64_t id : clicked) {
        // The values take room from the picture, so places are told anew each time.
        const QPointF at = seen(m_points[id].place);
        if (lonely(4).empty() || !canvas()->rect().contains(at.toPoint()))
            continue;
        QTest::mouseClick(canvas(), Qt::LeftButton, {}, at.toPoint());
        QTRY_COMPARE(title->text(), QString("Point %1").arg(id));
        QVERIFY(rows->currentItem());
        QCOMPARE(rows->currentItem()->text(idColumn()), QString::number(id));
        QTest::mouseClick(m_window->child<QWidget>("buttonClosePickedPoint"), Qt::LeftButton);
        QCoreApplication::processEvents();
    }
    QTest::mouseClick(canvas(), Qt::LeftButton, {}, QPoint(2, canvas()->height() / 2));
    QTRY_VERIFY(!title->isVisible());
}

void ViewTest::currentRowIsMarked() {
    showDock();
    m_window->driver().showTab("tabPointData");
    m_window->run("actionQuerySelectAll", {});
    const std::uint64_t id = lonely(4).front();
    auto* rows = m_window->child<QTreeWidget>("treePointData");
    const auto found = rows->findItems(QString::number(id), Qt::MatchExactly, idColumn());
    QCOMPARE(found.size(), 1);
    const QImage before = picture();
    clickRow(found.first());
    const QImage after = picture();
    const QPoint at = seen(m_points[id].place).toPoint();
    int changed = 0;
    for (int y = 0; y < after.height(); ++y)
        for (int x = 0; x < after.width(); ++x)
            if (after.pixel(x, y) != before.pixel(x, y)) {
                ++changed;
                QVERIFY((QPoint(x, y) - at).manhattanLength() < 20);
            }
    QVERIFY(changed > 40);
}

void ViewTest::rectangleAndPolygonSelectWhatIsInThem() {
    m_window->driver().showTab("tabPointData");
    showDock();
    m_window->run("actionViewTop", {});
    auto* field = m_window->child<QComboBox>("PointDataFilter");
    const QPoint from(freeBorder, freeBorder);
    const QPoint to(canvas()->width() / 2, canvas()->height() / 2);
    // Halfway and to the end, as a hand does.
    QTest::mousePress(canvas(), Qt::LeftButton, Qt::ControlModifier, from);
    QMouseEvent move(QEvent::MouseMove, to, canvas()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     Qt::ControlModifier);
    QCoreApplication::sendEvent(canvas(), &move);
    QTest::mouseRelease(canvas(), Qt::LeftButton, Qt::ControlModifier, to);
    const auto selected = [&] {
        std::set<std::uint64_t> ids;
        for (const auto& [id, values] :
             tableOf(m_window->database(), {"tarvo.class"}, field->currentText().toStdString()))
            ids.insert(id);
        return ids;
    };
    std::set<std::uint64_t> inside;
    for (const auto& [id, point] : m_points)
        if (QRectF(from, to).contains(seen(point.place)))
            inside.insert(id);
    QVERIFY(inside.size() > 20 && inside.size() < m_points.size());
    QCOMPARE(selected(), inside);

    // One with a corner that goes in.
    m_window->run("actionViewPolygon", {});
    const int width = canvas()->width();
    const int height = canvas()->height();
    const QPolygonF polygon{QPointF(width * 0.2, height * 0.2), QPointF(width * 0.8, height * 0.25),
                            QPointF(width * 0.45, height * 0.45),
                            QPointF(width * 0.7, height * 0.8),
                            QPointF(width * 0.25, height * 0.7)};
    for (const QPointF& corner : polygon)
        QTest::mouseClick(canvas(), Qt::LeftButton, {}, corner.toPoint());
    QTest::keyClick(canvas(), Qt::Key_Return);
    QPolygonF clicked;
    for (const QPointF& corner : polygon)
        clicked += corner.toPoint();
    inside.clear();
    for (const auto& [id, point] : m_points)
        if (clicked.containsPoint(seen(point.place), Qt::OddEvenFill))
            inside.insert(id);
    QVERIFY(inside.size() > 20);
    QCOMPARE(selected(), inside);
    QVERIFY(!m_window->child<QAction>("actionViewPolygon")->isChecked());

    // Given up, nothing changes.
    const QString kept = field->currentText();
    m_window->run("actionViewPolygon", {});
    QTest::mouseClick(canvas(), Qt::LeftButton, {}, from);
    QTest::keyClick(canvas(), Qt::Key_Escape);
    QCOMPARE(canvas()->area(), CloudCanvas::Area::None);
    QCOMPARE(field->currentText(), kept);
}

void ViewTest::filterOfThePointsHidesTheRest() {
    showDock();
    const auto count = [&](const char* filter) {
        return static_cast<int>(tableOf(m_window->database(), {"tarvo.class"}, filter).size());
    };
    auto* field = m_window->child<QComboBox>("PointDataFilter");
    field->setEditText("tarvo.xyz[0] < 30");
    choose("comboViewFilter", "Hide the rest");
    QTRY_COMPARE(state(), QString("%1 of 600 points").arg(count("tarvo.xyz[0] < 30")));
    // What is typed counts when it is run.
    field->setEditText("tarvo.xyz[0] < 60");
    m_window->run("actionQuerySelectNext", {});
    QTRY_COMPARE(state(), QString("%1 of 600 points").arg(count("tarvo.xyz[0] < 60")));
    choose("comboViewFilter", "Fade the rest");
    QTRY_COMPARE(state(), "600 of 600 points");
    choose("comboViewFilter", "All points");
    QTRY_COMPARE(state(), "600 of 600 points");
}

void ViewTest::commitsAreFollowedAndPendingOnesTold() {
    showDock();
    m_window->begin();
    QVERIFY(canvas()->state().join('\n').contains("without the pending transaction"));
    auto query = m_window->database().insert();
    const std::array<double, 3> place{50, 50, 150};
    query.bind("tarvo.xyz", qrb::pointcloud::DataType::DOUBLE, place.data(), sizeof place);
    query.next(1);
    query.close();
    m_window->window().refreshPanels();
    QTest::qWait(100);
    QCOMPARE(state(), "600 of 600 points");
    m_window->database().transactions().commit({});
    m_window->window().refreshPanels();
    QTRY_COMPARE(state(), "601 of 601 points");
    QVERIFY(!canvas()->state().join('\n').contains("pending"));
}

void ViewTest::closingAndFloatingWhileReading() {
    m_window->run("actionViewPointCloud", {});
    dock()->setFloating(true);
    QCoreApplication::processEvents();
    dock()->setFloating(false);
    m_window->run("actionClose", {});
    QCOMPARE(state(), "No database is open.");
    const QString file = m_sample->copy("other.qrbx");
    m_window->window().openDatabase(file, true);
    dock()->setFloating(true);
    QTRY_COMPARE(state(), "600 of 600 points");
    m_window->run("actionViewPointCloud", {});
    QVERIFY(!dock()->isVisible());
    // Long enough for the stream to be stopped.
    QTest::qWait(1300);
    m_window->run("actionViewPointCloud", {});
    m_window->window().openDatabase(m_sample->copy(), true);
    QTRY_COMPARE(state(), "600 of 600 points");
    dock()->setFloating(false);
    QVERIFY(picture().size() == canvas()->size());
}

void ViewTest::lostDeviceDrawsAgain() {
    QString reason;
    const auto renderer = GlRenderer::make(reason);
    QCOMPARE(renderer != nullptr, !qEnvironmentVariableIsEmpty("QRB_TEST_OPENGL"));
    if (!renderer)
        QSKIP(qUtf8Printable("No OpenGL: " + reason));
    auto block = std::make_shared<view::PointBlock>();
    block->origin = {6e6, 5e6, 100};
    block->places = {{0, 0, 0}, {10, 5, 0}};
    block->colours = {{255, 0, 0, 255}, {0, 0, 255, 255}};
    block->ids = {1, 2};
    block->box.add(drawing::Vector{6e6, 5e6, 100});
    block->box.add(drawing::Vector{6e6 + 10, 5e6 + 5, 100});
    DrawingOrder order;
    order.camera.setScreen(200, 100);
    order.camera.show(block->box);
    order.blocks = {block};
    order.ground = {255, 255, 255};
    order.pointSize = 3;
    QImage before;
    QImage after;
    const auto never = [] { return false; };
    QVERIFY(renderer->draw(order, before, never));
    const auto at = order.camera.project({6e6 + 10, 5e6 + 5, 100});
    QCOMPARE(before.pixelColor(static_cast<int>(at->x), static_cast<int>(at->y)), QColor(Qt::blue));
    renderer->drop();
    QVERIFY(renderer->draw(order, after, never));
    QCOMPARE(after, before);
    renderer->drop();
}

void ViewTest::controlsHaveNamesAndStandOut() {
    showDock();
    const QStringList nameless = namelessControls(dock());
    QVERIFY2(nameless.isEmpty(), qUtf8Printable(nameless.join(", ")));
    QStringList faint;
    for (const Theme theme : {Theme::LIGHT, Theme::DARK}) {
        setTheme(theme);
        (void)picture();
        QCOMPARE(canvas()->ground().lightness() < 128, theme == Theme::DARK);
        faint += faintParts(dock());
    }
    setTheme(Theme::LIGHT);
    QVERIFY2(faint.isEmpty(), qUtf8Printable(faint.join('\n')));
}

GUI_TEST_MAIN(ViewTest)
#include "viewtest.moc"
