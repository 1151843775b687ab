// The field of a parameter that names a file.
#pragma once

#include "window/dialogs/plugin/parameterfield.h"

class QLineEdit;

namespace tarvo::window {

class FileField : public ParameterField {
public:
    FileField(const plugin::Parameter& parameter, const QString& folder, QWidget* parent);
    QString text() const override;
    void setText(const QString& text) override;

protected:
    QString objection(const QString& text) const override;

private:
    void choose();

    const QString m_folder;
    QLineEdit* m_edit;
};

}  // namespace tarvo::window
