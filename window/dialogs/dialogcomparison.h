// What is different between two states of a database, as a text.
#pragma once

#include "window/common/programsettings.h"

#include <QDialog>

namespace tarvo::window {

class DialogComparison : public QDialog {
    Q_OBJECT

public:
    // states: which ones, shown above the report. Both texts are plain.
    DialogComparison(const QString& states, const QString& report, QWidget* parent);
    ~DialogComparison() override;

private:
    DialogSettings m_settings;
};

}  // namespace tarvo::window
