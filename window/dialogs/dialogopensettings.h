// Asks for the database file to open and for its cache size. Opens nothing itself.
#pragma once

#include "qrb/context.h"
#include "window/common/programsettings.h"

#include <QDialog>
#include <QStringList>
#include <cstdint>
#include <memory>

namespace tarvo::window {

namespace Ui {
class DialogOpenSettings;
}

class DialogOpenSettings : public QDialog {
    Q_OBJECT

public:
    // Runs the dialog; location, cacheSize (bytes) and readOnly are changed only when it is
    // accepted, which is what the result tells. locations are offered in the list. readOnly: null
    // offers no choice.
    static bool edit(const qrb::Context& context, QString& location, std::uint64_t& cacheSize,
                     const QStringList& locations, QWidget* parent, bool* readOnly = nullptr);

    ~DialogOpenSettings() override;

public slots:
    void accept() override;

private slots:
    void on_buttonLocation_clicked();

private:
    DialogOpenSettings(const QStringList& locations, QWidget* parent);
    QString location() const;

    std::unique_ptr<Ui::DialogOpenSettings> m_ui;
    DialogSettings m_settings;
};

}  // namespace tarvo::window
