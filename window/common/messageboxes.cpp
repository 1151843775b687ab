#include "window/common/messageboxes.h"

#include "window/common/clipboard.h"

#include <QCoreApplication>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QStringList>
#include <algorithm>

namespace tarvo::window {

namespace {

// Pixels of a line in the narrowest box of the toolkit that breaks lines: the caret below a broken
// one would stand elsewhere.
constexpr int excerptWidth = 300;

constexpr qsizetype mostShown = 1500;  // characters
constexpr qsizetype mostDetails = 20'000;

// Details that point into an expression: the expression, and a caret below the place that is meant.
bool pointsAtPlace(const QString& details) {
    return details.section('\n', 1, 1).trimmed() == "^";
}

// What fits into a line of the font around the caret, the same part of both lines.
QString aroundCaret(const QString& details, const QFont& font) {
    const qsizetype room =
        std::max(10 * excerptWidth / QFontMetrics(font).horizontalAdvance(QString(10, '0')), 10);
    const qsizetype caret = details.section('\n', 1, 1).indexOf('^');
    const qsizetype longest = details.section('\n', 0, 0).size();
    const qsizetype start =
        std::clamp<qsizetype>(caret - room / 2, 0, std::max<qsizetype>(longest - room, 0));
    QStringList lines = details.split('\n');
    for (QString& line : lines)
        line = line.mid(start, room);
    return lines.join('\n');
}

// A button that puts the text on the clipboard and leaves the box open.
void addCopyButton(QMessageBox& box, const QString& text) {
    auto* button = box.addButton(QObject::tr("Copy"), QMessageBox::ActionRole);
    button->setToolTip(QObject::tr("Copy text and details to the clipboard"));
    button->disconnect(SIGNAL(clicked(bool)));
    QObject::connect(button, &QPushButton::clicked, &box, [text] { copyToClipboard(text); });
    box.setDefaultButton(QMessageBox::Ok);
    box.setEscapeButton(QMessageBox::Ok);
}

// Names and values from files may be megabytes, which no box lays out; the button copies all.
QString shortened(const QString& text, qsizetype most) {
    return text.size() <= most ? text : text.left(most) + QString::fromUtf8(" …");
}

void showBox(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text,
             const QString& details = {}) {
    QMessageBox box(icon, title, QString(), QMessageBox::Ok, parent);
    // The box's own informative text would guess its format, so everything goes into the one
    // label whose format can be set.
    box.setTextFormat(Qt::PlainText);
    const bool atPlace = pointsAtPlace(details);
    const bool isLong = !atPlace && (details.size() > 1000 || details.count('\n') > 12);
    // The caret stands below its place only where all letters are equally wide.
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const QString shown = atPlace ? aroundCaret(details, fixed) : details;
    const QString told = shortened(text, mostShown);
    box.setText(shown.isEmpty() || isLong ? told : told + "\n\n" + shown);
    if (isLong)
        box.setDetailedText(shortened(details, mostDetails));
    if (auto* label = box.findChild<QLabel*>("qt_msgbox_label"); label && atPlace)
        label->setFont(fixed);
    if (icon == QMessageBox::Critical)
        addCopyButton(box, details.isEmpty() ? text : text + "\n\n" + details);
    box.exec();
}

bool ask(QWidget* parent, const QString& question, QMessageBox::StandardButton answer) {
    QMessageBox box(QMessageBox::Question, QObject::tr("Confirmation"), QString(),
                    QMessageBox::Yes | QMessageBox::No, parent);
    box.setTextFormat(Qt::PlainText);
    box.setText(shortened(question, mostShown));
    box.setDefaultButton(answer);
    return box.exec() == QMessageBox::Yes;
}

// isDefault: whether Return says the action, else Cancel.
bool askToDo(QWidget* parent, const QString& question, const QString& action, bool isDefault) {
    QMessageBox box(QMessageBox::Question, QObject::tr("Confirmation"), QString(),
                    QMessageBox::Cancel, parent);
    box.setTextFormat(Qt::PlainText);
    box.setText(question);
    QPushButton* const doing = box.addButton(action, QMessageBox::AcceptRole);
    if (isDefault)
        box.setDefaultButton(doing);
    else
        box.setDefaultButton(QMessageBox::Cancel);
    box.setEscapeButton(QMessageBox::Cancel);
    box.exec();
    return box.clickedButton() == doing;
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

bool confirmed(QWidget* parent, const QString& question, const QString& action) {
    return askToDo(parent, question, action, true);
}

bool lossConfirmed(QWidget* parent, const QString& question) {
    return ask(parent, question, QMessageBox::No);
}

bool lossConfirmed(QWidget* parent, const QString& question, const QString& action) {
    return askToDo(parent, question, action, false);
}

}  // namespace tarvo::window
