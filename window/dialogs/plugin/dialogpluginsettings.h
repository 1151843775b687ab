// Asks for the Python that runs plugins and for the folder that they are in.
#pragma once

#include "window/common/programsettings.h"

#include <QDialog>
#include <memory>

namespace tarvo::window {

namespace Ui {
class DialogPluginSettings;
}

class DialogPluginSettings : public QDialog {
    Q_OBJECT

public:
    explicit DialogPluginSettings(QWidget* parent);
    ~DialogPluginSettings() override;

    // Where plugins are looked for, as it is set: see plugin::pluginFolder().
    static QString pluginPath();
    static QString pythonPath();

public slots:
    void accept() override;

private slots:
    void on_editPython_editingFinished();
    void on_editFolder_editingFinished();
    void on_buttonPython_clicked();
    void on_buttonFolder_clicked();

private:
    // Asks the program on another thread; what it said is shown when it comes.
    void askPython();
    void countPlugins();

    std::unique_ptr<Ui::DialogPluginSettings> m_ui;
    DialogSettings m_settings;
    QString m_asked;  // the Python asked last
};

}  // namespace tarvo::window
