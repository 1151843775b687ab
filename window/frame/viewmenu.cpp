#include "window/frame/viewmenu.h"

#include "window/common/appearance.h"
#include "window/common/programsettings.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>

namespace tarvo::window {

namespace {

QAction* addViewAction(QMenu* menu, const char* name, const QString& text, const QString& toolTip) {
    QAction* action = menu->addAction(text);
    action->setObjectName(name);
    action->setToolTip("<html><body><p>" + toolTip + "</p></body></html>");
    return action;
}

void addThemes(QMenu* menu) {
    auto* group = new QActionGroup(menu);
    const auto add = [&](const char* name, const QString& text, const QString& toolTip,
                         Theme theme) {
        QAction* action = addViewAction(menu, name, text, toolTip);
        action->setCheckable(true);
        action->setData(static_cast<int>(theme));
        group->addAction(action);
        QObject::connect(action, &QAction::triggered, menu, [theme] { setTheme(theme); });
    };
    add("actionThemeSystem", QObject::tr("System colours"),
        QObject::tr("Use the colours of the desktop"), Theme::SYSTEM);
    add("actionThemeLight", QObject::tr("Light"), QObject::tr("Dark texts on light ground"),
        Theme::LIGHT);
    add("actionThemeDark", QObject::tr("Dark"), QObject::tr("Light texts on dark ground"),
        Theme::DARK);
    // Another window may have changed the theme.
    QObject::connect(menu, &QMenu::aboutToShow, group, [group] {
        for (QAction* action : group->actions())
            action->setChecked(action->data() == static_cast<int>(theme()));
    });
}

void addTextSizes(QMenu* menu) {
    QAction* larger = addViewAction(menu, "actionTextLarger", QObject::tr("Larger text"),
                                    QObject::tr("Enlarge the font of text panes [Ctrl++]"));
    larger->setShortcuts({QKeySequence("Ctrl++"), QKeySequence("Ctrl+=")});
    QObject::connect(larger, &QAction::triggered, menu, [] { setTextSize(textSize() + 1); });
    QAction* smaller = addViewAction(menu, "actionTextSmaller", QObject::tr("Smaller text"),
                                     QObject::tr("Reduce the font of text panes [Ctrl+-]"));
    smaller->setShortcut(QKeySequence("Ctrl+-"));
    QObject::connect(smaller, &QAction::triggered, menu, [] { setTextSize(textSize() - 1); });
    QAction* normal =
        addViewAction(menu, "actionTextNormal", QObject::tr("Normal text size"),
                      QObject::tr("Give text panes the size of the desktop's font [Ctrl+0]"));
    normal->setShortcut(QKeySequence("Ctrl+0"));
    QObject::connect(normal, &QAction::triggered, menu, [] { resetTextSize(); });
}

void addFullScreen(QMenu* menu, QWidget* window) {
    QAction* action = addViewAction(menu, "actionFullScreen", QObject::tr("Full Screen"),
                                    QObject::tr("Give the window the whole screen [F11]"));
    action->setCheckable(true);
    action->setShortcut(QKeySequence("F11"));
    const auto show = [action, window] { action->setChecked(window->isFullScreen()); };
    QObject::connect(action, &QAction::triggered, window, [window, show] {
        // The place that the next window begins with.
        if (!window->isFullScreen())
            ProgramSettings().setValue("Geometry", window->saveGeometry());
        window->setWindowState(window->windowState() ^ Qt::WindowFullScreen);
        show();
    });
    // The desktop has keys of its own for that.
    QObject::connect(menu, &QMenu::aboutToShow, action, show);
}

}  // namespace

QMenu* createViewMenu(QWidget* window) {
    auto* menu = new QMenu(QObject::tr("View"), window);
    menu->setObjectName("menuView");
    menu->setToolTipsVisible(true);
    addThemes(menu);
    menu->addSeparator();
    addTextSizes(menu);
    menu->addSeparator();
    addFullScreen(menu, window);
    return menu;
}

}  // namespace tarvo::window
