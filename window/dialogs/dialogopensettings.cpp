#include "window/dialogs/dialogopensettings.h"

#include "ui_dialogopensettings.h"
#include "window/common/filefilter.h"
#include "window/common/messageboxes.h"

#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <algorithm>

namespace tarvo::window {

bool DialogOpenSettings::edit(const qrb::Context&, QString& location, std::uint64_t& cacheSize,
                              const QStringList& locations, QWidget* parent, bool* readOnly) {
    DialogOpenSettings dialog(locations, parent);
    auto& ui = *dialog.m_ui;
    if (location.isEmpty() && !locations.isEmpty())
        ui.editLocation->setCurrentIndex(0);
    else
        ui.editLocation->setEditText(location);
    ui.editCacheSize->setValue(static_cast<int>(std::min<std::uint64_t>(
        cacheSize, static_cast<std::uint64_t>(ui.editCacheSize->maximum()))));
    ui.checkReadOnly->setVisible(readOnly != nullptr);
    ui.checkReadOnly->setChecked(readOnly && *readOnly);
    ui.editLocation->lineEdit()->selectAll();
    ui.editLocation->setFocus();
    if (dialog.exec() != QDialog::Accepted)
        return false;
    location = dialog.location();
    cacheSize = static_cast<std::uint64_t>(ui.editCacheSize->value());
    if (readOnly)
        *readOnly = ui.checkReadOnly->isChecked();
    return true;
}

DialogOpenSettings::DialogOpenSettings(const QStringList& locations, QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::DialogOpenSettings>()),
      m_settings("DialogOpenSettings") {
    m_ui->setupUi(this);
    // Completion would put a recent name in place of the one being typed.
    m_ui->editLocation->setCompleter(nullptr);
    m_ui->editLocation->addItems(locations);
    m_settings.restoreGeometryOf(this);
}

DialogOpenSettings::~DialogOpenSettings() {
    m_settings.saveGeometryOf(this);
}

void DialogOpenSettings::accept() {
    if (location().isEmpty()) {
        showError(this, tr("Location missing."));
        return;
    }
    QDialog::accept();
}

void DialogOpenSettings::on_buttonLocation_clicked() {
    const QString name =
        QFileDialog::getOpenFileName(this, tr("Open Database"), location(),
                                     databaseFileDialogFilter() + ";;" + pointFileTypeFilter());
    if (!name.isEmpty())
        m_ui->editLocation->setEditText(QDir::toNativeSeparators(name));
}

QString DialogOpenSettings::location() const {
    return m_ui->editLocation->currentText().trimmed();
}

}  // namespace tarvo::window
