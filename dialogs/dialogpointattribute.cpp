#include "dialogs/dialogpointattribute.h"

#include "ui_dialogpointattribute.h"

using tarvo::qrb::pointcloud::PointAttribute;

bool DialogPointAttribute::edit(PointAttribute& attribute, Purpose purpose, const QStringList&,
                                QWidget* parent, const PointAttribute*) {
    DialogPointAttribute dialog(parent);
    auto& ui = *dialog.m_ui;
    ui.paneSuggestions->hide();
    ui.buttonSuggestions->hide();
    ui.editName->setText(QString::fromStdString(attribute.name));
    ui.editName->setReadOnly(purpose == Purpose::EDIT || purpose == Purpose::EDIT_KEY);
    ui.editTitle->setText(QString::fromStdString(attribute.title));
    ui.editDescription->setPlainText(QString::fromStdString(attribute.description));
    ui.editMinimumValue->setNumber(attribute.minimumValue);
    ui.editMaximumValue->setNumber(attribute.maximumValue);
    ui.editResolution->setNumber(attribute.resolution);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    attribute.name = ui.editName->text().toStdString();
    attribute.title = ui.editTitle->text().toStdString();
    attribute.description = ui.editDescription->toPlainText().toStdString();
    attribute.minimumValue = ui.editMinimumValue->number().value_or(attribute.minimumValue);
    attribute.maximumValue = ui.editMaximumValue->number().value_or(attribute.maximumValue);
    attribute.resolution = ui.editResolution->number().value_or(attribute.resolution);
    return true;
}

DialogPointAttribute::DialogPointAttribute(QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::DialogPointAttribute>()),
      m_settings("DialogPointAttribute") {
    m_ui->setupUi(this);
    m_settings.restoreGeometryOf(this);
}

DialogPointAttribute::~DialogPointAttribute() {
    m_settings.saveGeometryOf(this);
}
