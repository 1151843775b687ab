// The licences of the programs and of what they use.
#pragma once

#include "window/common/programsettings.h"

#include <QDialog>

namespace tarvo::window {

class DialogLicences : public QDialog {
    Q_OBJECT

public:
    explicit DialogLicences(QWidget* parent);
    ~DialogLicences() override;

private:
    DialogSettings m_settings;
};

}  // namespace tarvo::window
