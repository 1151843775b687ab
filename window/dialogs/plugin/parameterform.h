// The form of a plugin: a field for each of its parameters.
#pragma once

#include "plugin/parameters.h"
#include "qrb/pointattribute.h"

#include <QString>
#include <QStringList>
#include <QWidget>
#include <vector>

namespace tarvo::window {

class ParameterField;

class ParameterForm : public QWidget {
    Q_OBJECT

public:
    // What fields of filters and nodes begin with that have no default of their own.
    struct Selection {
        QString filter;
        QString nodes;
    };

    // With the values of the last run, where they are taken, else the defaults. folder: where
    // choosers of files begin.
    ParameterForm(const plugin::Manifest& manifest, const Selection& selection,
                  const QString& folder, QWidget* parent = nullptr);

    // What the open database has.
    void setAttributes(const std::vector<qrb::pointcloud::PointAttribute>& attributes);

    // Throws core::Failure where a value is missing or wrong.
    plugin::Values values() const;
    // The first of the values that are missing or wrong; empty: there is none.
    QString problem() const;
    // Names of files of a type that are given.
    QStringList files(plugin::ParameterType type) const;
    // Keeps the values for the next time.
    void remember() const;

signals:
    void changed();

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void addField(ParameterField* field);
    void fill(const Selection& selection);

    const QString m_settingsGroup;
    std::vector<ParameterField*> m_fields;
};

}  // namespace tarvo::window
