#include "window/dialogs/attribute/dialogpointattributelod.h"

#include "core/lodsettings.h"
#include "ui_dialogpointattributelod.h"
#include "window/common/appearance.h"
#include "window/common/messages.h"
#include "window/dialogs/checklabel.h"

#include <QPushButton>

namespace tarvo::window {

bool DialogPointAttributeLod::edit(std::string& settings, QWidget* parent) {
    DialogPointAttributeLod dialog(parent);
    dialog.fill(settings);
    const QString method = dialog.method();
    const QString members = dialog.m_ui->editMembers->toPlainText();
    if (dialog.exec() != QDialog::Accepted)
        return false;
    const bool changed = dialog.method() != method ||
                         dialog.m_ui->editMembers->toPlainText() != members ||
                         !dialog.m_ui->labelLost->text().isEmpty();
    if (changed)
        settings = core::writeLodSettings(dialog.method().toStdString(),
                                          dialog.m_ui->editMembers->toPlainText().toStdString());
    return true;
}

DialogPointAttributeLod::DialogPointAttributeLod(QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::DialogPointAttributeLod>()),
      m_settings("DialogPointAttributeLod") {
    m_ui->setupUi(this);
    useTextPaneFont(m_ui->editMembers);
    for (const core::LodMethodEntry& entry : core::lodMethods()) {
        m_ui->editMethod->addItem(entry.name);
        m_ui->editMethod->setItemData(m_ui->editMethod->count() - 1,
                                      translatedMessage(entry.meaning), Qt::ToolTipRole);
    }
    m_settings.restoreGeometryOf(this);
}

DialogPointAttributeLod::~DialogPointAttributeLod() {
    m_settings.saveGeometryOf(this);
}

void DialogPointAttributeLod::fill(const std::string& text) {
    core::LodSettings settings;
    QString lost;
    try {
        settings = core::readLodSettings(text);
        if (!settings.lost.empty())
            lost = tr("What stands behind the JSON value will be dropped: %0")
                       .arg(QString::fromStdString(settings.lost).left(200));
    } catch (const std::exception& problem) {
        lost = tr("The present settings can't be read and will be replaced: %0\n%1")
                   .arg(QString::fromStdString(text).left(200), translatedMessage(problem.what()));
    }
    const QString method = QString::fromStdString(settings.method);
    int index = m_ui->editMethod->findText(method, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index < 0) {
        index = m_ui->editMethod->count();
        m_ui->editMethod->addItem(method);
    }
    m_ui->editMethod->setCurrentIndex(index);
    m_ui->editMembers->setPlainText(QString::fromStdString(settings.members));
    showCheck(m_ui->labelLost, lost, CheckKind::NOTE);
    updateCheck();
}

QString DialogPointAttributeLod::method() const {
    return m_ui->editMethod->currentText();
}

void DialogPointAttributeLod::on_editMethod_currentIndexChanged(int) {
    updateCheck();
}

void DialogPointAttributeLod::on_editMembers_textChanged() {
    updateCheck();
}

void DialogPointAttributeLod::updateCheck() {
    m_ui->labelMeaning->setText(m_ui->editMethod->currentData(Qt::ToolTipRole).toString());
    QString problem;
    try {
        const std::string settings = core::writeLodSettings(
            method().toStdString(), m_ui->editMembers->toPlainText().toStdString());
        problem = translatedMessage(core::lodSettingsProblem(settings).text);
    } catch (const std::exception& unreadable) {
        problem = translatedMessage(unreadable.what());
    }
    showCheck(m_ui->labelCheck, problem, CheckKind::ERROR);
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setEnabled(problem.isEmpty());
}

}  // namespace tarvo::window
