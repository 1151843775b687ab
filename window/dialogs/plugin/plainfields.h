// Fields of parameters that need nothing of the database.
#pragma once

#include "window/dialogs/plugin/parameterfield.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace tarvo::window {

// A line of text: texts, numbers with their unit, nodes.
class LineField : public ParameterField {
public:
    LineField(const plugin::Parameter& parameter, QWidget* parent);
    QString text() const override;
    void setText(const QString& text) override;

private:
    QLineEdit* m_edit;
};

class CheckField : public ParameterField {
public:
    CheckField(const plugin::Parameter& parameter, QWidget* parent);
    QString text() const override;
    void setText(const QString& text) override;
    bool hasTitle() const override { return true; }

private:
    QCheckBox* m_box;
};

class ChoiceField : public ParameterField {
public:
    ChoiceField(const plugin::Parameter& parameter, QWidget* parent);
    QString text() const override;
    void setText(const QString& text) override;

private:
    QComboBox* m_box;
};

}  // namespace tarvo::window
