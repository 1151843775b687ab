// Message boxes whose texts may come from files: all of them show plain text, never rich text.
#pragma once

#include <QString>

class QWidget;

namespace tarvo::window {

// A critical box whose text and details can be copied; long details go behind the box's
// "Show Details..." button.
void showError(QWidget* parent, const QString& text, const QString& details = {});
void showWarning(QWidget* parent, const QString& text);
// An information box without title and with the button OK.
// details: shown on request, in a field that scrolls.
void showInformation(QWidget* parent, const QString& text, const QString& details = {});
// The same for a text of our own, shown as rich text in which no blank may break a line.
void showUnbrokenInformation(QWidget* parent, const QString& text);
// A question titled "Confirmation"; true on Yes.
bool confirmed(QWidget* parent, const QString& question);
// The same with a button of this text in place of Yes, and Cancel in place of No.
bool confirmed(QWidget* parent, const QString& question, const QString& action);
// The same where Yes loses something: Return says No.
bool lossConfirmed(QWidget* parent, const QString& question);
// The same with a button of this text in place of Yes, and Cancel in place of No.
bool lossConfirmed(QWidget* parent, const QString& question, const QString& action);

}  // namespace tarvo::window
