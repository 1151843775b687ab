// Answers the next modal dialog while the code under test waits for it.
#pragma once

#include <QString>
#include <QTimer>
#include <functional>

class QDialog;

class ModalAnswer {
public:
    // Does the action with the next modal dialog that shows up, once.
    explicit ModalAnswer(std::function<void(QDialog*)> action);
    // Presses a button of the next message box, by its text without ampersands.
    explicit ModalAnswer(const QString& button = "OK");

    // Whether the dialog came, and the text that it showed.
    bool came() const { return m_came; }
    const QString& text() const { return m_text; }

private:
    void poll();

    std::function<void(QDialog*)> m_action;
    QTimer m_timer;
    bool m_came = false;
    QString m_text;
};
