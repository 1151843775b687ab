#include "window/dialogs/plugin/dialogpluginsettings.h"

#include "plugin/interpreter.h"
#include "plugin/package.h"
#include "ui_dialogpluginsettings.h"
#include "window/common/guard.h"

#include <QDir>
#include <QFileDialog>
#include <QFutureWatcher>
#include <QStandardPaths>
#include <QtConcurrentRun>
#include <algorithm>
#include <exception>

namespace tarvo::window {

namespace {

constexpr const char* pythonKey = "python_path";
constexpr const char* folderKey = "plugin_path";
constexpr const char* defaultFolder = "plugins";

QString textOf(const std::exception_ptr& error) {
    const auto [text, details] = describe(error);
    return details.isEmpty() ? text : text + '\n' + details;
}

QString answerOf(const QString& pythonPath) {
    try {
        const plugin::Interpreter python = plugin::findInterpreter(pythonPath.toStdString());
        const QString program = QString::fromStdString(python.program);
        const QString place = QStandardPaths::findExecutable(program);
        return QObject::tr("Python %0 at %1")
            .arg(QString::fromStdString(python.version),
                 QDir::toNativeSeparators(place.isEmpty() ? program : place));
    } catch (...) {
        return textOf(std::current_exception());
    }
}

// An empty one stands for the default.
QString kept(const char* key, const char* standard) {
    const QString value = ProgramSettings().value(key).toString().trimmed();
    return value.isEmpty() ? QString(standard) : value;
}

}  // namespace

QString DialogPluginSettings::pythonPath() {
    return kept(pythonKey, plugin::defaultPythonPath);
}

QString DialogPluginSettings::pluginPath() {
    return kept(folderKey, defaultFolder);
}

DialogPluginSettings::DialogPluginSettings(QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::DialogPluginSettings>()),
      m_settings("DialogPluginSettings") {
    m_ui->setupUi(this);
    m_ui->editPython->setPlaceholderText(plugin::defaultPythonPath);
    m_ui->editFolder->setPlaceholderText(defaultFolder);
    m_ui->editPython->setText(pythonPath());
    m_ui->editFolder->setText(pluginPath());
    m_settings.restoreGeometryOf(this);
    askPython();
    countPlugins();
}

DialogPluginSettings::~DialogPluginSettings() {
    m_settings.saveGeometryOf(this);
}

void DialogPluginSettings::accept() {
    ProgramSettings settings;
    settings.setValue(pythonKey, m_ui->editPython->text().trimmed());
    settings.setValue(folderKey, m_ui->editFolder->text().trimmed());
    QDialog::accept();
}

// Not at every key: a name that is half typed may be that of another program.
void DialogPluginSettings::on_editPython_editingFinished() {
    if (m_ui->editPython->text().trimmed() != m_asked)
        askPython();
}

void DialogPluginSettings::on_editFolder_editingFinished() {
    countPlugins();
}

void DialogPluginSettings::on_buttonPython_clicked() {
    const QString name =
        QFileDialog::getOpenFileName(this, tr("Choose Python"), m_ui->editPython->text());
    if (name.isEmpty())
        return;
    m_ui->editPython->setText(QDir::toNativeSeparators(name));
    askPython();
}

void DialogPluginSettings::on_buttonFolder_clicked() {
    const QString name = QFileDialog::getExistingDirectory(
        this, tr("Choose the Folder of Plugins"),
        QString::fromStdString(plugin::pluginFolder(m_ui->editFolder->text().toStdString())));
    if (name.isEmpty())
        return;
    m_ui->editFolder->setText(QDir::toNativeSeparators(name));
    countPlugins();
}

void DialogPluginSettings::askPython() {
    m_asked = m_ui->editPython->text().trimmed();
    m_ui->labelPythonState->setText(tr("Asking ..."));
    auto* watcher = new QFutureWatcher<QString>(this);
    connect(watcher, &QFutureWatcher<QString>::finished, this, [this, watcher, asked = m_asked] {
        watcher->deleteLater();
        if (asked == m_asked)
            m_ui->labelPythonState->setText(watcher->result());
    });
    watcher->setFuture(QtConcurrent::run(answerOf, m_asked));
}

void DialogPluginSettings::countPlugins() {
    const QString path = m_ui->editFolder->text().trimmed();
    const std::string folder =
        plugin::pluginFolder((path.isEmpty() ? QString(defaultFolder) : path).toStdString());
    QString text;
    try {
        const std::vector<plugin::Found> found = plugin::findPlugins(folder);
        const auto good = std::count_if(found.begin(), found.end(),
                                        [](const plugin::Found& one) { return one.manifest; });
        const auto bad = static_cast<qsizetype>(found.size()) - good;
        const QString place = QDir::toNativeSeparators(QString::fromStdString(folder));
        if (bad > 0)
            text = (good == 1 ? tr("%0 plugin in %1, and %2 that can't be run")
                              : tr("%0 plugins in %1, and %2 that can't be run"))
                       .arg(QString::number(good), place, QString::number(bad));
        else
            text = (good == 1 ? tr("%0 plugin in %1") : tr("%0 plugins in %1"))
                       .arg(QString::number(good), place);
    } catch (...) {
        text = textOf(std::current_exception());
    }
    m_ui->labelFolderState->setText(text);
}

}  // namespace tarvo::window
