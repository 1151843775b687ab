// The per-user settings store. An object is made for each use and gone afterwards; the
// application's organization and program name must be set before.
#pragma once

#include <QSettings>
#include <QString>
#include <functional>

class QWidget;

namespace tarvo::window {

// Called at most once in the program's life: when settings can't be written, with their file.
void onUnwrittenSettings(std::function<void(const QString& fileName)> tell);

// INI format, user scope. The file is made readable for its owner only.
class ProgramSettings : public QSettings {
public:
    explicit ProgramSettings(const QString& group = "MainWindow");
    ~ProgramSettings() override;
};

// A dialog's own group in the platform's native store, readable for its owner only.
class DialogSettings : public QSettings {
public:
    // group: the dialog's class name; empty: the top level.
    explicit DialogSettings(const QString& group);
    ~DialogSettings() override;

    // The key "Geometry".
    void restoreGeometryOf(QWidget* dialog) const;
    void saveGeometryOf(const QWidget* dialog);
};

// The list with text in front, without the first entry equal to it, cut to maximum entries.
QStringList movedToFront(QStringList list, const QString& text, int maximum);

}  // namespace tarvo::window
