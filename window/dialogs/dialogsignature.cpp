#include "window/dialogs/dialogsignature.h"

#include "core/error.h"
#include "core/key.h"
#include "ui_dialogsignature.h"
#include "window/common/appearance.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/outputdialog.h"
#include "window/common/textfiles.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QStyle>
#include <QUuid>

namespace tarvo::window {

namespace {

constexpr qint64 largestKeyFile = 1 << 16;  // bytes; what is larger was chosen by mistake

// Only judges the text; typing is free.
QValidator::State judge(QString text) {
    static const QRegularExpressionValidator validator(
        QRegularExpression(R"(^([a-fA-F0-9]{2}[-,\s]+)*$)"));
    int position = 0;
    return validator.validate(text, position);
}

}  // namespace

DialogSignature::DialogSignature(const QString& settingsGroup, const QString& nameLabel,
                                 const QString& name, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::DialogSignature>()), m_settings(settingsGroup) {
    m_ui->setupUi(this);
    m_ui->labelKeySize->setForegroundRole(QPalette::PlaceholderText);
    m_ui->labelState->hide();
    useTextPaneFont(m_ui->editKey);
    if (nameLabel.isEmpty()) {
        m_ui->labelName->hide();
        m_ui->editName->hide();
    } else {
        m_ui->labelName->setText(nameLabel);
        m_ui->editName->setText(name);
        m_ui->editName->setCursorPosition(0);
    }
    m_ui->editMethod->setFocus();
}

DialogSignature::~DialogSignature() {
    m_settings.saveGeometryOf(this);
    m_settings.setValue("SignatureMethod", m_ui->editMethod->currentIndex());
    m_settings.setValue("SignatureKey", m_ui->editKey->toPlainText().toUtf8());
}

void DialogSignature::addMethod(const QString& text, std::uint32_t method) {
    m_ui->editMethod->addItem(text, method);
}

void DialogSignature::restore() {
    m_settings.restoreGeometryOf(this);
    if (m_settings.contains("SignatureMethod"))
        m_ui->editMethod->setCurrentIndex(m_settings.value("SignatureMethod").toInt());
    if (m_settings.contains("SignatureKey"))
        m_ui->editKey->setPlainText(
            QString::fromUtf8(m_settings.value("SignatureKey").toByteArray()));
    // A method that is not offered any more.
    if (m_ui->editMethod->currentIndex() < 0)
        m_ui->editMethod->setCurrentIndex(0);
}

QPushButton* DialogSignature::addButton(const QString& name, const QString& text) {
    auto* button = m_ui->buttonBox->addButton(text, QDialogButtonBox::ActionRole);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

void DialogSignature::addCloseButton() {
    m_ui->buttonBox->addButton(QDialogButtonBox::Close);
    connect(m_ui->buttonBox, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

void DialogSignature::setKeyEnabled(bool enabled) {
    for (QWidget* widget :
         {static_cast<QWidget*>(m_ui->labelKey), static_cast<QWidget*>(m_ui->editKey),
          static_cast<QWidget*>(m_ui->labelKeySize), static_cast<QWidget*>(m_ui->buttonRandomKey),
          static_cast<QWidget*>(m_ui->buttonLoadKey), static_cast<QWidget*>(m_ui->buttonSaveKey),
          static_cast<QWidget*>(m_ui->buttonForgetKey)})
        widget->setEnabled(enabled);
    if (enabled)
        on_editKey_textChanged();
}

std::uint32_t DialogSignature::method() const {
    return m_ui->editMethod->currentData().toUInt();
}

QByteArray DialogSignature::keyBytes() const {
    return QByteArray::fromHex(m_ui->editKey->toPlainText().toUtf8());
}

std::vector<std::uint8_t> DialogSignature::key() const {
    const QByteArray bytes = keyBytes();
    return {bytes.begin(), bytes.end()};
}

void DialogSignature::on_editKey_textChanged() {
    m_ui->labelKeySize->setText(tr("(%0 bytes)").arg(keyBytes().size()));
    for (QWidget* button : {m_ui->buttonSaveKey, m_ui->buttonForgetKey})
        button->setEnabled(!m_ui->editKey->toPlainText().isEmpty());
    const bool invalid = judge(m_ui->editKey->toPlainText()) == QValidator::Invalid;
    if (m_ui->editKey->property("invalid").toBool() == invalid)
        return;
    m_ui->editKey->setProperty("invalid", invalid);
    m_ui->editKey->setToolTip(
        invalid ? tr("A key is pairs of hexadecimal digits, with a blank, a line end, a comma or a "
                     "hyphen behind each, and nothing in front.")
                : QString());
    // Rules of the style sheet on properties apply only when the widget is polished again.
    m_ui->editKey->style()->unpolish(m_ui->editKey);
    m_ui->editKey->style()->polish(m_ui->editKey);
}

void DialogSignature::on_buttonRandomKey_clicked() {
    showKey(QUuid::createUuid().toRfc4122() + QUuid::createUuid().toRfc4122());
}

void DialogSignature::showKey(const QByteArray& bytes) {
    QString key;
    for (qsizetype i = 0; i < bytes.size(); ++i)
        key += (i == 0 ? "" : i % 8 == 0 ? "\n" : " ") + bytes.mid(i, 1).toHex();
    m_ui->editKey->setPlainText(key);
}

void DialogSignature::on_buttonLoadKey_clicked() {
    const QString name = QFileDialog::getOpenFileName(this, tr("Load Signature Key"), QString(),
                                                      tr("Text files (*.txt);;All files (*)"));
    if (name.isEmpty())
        return;
    guarded(this, [&] {
        if (QFileInfo(name).size() > largestKeyFile)
            throw core::Failure(
                tr("The file is too large for a key.").toStdString(),
                tr("A key has some dozens of bytes. Choose its file.").toStdString());
        const auto key = core::keyOfFile(readFile(name, tr("Failed to open file.")));
        showKey({reinterpret_cast<const char*>(key.data()), static_cast<qsizetype>(key.size())});
    });
}

void DialogSignature::on_buttonSaveKey_clicked() {
    const QString name = chooseOutput(this, tr("Save Signature Key"), "signature-key.txt",
                                      tr("Text files (*.txt)"), "txt");
    if (name.isEmpty())
        return;
    guarded(this, [&] {
        const QString text = m_ui->editKey->toPlainText().trimmed() + '\n';
        const auto file = openOutput(name, tr("Failed to open output file!"));
        file->makePrivate();
        file->write(text.toStdString());
        file->publish();
    });
}

void DialogSignature::on_buttonForgetKey_clicked() {
    m_ui->editKey->clear();
    m_settings.remove("SignatureKey");
    m_ui->editKey->setFocus();
}

void DialogSignature::tellVerified() {
    showInformation(this, tr("Signature successfully verified."));
    accept();
}

void DialogSignature::tellNotVerified() {
    showWarning(this, tr("No valid signature found or wrong key given."));
}

}  // namespace tarvo::window
