// Asks for a text to append to the changelog entry of the pending transaction.
#pragma once

#include "window/common/programsettings.h"

#include <QDialog>
#include <QString>
#include <memory>

namespace tarvo::window {

namespace Ui {
class DialogChangelogMessage;
}

class DialogChangelogMessage : public QDialog {
    Q_OBJECT

public:
    // message: to begin with.
    DialogChangelogMessage(const QString& message, QWidget* parent);
    ~DialogChangelogMessage() override;

    QString message() const;

private:
    std::unique_ptr<Ui::DialogChangelogMessage> m_ui;
    DialogSettings m_settings;
};

}  // namespace tarvo::window
