// Fields of parameters that are made of what the open database has.
#pragma once

#include "window/dialogs/plugin/parameterfield.h"

class QComboBox;
class QLineEdit;
class QMenu;

namespace tarvo::window {

class FilterCompletion;
class FilterInsertMenu;

// One attribute; also one that the database does not have yet.
class AttributeField : public ParameterField {
public:
    AttributeField(const plugin::Parameter& parameter, QWidget* parent);
    QString text() const override;
    void setText(const QString& text) override;
    void setAttributes(const std::vector<qrb::pointcloud::PointAttribute>& attributes) override;

private:
    QComboBox* m_box;
};

// Names separated by commas, and a menu that adds one.
class AttributesField : public ParameterField {
public:
    AttributesField(const plugin::Parameter& parameter, QWidget* parent);
    QString text() const override;
    void setText(const QString& text) override;
    void setAttributes(const std::vector<qrb::pointcloud::PointAttribute>& attributes) override;

private:
    void add(const QString& name);

    QLineEdit* m_edit;
    QMenu* m_menu;
};

// A filter expression, with the recent ones and the menu of the points tab.
class FilterField : public ParameterField {
public:
    FilterField(const plugin::Parameter& parameter, QWidget* parent);
    QString text() const override;
    void setText(const QString& text) override;
    void setAttributes(const std::vector<qrb::pointcloud::PointAttribute>& attributes) override;

protected:
    // With numbers in place of named values.
    std::string given() const override;

private:
    std::vector<qrb::pointcloud::PointAttribute> m_attributes;
    QComboBox* m_box;
    FilterInsertMenu* m_menu;
    FilterCompletion* m_completion;
};

}  // namespace tarvo::window
