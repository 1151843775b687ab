#include "window/dialogs/plugin/dialogplugin.h"

#include "core/outputplace.h"
#include "plugin/parameters.h"
#include "ui_dialogplugin.h"
#include "window/common/clipboard.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/messages.h"
#include "window/common/textfiles.h"
#include "window/common/textformat.h"
#include "window/dialogs/checklabel.h"
#include "window/dialogs/plugin/dialogpluginsettings.h"
#include "window/dialogs/plugin/pluginhost.h"
#include "window/dialogs/plugin/plugintrust.h"
#include "window/dialogs/plugin/resultpage.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QKeyEvent>
#include <cmath>
#include <utility>

namespace tarvo::window {

using plugin::Outcome;
using plugin::ParameterType;

namespace {

constexpr int progressSteps = 1000;
constexpr int tabCharacters = 30;

}  // namespace

DialogPlugin::DialogPlugin(plugin::Package package, PluginHost& host,
                           const ParameterForm::Selection& selection, QWidget* parent)
    : QDialog(parent),
      m_package(std::move(package)),
      m_host(host),
      m_ui(std::make_unique<Ui::DialogPlugin>()),
      m_form(new ParameterForm(m_package.manifest, selection,
                               QFileInfo(host.fileName()).absolutePath())),
      m_settings("DialogPlugin") {
    m_ui->setupUi(this);
    m_ui->scrollParameters->setWidget(m_form);
    describePlugin();
    connectRun();
    connect(m_form, &ParameterForm::changed, this, &DialogPlugin::updateActions);
    guarded(parent, [this] { m_form->setAttributes(m_host.attributes()); });
    m_settings.restoreGeometryOf(this);
    updateActions();
}

DialogPlugin::~DialogPlugin() {
    m_settings.saveGeometryOf(this);
}

void DialogPlugin::describePlugin() {
    const plugin::Manifest& manifest = m_package.manifest;
    const QString title = QString::fromStdString(manifest.title).simplified();
    setWindowTitle(title);
    QString text = QString::fromStdString(manifest.description).trimmed();
    if (manifest.writes)
        text +=
            QString(text.isEmpty() ? "" : "\n") + tr("It changes the database in one transaction.");
    m_ui->labelDescription->setText(text);
    m_ui->labelDescription->setVisible(!text.isEmpty());
    m_ui->labelDescription->setToolTip(
        plainToolTip(tr("Version %0\n%1")
                         .arg(QString::fromStdString(manifest.version),
                              QDir::toNativeSeparators(QString::fromStdString(m_package.place)))));
    m_ui->progressBar->hide();
    m_ui->labelState->hide();
}

void DialogPlugin::connectRun() {
    connect(&m_run, &PluginRun::printed, m_ui->editOutput, &OutputPane::add);
    connect(&m_run, &PluginRun::progressed, this, &DialogPlugin::showProgress);
    connect(&m_run, &PluginRun::resulted, this, &DialogPlugin::addResult);
    // Queued: the rest of the output is to come while a box is shown.
    connect(&m_run, &PluginRun::ended, this, &DialogPlugin::finish, Qt::QueuedConnection);
}

// Until the end of the run has been dealt with.
bool DialogPlugin::isRunning() const {
    return m_ui->buttonCancel->isEnabled();
}

QString DialogPlugin::reasonNotToRun() const {
    return m_host.isOpen() ? m_form->problem() : tr("No database is open.");
}

void DialogPlugin::updateActions() {
    const bool running = isRunning();
    const QString reason = running ? QString() : reasonNotToRun();
    m_form->setEnabled(!running);
    m_ui->buttonRun->setEnabled(!running && reason.isEmpty());
    m_ui->buttonRun->setToolTip(plainToolTip(reason));
    showCheck(m_ui->labelProblem, reason, CheckKind::ERROR);
    const bool unseen = !running && !m_package.manifest.writes && m_host.isPending();
    showCheck(
        m_ui->labelPending,
        unseen ? tr("A transaction is pending. The plugin sees the database as it was before it.")
               : "",
        CheckKind::NOTE);
}

void DialogPlugin::on_buttonRun_clicked() {
    guarded(this, [this] {
        const std::string arguments = plugin::argumentsOf(m_package.manifest, m_form->values());
        if (mayRun())
            start(arguments);
    });
}

bool DialogPlugin::mayRun() {
    checkOutputFiles();
    if (!mayReplaceFiles() || !isPluginTrusted(m_package, this))
        return false;
    return !m_package.manifest.writes || m_host.giveUp();
}

void DialogPlugin::checkOutputFiles() const {
    std::vector<std::string> reads{m_host.fileName().toStdString()};
    for (const QString& name : m_form->files(ParameterType::INPUT_FILE))
        reads.push_back(name.toStdString());
    for (const QString& name : m_form->files(ParameterType::OUTPUT_FILE))
        core::checkOutputPlace(qrb::Context("OFF", ""), name.toStdString(), reads,
                               core::OutputKind::Unknown);
}

bool DialogPlugin::mayReplaceFiles() {
    for (const QString& name : m_form->files(ParameterType::OUTPUT_FILE))
        if (QFileInfo::exists(name) &&
            !lossConfirmed(this, tr("The file \"%0\" exists already.\nReplace it?").arg(name)))
            return false;
    return true;
}

void DialogPlugin::start(const std::string& arguments) {
    m_form->remember();
    clearResults();
    m_closing = m_cancelled = false;
    m_ui->tabWidget->setCurrentWidget(m_ui->tabOutput);
    m_ui->progressBar->setRange(0, 0);  // nobody knows yet
    m_ui->progressBar->show();
    m_ui->labelState->setText(tr("Starting ..."));
    m_ui->labelState->show();
    m_ui->buttonCancel->setEnabled(true);
    m_ui->buttonCancel->setFocus();
    updateActions();
    PluginJob job;
    job.package = m_package;
    job.pythonPath = DialogPluginSettings::pythonPath().toStdString();
    job.library = m_host.library();
    job.database = m_host.fileName().toStdString();
    job.arguments = arguments;
    job.agent = transactionAgentText().toStdString();
    m_run.start(std::move(job));
}

void DialogPlugin::clearResults() {
    m_ui->editOutput->clear();
    while (m_ui->tabWidget->count() > 2) {
        QWidget* page = m_ui->tabWidget->widget(2);
        m_ui->tabWidget->removeTab(2);
        delete page;
    }
}

void DialogPlugin::showProgress(double fraction, const QString& text) {
    if (m_cancelled)
        return;
    m_ui->progressBar->setRange(0, progressSteps);
    m_ui->progressBar->setValue(static_cast<int>(std::lround(fraction * progressSteps)));
    m_ui->labelState->setText(text.isEmpty() ? tr("Running ...") : text.simplified());
}

void DialogPlugin::addResult(const std::shared_ptr<const PluginResult>& result) {
    auto* page = new ResultPage(result, QFileInfo(m_host.fileName()).absolutePath());
    const int index =
        m_ui->tabWidget->addTab(page, shortened(page->title(), tabCharacters).replace('&', "&&"));
    m_ui->tabWidget->setTabToolTip(index, plainToolTip(page->title()));
}

void DialogPlugin::finish() {
    m_ui->buttonCancel->setEnabled(false);
    m_ui->progressBar->hide();
    if (m_package.manifest.writes) {
        m_host.takeBack();
        guarded(this, [this] { m_form->setAttributes(m_host.attributes()); });
    }
    m_ui->labelState->setText(outcomeText());
    updateActions();
    const bool failed = m_run.failure() || m_run.outcome().end == Outcome::End::FAILED;
    if (!failed && m_ui->tabWidget->count() > 2 &&
        m_ui->tabWidget->currentWidget() == m_ui->tabOutput)
        m_ui->tabWidget->setCurrentIndex(2);
    if (m_ui->buttonRun->isEnabled())
        m_ui->buttonRun->setFocus();
    if (failed)
        showFailure();
    else if (m_closing && m_run.outcome().end == Outcome::End::CANCELLED)
        QDialog::reject();
    m_closing = false;
}

QString DialogPlugin::outcomeText() const {
    const QString unchanged = m_package.manifest.writes ? ' ' + tr("Nothing is changed.") : "";
    if (m_run.failure())
        return tr("Failed.") + unchanged;
    const Outcome& outcome = m_run.outcome();
    QString text;
    if (outcome.end == Outcome::End::CANCELLED)
        text = tr("Cancelled.") + unchanged;
    else if (outcome.end == Outcome::End::FAILED)
        text = tr("Failed.") + unchanged + ' ' + translatedMessage(outcome.text);
    else if (outcome.transaction != 0)
        text = tr("Done. Transaction %0 is committed.").arg(outcome.transaction);
    else
        text = tr("Done.");
    if (m_run.resultsLeftOut() > 0)
        text += '\n' + tr("The first %0 results are shown, %1 are left out.")
                           .arg(PluginRun::mostResults)
                           .arg(m_run.resultsLeftOut());
    return text;
}

void DialogPlugin::showFailure() {
    if (m_run.failure())
        reportError(this, m_run.failure());
    else
        showError(this, translatedMessage(m_run.outcome().text),
                  translatedMessage(m_run.outcome().details).trimmed());
}

void DialogPlugin::on_buttonCancel_clicked() {
    m_cancelled = true;
    m_run.cancel();
    m_ui->labelState->setText(tr("Cancelling ..."));
}

void DialogPlugin::on_buttonClose_clicked() {
    close();
}

void DialogPlugin::reject() {
    if (!isRunning()) {
        QDialog::reject();
        return;
    }
    if (m_closing ||
        !lossConfirmed(this, tr("The plugin still runs.\nCancel it and close the window?")))
        return;
    // It may have ended meanwhile.
    if (!isRunning()) {
        QDialog::reject();
        return;
    }
    m_closing = true;
    on_buttonCancel_clicked();
}

void DialogPlugin::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && isRunning())
        m_ui->buttonCancel->click();
    else
        QDialog::keyPressEvent(event);
}

void DialogPlugin::on_buttonCopyOutput_clicked() {
    copyToClipboard(m_ui->editOutput->toPlainText());
}

void DialogPlugin::on_buttonSaveOutput_clicked() {
    const QString fileName = QFileDialog::getSaveFileName(
        this, tr("Save Output"),
        QDir(QFileInfo(m_host.fileName()).absolutePath()).filePath("output.txt"),
        tr("Texts (*.txt)") + ";;" + tr("All files (*)"));
    if (!fileName.isEmpty())
        guarded(this, [&] { writeFile(fileName, m_ui->editOutput->toPlainText().toStdString()); });
}

}  // namespace tarvo::window
