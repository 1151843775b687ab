#include "mainwindow/changelogpanel.h"

#include "common/comingactions.h"
#include "ui_changelogpanel.h"

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFontDatabase>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <stdexcept>

namespace {

QString readTextFile(const QString& fileName) {
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw std::runtime_error("Failed to open file.");
    return QString::fromUtf8(file.readAll());
}

}  // namespace

ChangelogPanel::ChangelogPanel(const DatabaseSession& session, QWidget* parent)
    : Panel(session, parent), m_ui(std::make_unique<Ui::ChangelogPanel>()) {
    m_ui->setupUi(this);
    m_ui->editChangelog->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_ui->buttonChangelogPrevious->setDefaultAction(m_ui->actionChangelogPrevious);
    m_ui->buttonChangelogNext->setDefaultAction(m_ui->actionChangelogNext);
    m_ui->editChangelogSearch->setEnabled(false);
    tarvo::common::announceForLater(
        {m_ui->actionChangelogExportToTextfile, m_ui->actionChangelogVerifyLogEntry,
         m_ui->actionChangelogAppendMessage, m_ui->actionChangelogImportFromDatabase,
         m_ui->actionChangelogNext, m_ui->actionChangelogPrevious});
}

ChangelogPanel::~ChangelogPanel() = default;

void ChangelogPanel::refresh() {
    if (!database())
        return;
    m_textFileName.clear();
    try {
        m_ui->editChangelog->setPlainText(readChangelog());
    } catch (const std::exception& error) {
        m_ui->editChangelog->setPlainText(
            QString("Failed to load changelog: %0").arg(QString::fromUtf8(error.what())));
    }
}

void ChangelogPanel::clear() {
    m_textFileName.clear();
    m_ui->editChangelog->clear();
}

void ChangelogPanel::loadTextFile(const QString& fileName) {
    m_ui->editChangelog->setPlainText(readTextFile(fileName));
    m_textFileName = QDir::toNativeSeparators(fileName);
    emit textFileLoaded();
}

// The library writes the changelog to files only.
QString ChangelogPanel::readChangelog() const {
    QTemporaryDir folder;
    if (!folder.isValid())
        throw std::runtime_error(folder.errorString().toStdString());
    const QString fileName = folder.filePath("changelog.txt");
    database()->changelog().exportToTextfile(fileName.toStdString());
    return readTextFile(fileName);
}

void ChangelogPanel::on_actionChangelogLoadFromTextfile_triggered() {
    const QString name = QFileDialog::getOpenFileName(this, "Load changelog from textfile",
                                                      QString(), "Text files (*.txt)");
    if (!name.isEmpty())
        guarded([&] { loadTextFile(name); });
}

void ChangelogPanel::on_editChangelog_textChanged() {
    static const QRegularExpression entryHeader(R"(\[#\d+\][^\n]*\n)");
    int count = 0;
    auto matches = entryHeader.globalMatch(m_ui->editChangelog->toPlainText());
    while (matches.hasNext()) {
        matches.next();
        ++count;
    }
    m_ui->labelChangelogEntries->setText(QString("Log entries: %1").arg(count));
}
