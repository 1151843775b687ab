// Asks what a new database file needs: its location, the creation settings and, where wanted, the
// file schema whose attributes and metadata items it begins with. Creates nothing itself.
#pragma once

#include "qrb/settings.h"
#include "window/common/programsettings.h"

#include <QDialog>
#include <QMap>
#include <memory>
#include <string>

namespace tarvo::window {

namespace Ui {
class DialogCreateSettings;
}

class DialogCreateSettings : public QDialog {
    Q_OBJECT

public:
    using Settings = qrb::pointcloud::CreateSettings;

    // Runs the dialog. The arguments, which the widgets begin with, change only when it is
    // accepted; that is what the result tells. schema: JSON text, empty for none; optionals: with
    // what the schema marks as optional.
    static bool edit(const qrb::Context& context, QString& location, Settings& settings,
                     std::string& schema, bool& optionals, QWidget* parent);
    // The same without schema.
    static bool edit(const qrb::Context& context, QString& location, Settings& settings,
                     QWidget* parent);

    ~DialogCreateSettings() override;

public slots:
    void accept() override;

private slots:
    void on_buttonLocation_clicked();
    void on_buttonPrimaryAttribute_clicked();
    void on_editCompressionLevel_valueChanged(int value);
    void on_editSchemaList_currentIndexChanged(int index);
    void on_editLocation_textChanged(const QString& location);
    void on_editChunkMode_currentIndexChanged(int index);
    void on_editLodMode_currentIndexChanged(int index);
    void on_actionLoad_triggered();
    void on_actionSave_triggered();
    void on_actionDefaults_triggered();
    void onCopyToClipboard();

private:
    DialogCreateSettings(const qrb::Context& context, const Settings& settings, QWidget* parent);
    void buildMenu();
    void hideSchema();

    void write(const QString& location, const Settings& settings, const std::string& schema,
               bool optionals);
    void writeChunks(const Settings& settings);
    bool writeLevelOfDetail(const Settings& settings);
    void refreshPrimaryAttribute();

    QString location() const;
    // Chunk and level of detail are left alone where their combos show no mode.
    void readInto(Settings& settings) const;
    std::string schema() const;

    std::unique_ptr<Ui::DialogCreateSettings> m_ui;
    qrb::Context m_context;
    Settings m_settings;  // only its primary attribute is up to date, the rest is in the widgets
    QMap<QString, QString> m_schemas;  // texts by label
    DialogSettings m_store;
    bool m_reduced = false;
};

}  // namespace tarvo::window
