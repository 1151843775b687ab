#include "window/dialogs/dialogtransaction.h"

#include "core/json.h"
#include "ui_dialogtransaction.h"
#include "window/common/appearance.h"
#include "window/common/guard.h"
#include "window/common/outputdialog.h"
#include "window/common/textfiles.h"

#include <QFileDialog>
#include <QMenu>
#include <QPushButton>

namespace tarvo::window {

bool DialogTransaction::edit(const qrb::Context&, qrb::pointcloud::Transaction& transaction,
                             QWidget* parent, bool readOnly, bool newTransaction) {
    DialogTransaction dialog(parent);
    dialog.fill(transaction);
    if (readOnly)
        dialog.setReadOnly();
    else if (newTransaction)
        dialog.setNewTransaction();
    dialog.m_ui->editTitle->selectAll();
    dialog.m_ui->editTitle->setFocus();
    if (dialog.exec() != QDialog::Accepted)
        return false;
    dialog.read(transaction);
    return true;
}

DialogTransaction::DialogTransaction(QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::DialogTransaction>()),
      m_settings("DialogTransaction") {
    m_ui->setupUi(this);
    for (QPlainTextEdit* edit :
         {m_ui->editComments, m_ui->editSettingsRaw, m_ui->editSettingsFormatted})
        useTextPaneFont(edit);
    buildMenu();
    m_settings.restoreGeometryOf(this);
    if (m_settings.contains("SettingsPage"))
        m_ui->tabWidgetSettings->setCurrentIndex(m_settings.value("SettingsPage").toInt());
}

DialogTransaction::~DialogTransaction() {
    m_settings.saveGeometryOf(this);
    m_settings.setValue("SettingsPage", m_ui->tabWidgetSettings->currentIndex());
}

void DialogTransaction::buildMenu() {
    auto* menu = new QMenu(this);
    menu->addActions(
        {m_ui->actionLoadComments, m_ui->actionSaveComments, m_ui->actionClearComments});
    menu->addSeparator();
    menu->addActions(
        {m_ui->actionLoadSettings, m_ui->actionSaveSettings, m_ui->actionClearSettings});
    m_ui->buttonMenu->setMenu(menu);
    // Shortcuts work only on actions of a visible widget.
    addActions({m_ui->actionLoadComments, m_ui->actionSaveComments});
}

void DialogTransaction::setReadOnly() {
    for (QLineEdit* edit : {m_ui->editID, m_ui->editTitle, m_ui->editAgent, m_ui->editQRB,
                            m_ui->editStart, m_ui->editStop})
        edit->setReadOnly(true);
    m_ui->editComments->setReadOnly(true);
    m_ui->editSettingsRaw->setReadOnly(true);
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setEnabled(false);
    for (QAction* action : {m_ui->actionLoadComments, m_ui->actionClearComments,
                            m_ui->actionLoadSettings, m_ui->actionClearSettings})
        action->setEnabled(false);
}

void DialogTransaction::setNewTransaction() {
    for (QWidget* widget :
         {static_cast<QWidget*>(m_ui->labelID), static_cast<QWidget*>(m_ui->editID),
          static_cast<QWidget*>(m_ui->labelQRB), static_cast<QWidget*>(m_ui->editQRB),
          static_cast<QWidget*>(m_ui->labelStart), static_cast<QWidget*>(m_ui->editStart),
          static_cast<QWidget*>(m_ui->labelStop), static_cast<QWidget*>(m_ui->editStop)})
        widget->setEnabled(false);
    m_ui->tabWidgetSettings->setCurrentWidget(m_ui->tabSettingsRaw);
}

void DialogTransaction::fill(const qrb::pointcloud::Transaction& transaction) {
    m_ui->editID->setText(QString::number(transaction.id));
    m_ui->editTitle->setText(QString::fromStdString(transaction.title));
    m_ui->editAgent->setText(QString::fromStdString(transaction.agent));
    m_ui->editQRB->setText(QString::fromStdString(transaction.qrb).replace('\n', ' '));
    m_ui->editStart->setText(QString::fromStdString(transaction.start));
    m_ui->editStop->setText(QString::fromStdString(transaction.stop));
    m_ui->editComments->setPlainText(QString::fromStdString(transaction.comments));
    m_ui->editSettingsRaw->setPlainText(QString::fromStdString(transaction.settings));
    for (QLineEdit* edit : {m_ui->editTitle, m_ui->editAgent, m_ui->editQRB})
        edit->setCursorPosition(0);
    formatSettings();
}

void DialogTransaction::read(qrb::pointcloud::Transaction& transaction) const {
    transaction.id = m_ui->editID->text().toUInt();
    transaction.title = m_ui->editTitle->text().toStdString();
    transaction.agent = m_ui->editAgent->text().toStdString();
    transaction.qrb = m_ui->editQRB->text().toStdString();
    transaction.start = m_ui->editStart->text().toStdString();
    transaction.stop = m_ui->editStop->text().toStdString();
    transaction.comments = m_ui->editComments->toPlainText().toStdString();
    transaction.settings = m_ui->editSettingsRaw->toPlainText().toStdString();
}

void DialogTransaction::formatSettings() {
    if (m_ui->tabWidgetSettings->currentWidget() == m_ui->tabSettingsFormatted)
        m_ui->editSettingsFormatted->setPlainText(QString::fromStdString(
            core::formattedJson(m_ui->editSettingsRaw->toPlainText().toStdString())));
}

void DialogTransaction::on_tabWidgetSettings_currentChanged(int) {
    formatSettings();
}

std::unique_ptr<QString> DialogTransaction::loadText(const QString& caption) {
    const QString name = QFileDialog::getOpenFileName(this, caption);
    std::unique_ptr<QString> text;
    if (!name.isEmpty())
        guarded(this,
                [&] { text = std::make_unique<QString>(QString::fromStdString(readFile(name))); });
    return text;
}

void DialogTransaction::saveText(const QString& caption, const QString& kind, const QString& text) {
    const QString name =
        chooseOutput(this, caption,
                     QString("transaction-#%0-%1.txt").arg(m_ui->editID->text(), kind), {}, "txt");
    if (!name.isEmpty())
        guarded(this, [&] { writeFile(name, text.toStdString()); });
}

void DialogTransaction::on_actionLoadComments_triggered() {
    if (const auto text = loadText(tr("Load Comments")))
        m_ui->editComments->setPlainText(*text);
}

void DialogTransaction::on_actionSaveComments_triggered() {
    saveText(tr("Save Comments"), "comments", m_ui->editComments->toPlainText());
}

void DialogTransaction::on_actionClearComments_triggered() {
    m_ui->editComments->clear();
}

void DialogTransaction::on_actionLoadSettings_triggered() {
    if (const auto text = loadText(tr("Load Settings"))) {
        m_ui->editSettingsRaw->setPlainText(*text);
        formatSettings();
    }
}

void DialogTransaction::on_actionSaveSettings_triggered() {
    saveText(tr("Save Settings"), "settings", m_ui->editSettingsRaw->toPlainText());
}

void DialogTransaction::on_actionClearSettings_triggered() {
    m_ui->editSettingsRaw->clear();
    formatSettings();
}

}  // namespace tarvo::window
