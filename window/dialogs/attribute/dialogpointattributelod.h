// Chooses how a level of detail combines the values of a point attribute.
#pragma once

#include "window/common/programsettings.h"

#include <QDialog>
#include <memory>
#include <string>

namespace tarvo::window {

namespace Ui {
class DialogPointAttributeLod;
}

class DialogPointAttributeLod : public QDialog {
    Q_OBJECT

public:
    // Runs the dialog on the settings text of an attribute, which is changed only when the dialog
    // is accepted with other settings; the result is true when it is accepted.
    static bool edit(std::string& settings, QWidget* parent);

    ~DialogPointAttributeLod() override;

private slots:
    void on_editMethod_currentIndexChanged(int index);
    void on_editMembers_textChanged();

private:
    explicit DialogPointAttributeLod(QWidget* parent);
    void fill(const std::string& settings);
    void updateCheck();
    QString method() const;

    std::unique_ptr<Ui::DialogPointAttributeLod> m_ui;
    DialogSettings m_settings;
};

}  // namespace tarvo::window
