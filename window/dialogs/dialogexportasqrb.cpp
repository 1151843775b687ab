#include "window/dialogs/dialogexportasqrb.h"

#include "core/creationsettings.h"
#include "core/namedfilter.h"
#include "core/newdatabase.h"
#include "core/nodelist.h"
#include "ui_dialogexportasqrb.h"
#include "window/common/filefilter.h"
#include "window/common/filterhistory.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/textformat.h"
#include "window/dialogs/dialogcreatesettings.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <stdexcept>

namespace tarvo::window {

namespace {

// Beside the file, under a name that is free as a rule.
QString proposedTarget(const QString& fileName) {
    const QFileInfo file(fileName);
    const QString suffix = file.suffix().isEmpty() ? QString() : '.' + file.suffix();
    return QDir::toNativeSeparators(
        file.dir().filePath(file.completeBaseName() + "-export" + suffix));
}

std::vector<std::string> namesOf(const QStringList& texts) {
    std::vector<std::string> result;
    for (const QString& text : texts)
        result.push_back(text.toStdString());
    return result;
}

}  // namespace

QString DialogExportAsQRB::run(const Source& source, const QString& filter, const QString& nodes,
                               const PlaceCheck& checkPlace, QWidget* parent) {
    DialogExportAsQRB dialog(source, checkPlace, parent);
    dialog.m_ui->editFilter->setEditText(filter);
    dialog.m_ui->editNodes->setText(nodes);
    dialog.m_ui->editFilter->setFocus();
    return dialog.exec() == QDialog::Accepted ? dialog.m_ui->editTarget->text() : QString();
}

DialogExportAsQRB::DialogExportAsQRB(const Source& source, const PlaceCheck& checkPlace,
                                     QWidget* parent)
    : WorkingDialog(parent),
      m_ui(std::make_unique<Ui::DialogExportAsQRB>()),
      m_database(source.database),
      m_fileName(source.fileName),
      m_identity(source.identity),
      m_checkPlace(checkPlace),
      m_target(core::creationSettings(m_database)
                   .value_or(qrb::pointcloud::CreateSettings(m_database.context()))),
      m_settings("DialogExportAsQRB") {
    const auto& attributes = m_database.pointAttributes();
    m_target.primaryAttribute =
        core::definitionForCopy(m_database, attributes.primaryAttributeName());
    m_ui->setupUi(this);
    useProgressBar(m_ui->progressBar);
    // Completion would change the expression while it is typed.
    m_ui->editFilter->setCompleter(nullptr);
    m_ui->editFilter->lineEdit()->setPlaceholderText(tr("all points"));
    FilterHistory::show(m_ui->editFilter);
    m_ui->editTarget->setText(proposedTarget(m_fileName));
    fillLists();
    m_settings.restoreGeometryOf(this);
    m_ui->editChangelog->setChecked(m_settings.value("Changelog", false).toBool());
}

DialogExportAsQRB::~DialogExportAsQRB() {
    m_settings.saveGeometryOf(this);
    m_settings.setValue("Changelog", m_ui->editChangelog->isChecked());
}

void DialogExportAsQRB::fillLists() {
    m_ui->listAttributes->setEntries(tr("Point attributes"), tr("Search in point attributes"),
                                     textList(m_database.pointAttributes().list()));
    m_ui->listMetaData->setEntries(tr("Meta data items"), tr("Search in meta data items"),
                                   textList(m_database.metaData().list()));
}

core::Selection DialogExportAsQRB::selection() const {
    core::Selection result;
    result.filter = m_ui->editFilter->currentText().trimmed().toStdString();
    const QString nodes = m_ui->editNodes->text().trimmed();
    if (!nodes.isEmpty())
        result.nodes = core::parseNodeList(nodes.toStdString());
    result.attributes = namesOf(m_ui->listAttributes->checked());
    result.metaData = namesOf(m_ui->listMetaData->checked());
    return result;
}

// What was done, for the transaction that writes the copy.
std::string DialogExportAsQRB::transactionSettings() const {
    const QJsonObject settings{
        {"source", QFileInfo(m_fileName).fileName()},
        {"uuid", QString::fromStdString(m_database.getUuid())},
        {"filter", QString::fromStdString(core::withNumbers(
                       m_ui->editFilter->currentText().trimmed().toStdString(),
                       core::FilterAttributes::of(m_database.pointAttributes())))},
        {"nodes", m_ui->editNodes->text().trimmed()},
        {"attributes", QJsonArray::fromStringList(m_ui->listAttributes->checked())},
        {"metadata", QJsonArray::fromStringList(m_ui->listMetaData->checked())},
        {"changelog", m_ui->editChangelog->isChecked()}};
    return QJsonDocument(settings).toJson(QJsonDocument::Compact).toStdString();
}

void DialogExportAsQRB::on_buttonSettings_clicked() {
    guarded(this, [this] {
        QString location = m_ui->editTarget->text();
        if (DialogCreateSettings::edit(m_database.context(), location, m_target, this))
            m_ui->editTarget->setText(location);
    });
}

bool DialogExportAsQRB::mayWriteTarget() {
    const QFileInfo target(m_ui->editTarget->text());
    if (!target.exists())
        return true;
    if (files::identityOf(m_ui->editTarget->text().toStdString()) == m_identity)
        throw std::runtime_error(tr("The copy can't replace the database that it is made "
                                    "from.\nChoose another location.")
                                     .toStdString());
    m_checkPlace(m_ui->editTarget->text());
    return lossConfirmed(
        this, tr("The file \"%0\" exists already.\nReplace it?").arg(m_ui->editTarget->text()));
}

void DialogExportAsQRB::on_pushButtonExport_clicked() {
    m_ui->editTarget->setText(withDatabaseExtension(m_ui->editTarget->text().trimmed()));
    guarded(this, [this] {
        if (mayWriteTarget())
            exportDatabase();
    });
}

void DialogExportAsQRB::exportDatabase() {
    const core::Selection what = selection();
    const std::string settings = transactionSettings();
    const bool changelog = m_ui->editChangelog->isChecked();
    const QString location = m_ui->editTarget->text();
    // The changelog is read from the file, all else from the database that is open.
    if (changelog && files::identityOf(m_fileName.toStdString()) != m_identity)
        throw std::runtime_error(
            tr("The changelog can't be taken over: the database's file was replaced, renamed or "
               "deleted since it was opened.\nExport without the changelog.")
                .toStdString());
    // What was written is removed on every exit but publish().
    core::NewDatabase target(m_database.context(), location.toStdString(),
                             QFileInfo::exists(location));
    const double milliseconds =
        work(tr("Export cancelled."), [&](const qrb::pointcloud::Progress& progress) {
            target.create(m_target);
            qrb::Pointcloud& cloud = target.cloud();
            qrb::pointcloud::TransactionGuard transaction(
                cloud.transactions(), "Export", transactionAgentText().toStdString(), {}, settings);
            if (changelog)
                cloud.changelog().importFromDatabase(m_fileName.toStdString());
            // Reading and writing take about the same time.
            m_points = core::copyDatabase(m_database, cloud, what,
                                          [&](int percent) { progress(percent / 2); });
            transaction.commit({}, [&](int percent) { progress(50 + percent / 2); });
            progress(100);  // the last chance to cancel: the file isn't in its place yet
        });
    target.publish();
    if (!what.filter.empty())
        FilterHistory::add(m_ui->editFilter->currentText());
    if (confirmed(this, tr("Successfully finished!\n\nPoints: %0\nDuration: %1 ms\n\n"
                           "Open the new database?")
                            .arg(QLocale().toString(static_cast<qulonglong>(m_points)),
                                 QLocale().toString(milliseconds, 'f', 1))))
        accept();
}

void DialogExportAsQRB::on_pushButtonClose_clicked() {
    close();
}

}  // namespace tarvo::window
