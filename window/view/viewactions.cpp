#include "window/view/viewactions.h"

#include "window/common/programsettings.h"
#include "window/view/cloudcanvas.h"

#include <QAction>

namespace tarvo::window {

namespace {

const char* const perspectiveKey = "Perspective";
constexpr double zoomStep = 1.25;

QAction* add(CloudCanvas* canvas, const char* name, const QString& text, const QString& toolTip,
             const QList<QKeySequence>& keys) {
    auto* action = new QAction(text, canvas);
    action->setObjectName(name);
    action->setToolTip("<html><body><p>" + toolTip + "</p></body></html>");
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    canvas->addAction(action);
    return action;
}

QAction* addSide(CloudCanvas* canvas, const char* name, const QString& text, const QString& toolTip,
                 const QKeySequence& key, drawing::Side side) {
    QAction* action = add(canvas, name, text, toolTip, {key});
    QObject::connect(action, &QAction::triggered, canvas, [canvas, side] { canvas->look(side); });
    return action;
}

QAction* addArea(CloudCanvas* canvas, const char* name, const QString& text, const QString& toolTip,
                 const QKeySequence& key, CloudCanvas::Area area) {
    QAction* action = add(canvas, name, text, toolTip, {key});
    action->setCheckable(true);
    QObject::connect(action, &QAction::triggered, canvas, [canvas, area](bool on) {
        canvas->choose(on ? area : CloudCanvas::Area::None);
    });
    QObject::connect(canvas, &CloudCanvas::areaEnded, action,
                     [action] { action->setChecked(false); });
    return action;
}

}  // namespace

ViewActions createViewActions(CloudCanvas* canvas) {
    ViewActions actions{};
    actions.top = addSide(canvas, "actionViewTop", QObject::tr("Top"),
                          QObject::tr("Look straight down, north above [1]"), QKeySequence("1"),
                          drawing::Side::Top);
    actions.front =
        addSide(canvas, "actionViewFront", QObject::tr("Front"),
                QObject::tr("Look to the north [3]"), QKeySequence("3"), drawing::Side::Front);
    actions.side =
        addSide(canvas, "actionViewSide", QObject::tr("Side"), QObject::tr("Look to the west [7]"),
                QKeySequence("7"), drawing::Side::Right);
    actions.corner = addSide(canvas, "actionViewCorner", QObject::tr("Corner"),
                             QObject::tr("Look down from the south-west [9]"), QKeySequence("9"),
                             drawing::Side::Corner);
    actions.perspective =
        add(canvas, "actionViewPerspective", QObject::tr("Perspective"),
            QObject::tr("What is farther away is smaller; else lines that are parallel stay so, "
                        "and lengths can be compared [5]"),
            {QKeySequence("5")});
    actions.perspective->setCheckable(true);
    QObject::connect(actions.perspective, &QAction::toggled, canvas, [canvas](bool on) {
        canvas->setPerspective(on);
        ProgramSettings("PointCloudView").setValue(perspectiveKey, on);
    });
    actions.perspective->setChecked(
        ProgramSettings("PointCloudView").value(perspectiveKey).toBool());
    // An area is chosen in parallel.
    QObject::connect(canvas, &CloudCanvas::looked, actions.perspective,
                     [perspective = actions.perspective, canvas] {
                         perspective->setChecked(canvas->camera().isPerspective());
                     });
    actions.all = add(canvas, "actionViewAll", QObject::tr("Full extent"),
                      QObject::tr("Show all points [Home]"), {QKeySequence("Home")});
    QObject::connect(actions.all, &QAction::triggered, canvas, [canvas] { canvas->showAll(); });
    actions.chosen =
        add(canvas, "actionViewChosen", QObject::tr("Selection"),
            QObject::tr("Show the extent of what was selected last: rows of \"Point Data\" or a "
                        "node of \"Point Index\" [E]"),
            {QKeySequence("E")});
    actions.zoomIn =
        add(canvas, "actionViewZoomIn", QObject::tr("Zoom in"),
            QObject::tr("Show less, but larger [+]"), {QKeySequence("+"), QKeySequence("=")});
    QObject::connect(actions.zoomIn, &QAction::triggered, canvas,
                     [canvas] { canvas->zoom(zoomStep); });
    actions.zoomOut = add(canvas, "actionViewZoomOut", QObject::tr("Zoom out"),
                          QObject::tr("Show more, but smaller [-]"), {QKeySequence("-")});
    QObject::connect(actions.zoomOut, &QAction::triggered, canvas,
                     [canvas] { canvas->zoom(1 / zoomStep); });
    actions.rectangle =
        addArea(canvas, "actionViewRectangle", QObject::tr("Rectangle"),
                QObject::tr("Select points in \"Point Data\" by a rectangle, from above: drag from "
                            "one corner to the other [R]; Ctrl+drag does so at once"),
                QKeySequence("R"), CloudCanvas::Area::Rectangle);
    actions.polygon =
        addArea(canvas, "actionViewPolygon", QObject::tr("Polygon"),
                QObject::tr("Select points in \"Point Data\" by a polygon, from above: click its "
                            "corners; a double click or Return closes it, Backspace takes the last "
                            "corner back, Esc gives it up [G]"),
                QKeySequence("G"), CloudCanvas::Area::Polygon);
    return actions;
}

}  // namespace tarvo::window
