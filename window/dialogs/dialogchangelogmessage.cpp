#include "window/dialogs/dialogchangelogmessage.h"

#include "ui_dialogchangelogmessage.h"

namespace tarvo::window {

DialogChangelogMessage::DialogChangelogMessage(const QString& message, QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::DialogChangelogMessage>()),
      m_settings("DialogChangelogMessage") {
    m_ui->setupUi(this);
    m_ui->editMessage->setPlainText(message);
    m_ui->editMessage->moveCursor(QTextCursor::End);
    m_ui->editMessage->setFocus();
    m_settings.restoreGeometryOf(this);
}

DialogChangelogMessage::~DialogChangelogMessage() {
    m_settings.saveGeometryOf(this);
}

QString DialogChangelogMessage::message() const {
    return m_ui->editMessage->toPlainText();
}

}  // namespace tarvo::window
