// Asks for the parameters of a plugin, runs it on the open database, and shows what it tells.
#pragma once

#include "plugin/package.h"
#include "window/common/programsettings.h"
#include "window/dialogs/plugin/parameterform.h"
#include "window/dialogs/plugin/pluginrun.h"

#include <QDialog>
#include <memory>

namespace tarvo::window {

class PluginHost;

namespace Ui {
class DialogPlugin;
}

class DialogPlugin : public QDialog {
    Q_OBJECT

public:
    // host must outlive the dialog.
    DialogPlugin(plugin::Package package, PluginHost& host,
                 const ParameterForm::Selection& selection, QWidget* parent);
    // Cancels what still runs.
    ~DialogPlugin() override;

public slots:
    // While the plugin runs: cancels it, if the user wants that, and closes when it has ended.
    void reject() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private slots:
    void on_buttonRun_clicked();
    void on_buttonCancel_clicked();
    void on_buttonClose_clicked();
    void on_buttonCopyOutput_clicked();
    void on_buttonSaveOutput_clicked();

private:
    void describePlugin();
    void connectRun();
    bool isRunning() const;
    void updateActions();
    QString reasonNotToRun() const;
    // Whether all that has to be asked before a run is answered with yes.
    bool mayRun();
    void checkOutputFiles() const;
    bool mayReplaceFiles();
    void start(const std::string& arguments);
    void clearResults();
    void showProgress(double fraction, const QString& text);
    void addResult(const std::shared_ptr<const PluginResult>& result);
    void finish();
    QString outcomeText() const;
    void showFailure();

    const plugin::Package m_package;
    PluginHost& m_host;
    const std::unique_ptr<Ui::DialogPlugin> m_ui;
    ParameterForm* m_form;
    DialogSettings m_settings;
    PluginRun m_run;
    bool m_closing = false;  // as soon as the run has ended
    bool m_cancelled = false;
};

}  // namespace tarvo::window
