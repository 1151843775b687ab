// How the program looks, as the user set it once: the theme, and the size of the font of text
// panes. Kept with the program settings; GUI thread only.
#pragma once

class QWidget;

namespace tarvo::window {

enum class Theme { SYSTEM, LIGHT, DARK };

Theme theme();
// Keeps the theme and shows every window in it at once.
void setTheme(Theme theme);
// Shows the theme that was kept. Call it first before the application has a style sheet, which
// hides the name of the system's style.
void applyTheme();

constexpr int smallestTextSize = 6;  // points
constexpr int largestTextSize = 40;
// The size of the font of text panes in points.
int textSize();
// Keeps the size, at least the smallest and at most the largest, for all text panes there are.
void setTextSize(int points);
// Back to the size that the system's font has.
void resetTextSize();

// Gives a text pane the family of the system's fixed-pitch font in the size set, now and whenever
// that changes.
void useTextPaneFont(QWidget* pane);

}  // namespace tarvo::window
