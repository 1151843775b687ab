#include "common/messageboxes.h"

#include <QCoreApplication>
#include <QMessageBox>

namespace tarvo::common {

namespace {

void showBox(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text,
             const QString& details = {}) {
    QMessageBox box(icon, title, QString(), QMessageBox::Ok, parent);
    // The box's own informative text would guess its format, so everything goes into the one
    // label whose format can be set.
    box.setTextFormat(Qt::PlainText);
    const bool isLong = details.size() > 1000 || details.count('\n') > 12;
    box.setText(details.isEmpty() || isLong ? text : text + "\n\n" + details);
    if (isLong)
        box.setDetailedText(details);
    box.exec();
}

}  // namespace

void showError(QWidget* parent, const QString& text, const QString& details) {
    showBox(parent, QMessageBox::Critical, QCoreApplication::applicationName(), text, details);
}

void showWarning(QWidget* parent, const QString& text) {
    showBox(parent, QMessageBox::Warning, QCoreApplication::applicationName(), text);
}

void showInformation(QWidget* parent, const QString& text) {
    showBox(parent, QMessageBox::Information, QString(), text);
}

void showUnbrokenInformation(QWidget* parent, const QString& text) {
    QString rich = text.toHtmlEscaped();
    rich.replace(' ', "&nbsp;").replace('\n', "<br>");
    QMessageBox box(QMessageBox::Information, QString(), rich, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::RichText);
    box.exec();
}

bool confirmed(QWidget* parent, const QString& question) {
    QMessageBox box(QMessageBox::Question, "Confirmation", QString(),
                    QMessageBox::Yes | QMessageBox::No, parent);
    box.setTextFormat(Qt::PlainText);
    box.setText(question);
    return box.exec() == QMessageBox::Yes;
}

}  // namespace tarvo::common
