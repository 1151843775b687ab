#include "window/common/appearance.h"

#include "window/common/programsettings.h"
#include "window/common/tooltipcolours.h"

#include <QApplication>
#include <QFontDatabase>
#include <QHash>
#include <QPalette>
#include <QStyle>
#include <QToolTip>
#include <QWidget>
#include <QtPlugin>
#include <algorithm>
#include <iterator>

Q_IMPORT_PLUGIN(IconEnginePlugin)

namespace tarvo::window {

namespace {

const char* const themeKey = "Theme";
const char* const textSizeKey = "TextSize";
const char* const textPaneProperty = "textPane";
// The names under which themes are kept, in the order of the enumeration.
const char* const themeNames[] = {"system", "light", "dark"};

// A theme as its colours; the others of a palette follow from these.
struct Colours {
    QColor window, base, alternate, text, button, highlight, highlightedText, link, disabled,
        toolTip;
};

// The style draws the pane of tabs in a lighter shade of the colour of buttons; that of the dark
// theme is so dark that the shade is the window's colour.
const Colours lightColours{"#f0f0f0", "#ffffff", "#f5f6f8", "#1b1b1b", "#e6e6e6",
                           "#2a65a6", "#ffffff", "#0b57a4", "#5c5c5c", "#ffffdc"};
const Colours darkColours{"#393b40", "#1e1f22", "#27292d", "#e2e4e8", "#2d2f33",
                          "#33639a", "#ffffff", "#7fb3f0", "#b6bac0", "#3c3f44"};

QPalette paletteOf(const Colours& colours) {
    QPalette palette(colours.button, colours.window);
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, colours.text);
    palette.setColor(QPalette::Base, colours.base);
    palette.setColor(QPalette::AlternateBase, colours.alternate);
    palette.setColor(QPalette::Highlight, colours.highlight);
    palette.setColor(QPalette::HighlightedText, colours.highlightedText);
    palette.setColor(QPalette::Link, colours.link);
    palette.setColor(QPalette::LinkVisited, colours.link);
    palette.setColor(QPalette::ToolTipBase, colours.toolTip);
    palette.setColor(QPalette::PlaceholderText, colours.disabled);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, colours.disabled);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, colours.disabled);
    return palette;
}

// Tooltips draw with the roles of windows.
QPalette toolTipPaletteOf(QPalette palette) {
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::Button})
        palette.setColor(role, palette.color(QPalette::ToolTipBase));
    return palette;
}

QFont systemTextFont() {
    return QFontDatabase::systemFont(QFontDatabase::FixedFont);
}

void updateTextPanes() {
    for (QWidget* widget : QApplication::allWidgets()) {
        if (widget->property(textPaneProperty).toBool())
            useTextPaneFont(widget);
    }
}

// What was chosen where settings can't be written, as long as the program runs.
QHash<QString, QVariant>& unkept() {
    static QHash<QString, QVariant> values;
    return values;
}

QVariant chosen(const QString& key) {
    const auto found = unkept().constFind(key);
    return found != unkept().constEnd() ? *found : ProgramSettings().value(key);
}

// value: none takes the choice back.
void choose(const QString& key, const QVariant& value) {
    ProgramSettings settings;
    value.isValid() ? settings.setValue(key, value) : settings.remove(key);
    settings.sync();
    if (settings.status() == QSettings::NoError)
        unkept().remove(key);
    else
        unkept()[key] = value;
}

}  // namespace

Theme theme() {
    const QString kept = chosen(themeKey).toString();
    const auto* const found = std::find(std::begin(themeNames), std::end(themeNames), kept);
    return found == std::end(themeNames) ? Theme::SYSTEM
                                         : static_cast<Theme>(found - std::begin(themeNames));
}

void setTheme(Theme theme) {
    choose(themeKey, themeNames[static_cast<int>(theme)]);
    applyTheme();
}

void applyTheme() {
    // Styles of a platform draw in the platform's colours only.
    static const QString systemStyle = QApplication::style()->name();
    static QString shownStyle = systemStyle;
    const Theme wanted = theme();
    const QString style = wanted == Theme::SYSTEM ? systemStyle : QString("fusion");
    if (style != shownStyle)
        QApplication::setStyle(style);
    shownStyle = style;
    // Tooltips have a palette of their own, which windows look at when theirs changes.
    static const QPalette systemToolTips = QToolTip::palette();
    if (wanted == Theme::SYSTEM) {
        QToolTip::setPalette(systemToolTips);
        QApplication::setPalette(QPalette());
    } else {
        const QPalette palette = paletteOf(wanted == Theme::DARK ? darkColours : lightColours);
        QToolTip::setPalette(toolTipPaletteOf(palette));
        QApplication::setPalette(palette);
    }
    static ToolTipColours* const toolTips = [] {
        auto* filter = new ToolTipColours(qApp);
        qApp->installEventFilter(filter);
        return filter;
    }();
    Q_UNUSED(toolTips);
    // Widgets that the style sheet has styled take a new palette only with it.
    if (!qApp->styleSheet().isEmpty())
        qApp->setStyleSheet(qApp->styleSheet());
}

int textSize() {
    const int kept = chosen(textSizeKey).toInt();
    if (kept > 0)
        return std::clamp(kept, smallestTextSize, largestTextSize);
    return std::max(systemTextFont().pointSize(), smallestTextSize);
}

void setTextSize(int points) {
    choose(textSizeKey, std::clamp(points, smallestTextSize, largestTextSize));
    updateTextPanes();
}

void resetTextSize() {
    choose(textSizeKey, {});
    updateTextPanes();
}

void useTextPaneFont(QWidget* pane) {
    pane->setProperty(textPaneProperty, true);
    QFont font = pane->font();
    font.setFamilies(systemTextFont().families());
    font.setPointSize(textSize());
    pane->setFont(font);
}

}  // namespace tarvo::window
