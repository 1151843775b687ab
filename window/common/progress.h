// Progress of long work that stays on the GUI thread: a modal dialog with a button "Cancel" that
// comes up once the work has taken half a second.
#pragma once

#include <QElapsedTimer>
#include <QString>
#include <exception>
#include <memory>

class QProgressDialog;
class QWidget;

namespace tarvo::window {

// The user cancelled; guarded() takes it silently.
class Cancelled : public std::exception {
public:
    const char* what() const noexcept override { return "Cancelled."; }
};

class Progress {
public:
    // text: what is being done.
    Progress(QWidget* parent, const QString& text);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // Call it often; a call costs next to nothing before the dialog is up. Lets the window work on
    // its events then. Throws Cancelled.
    void update(int percent);
    // With a further line below the text.
    void update(int percent, const QString& state);

private:
    QString m_text;
    std::unique_ptr<QProgressDialog> m_dialog;
    QElapsedTimer m_elapsed;
    QElapsedTimer m_sinceEvents;
};

}  // namespace tarvo::window
