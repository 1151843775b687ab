#include "window/dialogs/plugin/filefield.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>

namespace tarvo::window {

using plugin::ParameterType;

FileField::FileField(const plugin::Parameter& parameter, const QString& folder, QWidget* parent)
    : ParameterField(parameter, parent), m_folder(folder), m_edit(new QLineEdit) {
    setInput(m_edit);
    auto* button = new QToolButton;
    button->setObjectName("button_" + QString::fromStdString(parameter.name));
    button->setText("...");
    button->setToolTip(QObject::tr("Choose the file"));
    button->setAccessibleName(QObject::tr("Choose the file"));
    row()->addWidget(button);
    connect(m_edit, &QLineEdit::textChanged, this, &ParameterField::changed);
    connect(button, &QToolButton::clicked, this, &FileField::choose);
}

QString FileField::text() const {
    return m_edit->text().trimmed();
}

void FileField::setText(const QString& text) {
    m_edit->setText(text);
}

QString FileField::objection(const QString& text) const {
    if (parameter().type == ParameterType::INPUT_FILE && !text.isEmpty() &&
        !QFileInfo(text).isFile())
        return QObject::tr("There is no file \"%0\".").arg(text);
    return {};
}

void FileField::choose() {
    const QString suffix = QString::fromStdString(parameter().suffix);
    const QString filters = (suffix.isEmpty() ? QString() : QString("*.%0 (*.%0);;").arg(suffix)) +
                            QObject::tr("All files (*)");
    const QString place = text().isEmpty() ? m_folder : text();
    QString name;
    if (parameter().type == ParameterType::INPUT_FILE) {
        name = QFileDialog::getOpenFileName(this, title(), place, filters);
    } else {
        // Whether it may be replaced is asked when it is.
        name = QFileDialog::getSaveFileName(this, title(), place, filters, nullptr,
                                            QFileDialog::DontConfirmOverwrite);
        if (!name.isEmpty() && !suffix.isEmpty() && QFileInfo(name).suffix().isEmpty())
            name += '.' + suffix;
    }
    if (!name.isEmpty())
        m_edit->setText(QDir::toNativeSeparators(name));
}

}  // namespace tarvo::window
