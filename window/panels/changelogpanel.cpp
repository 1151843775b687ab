#include "window/panels/changelogpanel.h"

#include "core/changelogentries.h"
#include "core/outputplace.h"
#include "ui_changelogpanel.h"
#include "window/common/appearance.h"
#include "window/common/filefilter.h"
#include "window/common/longtext.h"
#include "window/common/messageboxes.h"
#include "window/common/messages.h"
#include "window/common/outputdialog.h"
#include "window/common/textfiles.h"
#include "window/dialogs/dialogchangelogmessage.h"
#include "window/dialogs/dialogchangelogsignature.h"
#include "window/panels/changelogentries.h"
#include "window/panels/changelogsyntaxhighlighter.h"

#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QKeyEvent>
#include <stdexcept>

namespace tarvo::window {

namespace {

QString readTextFile(const QString& fileName) {
    QString text = QString::fromStdString(readFile(fileName, QObject::tr("Failed to open file.")));
    return text.replace("\r\n", "\n");
}

}  // namespace

ChangelogPanel::ChangelogPanel(const DatabaseSession& session, QWidget* parent)
    : Panel(session, parent), m_ui(std::make_unique<Ui::ChangelogPanel>()) {
    m_ui->setupUi(this);
    useTextPaneFont(m_ui->editChangelog);
    m_ui->buttonChangelogPrevious->setDefaultAction(m_ui->actionChangelogPrevious);
    m_ui->buttonChangelogNext->setDefaultAction(m_ui->actionChangelogNext);
    m_highlighter = new ChangelogSyntaxHighlighter(m_ui->editChangelog->document());
    m_highlighter->adaptTo(palette());
    m_findAction = addFindAction(
        "actionChangelogFind", tr("Go to the field that searches the changelog [Ctrl+F]"), [this] {
            m_ui->editChangelogSearch->setFocus();
            m_ui->editChangelogSearch->selectAll();
        });
    m_ui->editChangelog->addAction(m_findAction);
    m_ui->editChangelogSearch->installEventFilter(this);
    m_ui->editChangelog->installEventFilter(this);
    updateActions();
}

ChangelogPanel::~ChangelogPanel() = default;

void ChangelogPanel::updateActions() {
    const bool open = database() != nullptr;
    m_ui->actionChangelogExportToTextfile->setEnabled(open);
    m_ui->actionChangelogAppendMessage->setEnabled(isChangeable());
    m_ui->actionChangelogImportFromDatabase->setEnabled(isChangeable());
}

void ChangelogPanel::changeEvent(QEvent* event) {
    Panel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        m_highlighter->adaptTo(palette());
}

// Return goes on from hit to hit, in the search field and in the text, which has the keyboard once
// something was found.
bool ChangelogPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            const bool isBack = key->modifiers() & Qt::ShiftModifier;
            (isBack ? m_ui->actionChangelogPrevious : m_ui->actionChangelogNext)->trigger();
            return true;
        }
    }
    return Panel::eventFilter(watched, event);
}

void ChangelogPanel::refresh() {
    updateActions();
    if (!database())
        return;
    m_textFileName.clear();
    if (!database()->transactions().pending())
        m_announced.clear();
    QString text;
    try {
        workAside(this, tr("Reading the changelog..."), m_session.context,
                  [&](const StepProgress&) {
                      text = QString::fromStdString(core::readChangelog(database()->changelog()));
                  });
    } catch (const std::exception& error) {
        text = tr("Failed to load changelog: %0").arg(translatedMessage(error.what()));
    }
    showText(text);
}

void ChangelogPanel::clear() {
    m_announced.clear();
    m_textFileName.clear();
    showText({});
}

// Whoever looks for something in a long text does not want to wait for a copy of it.
void ChangelogPanel::showText(const QString& text) {
    // As the pane counts: each end of a line is one character.
    m_text = QString(text).replace("\r\n", "\n").replace('\r', '\n');
    try {
        showLongText(m_ui->editChangelog, m_text + announcement());
    } catch (const Cancelled&) {
        m_text.clear();
    }
}

QString ChangelogPanel::announcement() const {
    return m_announced.isEmpty() ? QString()
                                 : '\n' + tr("With the pending transaction:") +
                                       "\nMessage: " + m_announced.join("\nMessage: ") + '\n';
}

void ChangelogPanel::loadTextFile(const QString& fileName) {
    QString text;
    workAside(this, tr("Reading the text file..."),
              [&](const StepProgress&) { text = readTextFile(fileName); });
    showText(text);
    m_textFileName = QDir::toNativeSeparators(fileName);
    emit textFileLoaded();
}

void ChangelogPanel::on_actionChangelogLoadFromTextfile_triggered() {
    const QString name = QFileDialog::getOpenFileName(this, tr("Load changelog from textfile"),
                                                      QString(), tr("Text files (*.txt)"));
    if (!name.isEmpty())
        guarded([&] { loadTextFile(name); });
}

void ChangelogPanel::on_actionChangelogExportToTextfile_triggered() {
    const QString name = chooseOutput(this, tr("Export changelog to textfile"), "changelog.txt",
                                      tr("Text files (*.txt)"), "txt");
    if (name.isEmpty())
        return;
    const bool done = aside(tr("Exporting the changelog..."), [&](const StepProgress&) {
        core::checkOutputPlace(m_session.context, name.toStdString(),
                               {m_session.fileName.toStdString()});
        database()->changelog().exportToTextfile(name.toStdString());
    });
    if (done)
        emit databaseChanged();
}

void ChangelogPanel::on_actionChangelogImportFromDatabase_triggered() {
    const QString name = QFileDialog::getOpenFileName(this, tr("Import changelog from database"),
                                                      QString(), databaseFileDialogFilter());
    if (name.isEmpty() || !inTransaction("Import a changelog"))
        return;
    const bool done = aside(tr("Importing the changelog..."), [&](const StepProgress&) {
        database()->changelog().importFromDatabase(name.toStdString());
    });
    if (done)
        emit databaseChanged();
}

void ChangelogPanel::on_actionChangelogAppendMessage_triggered() {
    if (!database())
        return;
    QString message;
    bool done = false;
    // Until it is stored, the dialog comes up again with what was typed.
    while (!done) {
        DialogChangelogMessage dialog(message, this);
        if (dialog.exec() != QDialog::Accepted)
            return;
        message = dialog.message();
        done = inTransaction("Append a message to the changelog") &&
               guarded([&] { database()->changelog().appendMessage(message.toStdString()); });
    }
    m_announced += message;
    emit databaseChanged();
    // Where it is announced.
    m_ui->editChangelog->moveCursor(QTextCursor::End);
    emit told(tr("Message appended."));
}

void ChangelogPanel::on_actionChangelogVerifyLogEntry_triggered() {
    const QString& text = m_text;
    const qsizetype position = m_ui->editChangelog->textCursor().position();
    const std::string changelog = text.toStdString();
    const auto at = static_cast<std::size_t>(text.left(position).toUtf8().size());
    const auto entry = core::changelogEntryAt(changelog, at);
    // Before the first character of an entry the cursor is in none.
    const std::string signedText = entry && entry->begin < at
                                       ? changelog.substr(entry->begin, entry->end - entry->begin)
                                       : std::string();
    if (!core::hasSignature(signedText)) {
        showInformation(this, tr("Please select (double click) a signature first."));
        return;
    }
    DialogChangelogSignature(QString::fromStdString(signedText), this).exec();
}

void ChangelogPanel::showFound(const std::optional<TextRange>& found, bool isForward) {
    const QString pattern = m_ui->editChangelogSearch->text();
    if (const QString fault = faultOfSearch(pattern); !fault.isEmpty()) {
        emit told(fault);
        return;
    }
    if (!found) {
        if (pattern.isEmpty())
            emit told(isForward ? tr("No entry after the cursor.")
                                : tr("No entry before the cursor."));
        else
            emit told(
                (isForward ? tr("No \"%1\" after the cursor.") : tr("No \"%1\" before the cursor."))
                    .arg(pattern));
        return;
    }
    QTextCursor cursor = m_ui->editChangelog->textCursor();
    cursor.setPosition(static_cast<int>(found->start));
    cursor.setPosition(static_cast<int>(found->start + found->length), QTextCursor::KeepAnchor);
    m_ui->editChangelog->setTextCursor(cursor);
    m_ui->editChangelog->setFocus();
}

void ChangelogPanel::on_actionChangelogNext_triggered() {
    showFound(nextInChangelog(m_text, m_ui->editChangelogSearch->text(),
                              m_ui->editChangelog->textCursor().position()),
              true);
}

void ChangelogPanel::on_actionChangelogPrevious_triggered() {
    showFound(previousInChangelog(m_text, m_ui->editChangelogSearch->text(),
                                  m_ui->editChangelog->textCursor().anchor()),
              false);
}

void ChangelogPanel::on_editChangelog_textChanged() {
    m_ui->labelChangelogEntries->setText(tr("Log entries: %1").arg(countChangelogEntries(m_text)));
}

}  // namespace tarvo::window
