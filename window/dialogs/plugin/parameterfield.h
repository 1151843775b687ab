// A field of a plugin's form: asks for the value of one parameter.
#pragma once

#include "plugin/manifest.h"
#include "qrb/pointattribute.h"

#include <QString>
#include <QWidget>
#include <vector>

class QHBoxLayout;

namespace tarvo::window {

class ParameterField : public QWidget {
    Q_OBJECT

public:
    // The field that fits the parameter's type. folder: where choosers of files begin.
    static ParameterField* create(const plugin::Parameter& parameter, const QString& folder,
                                  QWidget* parent);

    const plugin::Parameter& parameter() const { return m_parameter; }
    QString title() const { return QString::fromStdString(m_parameter.title); }

    // As plugin::valueFromText() takes it.
    virtual QString text() const = 0;
    virtual void setText(const QString& text) = 0;
    // What the open database has, to be completed or chosen from.
    virtual void setAttributes(const std::vector<qrb::pointcloud::PointAttribute>&) {}
    // Whether the field shows the title itself.
    virtual bool hasTitle() const { return false; }

    // The value as JSON. Throws core::Failure where there is none.
    std::string value() const;
    // Why there is no value; empty: there is one.
    QString problem() const;
    // Marks the field where there is none.
    void mark();

signals:
    void changed();

protected:
    ParameterField(const plugin::Parameter& parameter, QWidget* parent);
    // Takes the widget in that is named after the parameter, described and marked.
    void setInput(QWidget* input);
    QHBoxLayout* row() const { return m_row; }
    // What the plugin gets of the text. Throws core::Failure.
    virtual std::string given() const;
    // What is wrong with a value that is one of the type.
    virtual QString objection(const QString&) const { return {}; }

private:
    QString hint() const;

    const plugin::Parameter m_parameter;
    QHBoxLayout* m_row;
    QWidget* m_input = nullptr;
};

}  // namespace tarvo::window
