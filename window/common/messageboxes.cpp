#include "window/common/messageboxes.h"

#include "window/common/clipboard.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <algorithm>

namespace tarvo::window {

namespace {

// Of a line and the line with a caret below it, what fits into a box around the caret.
constexpr qsizetype caretContext = 40;

// Details that point into an expression: the expression, and a caret below the place that is meant.
bool pointsAtPlace(const QString& details) {
    return details.section('\n', 1, 1).trimmed() == "^";
}

QString aroundCaret(const QString& details) {
    const qsizetype caret = details.section('\n', 1, 1).indexOf('^');
    const qsizetype start = std::max<qsizetype>(caret - caretContext, 0);
    QStringList lines = details.split('\n');
    for (QString& line : lines)
        line = line.mid(start, 2 * caretContext);
    return lines.join('\n');
}

// A button that puts the text on the clipboard and leaves the box open.
void addCopyButton(QMessageBox& box, const QString& text) {
    auto* button = box.addButton("Copy", QMessageBox::ActionRole);
    button->setToolTip("Copy text and details to the clipboard");
    button->disconnect(SIGNAL(clicked(bool)));
    QObject::connect(button, &QPushButton::clicked, &box, [text] { copyToClipboard(text); });
    box.setDefaultButton(QMessageBox::Ok);
    box.setEscapeButton(QMessageBox::Ok);
}

void showBox(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text,
             const QString& details = {}) {
    QMessageBox box(icon, title, QString(), QMessageBox::Ok, parent);
    // The box's own informative text would guess its format, so everything goes into the one
    // label whose format can be set.
    box.setTextFormat(Qt::PlainText);
    const bool atPlace = pointsAtPlace(details);
    const bool isLong = !atPlace && (details.size() > 1000 || details.count('\n') > 12);
    const QString shown = atPlace ? aroundCaret(details) : details;
    box.setText(shown.isEmpty() || isLong ? text : text + "\n\n" + shown);
    if (isLong)
        box.setDetailedText(details);
    // The caret stands below its place only where all letters are equally wide.
    if (auto* label = box.findChild<QLabel*>("qt_msgbox_label"); label && atPlace)
        label->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    if (icon == QMessageBox::Critical)
        addCopyButton(box, details.isEmpty() ? text : text + "\n\n" + details);
    box.exec();
}

bool ask(QWidget* parent, const QString& question, QMessageBox::StandardButton answer) {
    QMessageBox box(QMessageBox::Question, "Confirmation", QString(),
                    QMessageBox::Yes | QMessageBox::No, parent);
    box.setTextFormat(Qt::PlainText);
    box.setText(question);
    box.setDefaultButton(answer);
    return box.exec() == QMessageBox::Yes;
}

}  // namespace

void showError(QWidget* parent, const QString& text, const QString& details) {
    showBox(parent, QMessageBox::Critical, QCoreApplication::applicationName(), text, details);
}

void showWarning(QWidget* parent, const QString& text) {
    showBox(parent, QMessageBox::Warning, QCoreApplication::applicationName(), text);
}

void showInformation(QWidget* parent, const QString& text, const QString& details) {
    showBox(parent, QMessageBox::Information, QString(), text, details);
}

void showUnbrokenInformation(QWidget* parent, const QString& text) {
    QString rich = text.toHtmlEscaped();
    rich.replace(' ', "&nbsp;").replace('\n', "<br>");
    QMessageBox box(QMessageBox::Information, QString(), rich, QMessageBox::Ok, parent);
    box.setTextFormat(Qt::RichText);
    box.exec();
}

bool confirmed(QWidget* parent, const QString& question) {
    return ask(parent, question, QMessageBox::Yes);
}

bool lossConfirmed(QWidget* parent, const QString& question) {
    return ask(parent, question, QMessageBox::No);
}

bool lossConfirmed(QWidget* parent, const QString& question, const QString& action) {
    QMessageBox box(QMessageBox::Question, "Confirmation", QString(), QMessageBox::Cancel, parent);
    box.setTextFormat(Qt::PlainText);
    box.setText(question);
    const QPushButton* const doing = box.addButton(action, QMessageBox::AcceptRole);
    box.setDefaultButton(QMessageBox::Cancel);
    box.setEscapeButton(QMessageBox::Cancel);
    box.exec();
    return box.clickedButton() == doing;
}

}  // namespace tarvo::window
