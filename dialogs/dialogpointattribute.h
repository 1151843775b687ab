// Edits the definition of a point attribute: every field of the record, checked while one types,
// and the default catalogue to take definitions from.
#pragma once

#include "common/programsettings.h"
#include "qrb/pointattribute.h"

#include <QDialog>
#include <QStringList>
#include <memory>

namespace Ui {
class DialogPointAttribute;
}

class DialogPointAttribute : public QDialog {
    Q_OBJECT

public:
    enum class Purpose {
        ADD,
        EDIT,      // the name is fixed
        PRIMARY,   // of a database to be created
        EDIT_KEY,  // as EDIT, of the primary attribute or the point id: points are found by its
                   // values, so that those can't change
    };

    // Runs the dialog on the record, which is changed only when it is accepted; that is what the
    // result tells. takenNames: names that a new attribute can't have. stored: of an attribute to
    // be edited the definition in the database where that is not the record that the dialog begins
    // with.
    static bool edit(tarvo::qrb::pointcloud::PointAttribute& attribute, Purpose purpose,
                     const QStringList& takenNames, QWidget* parent,
                     const tarvo::qrb::pointcloud::PointAttribute* stored = nullptr);

    ~DialogPointAttribute() override;

private:
    explicit DialogPointAttribute(QWidget* parent);

    std::unique_ptr<Ui::DialogPointAttribute> m_ui;
    tarvo::common::DialogSettings m_settings;
};
