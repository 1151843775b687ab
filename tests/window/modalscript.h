// Answers several modal dialogs in a row, also those that open while an earlier one is still open.
#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

class QWidget;

// Whether the dialog is there and has the keys: shortcuts and the focus go astray in the moment
// between showing a window and its activation, which is long on a busy machine. To be asked again
// and again; asks for the activation.
bool takesKeys(QDialog* dialog);

class ModalScript {
public:
    using Step = std::function<void(QDialog*)>;
    explicit ModalScript(std::vector<Step> steps);

    // How many dialogs came, and the texts of those that were message boxes.
    std::size_t answered() const { return m_answered; }
    const QStringList& texts() const { return m_texts; }

    // Presses a button by its text without ampersands.
    static bool pressButton(QWidget* parent, const QString& button);

    // Steps.
    static Step press(const QString& button);         // by its text without ampersands
    static Step chooseFile(const QString& fileName);  // in a file dialog
    // For the progress of long work, which may come up on a busy machine where nobody waits for it,
    // and is passed over then.
    static Step onProgress(const Step& step);
    static Step with(const Step& first, const QString& button);  // then presses the button

private:
    void arm();

    std::vector<Step> m_steps;
    std::vector<std::unique_ptr<QTimer>> m_timers;  // a timer does not fire within its own slot
    std::size_t m_answered = 0;
    QList<QPointer<QDialog>> m_seen;  // each is answered once
    QStringList m_texts;
};
