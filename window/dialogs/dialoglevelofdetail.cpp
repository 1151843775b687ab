#include "window/dialogs/dialoglevelofdetail.h"

#include "ui_dialoglevelofdetail.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/textformat.h"
#include "window/dialogs/sizelists.h"

#include <QLocale>

namespace tarvo::window {

void DialogLevelOfDetail::edit(const qrb::Pointcloud& database, QWidget* parent) {
    DialogLevelOfDetail dialog(database, parent);
    guarded(&dialog, [&] {
        dialog.fillSizes();
        dialog.showSettings();
    });
    dialog.exec();
    dialog.m_settings.saveGeometryOf(&dialog);
}

DialogLevelOfDetail::DialogLevelOfDetail(const qrb::Pointcloud& database, QWidget* parent)
    : WorkingDialog(parent),
      m_ui(std::make_unique<Ui::DialogLevelOfDetail>()),
      m_database(database),
      m_settings("DialogLevelOfDetail") {
    m_ui->setupUi(this);
    useProgressBar(m_ui->progressBar);
    m_settings.restoreGeometryOf(this);
    on_editLodMode_currentIndexChanged(m_ui->editLodMode->currentIndex());
}

DialogLevelOfDetail::~DialogLevelOfDetail() = default;

void DialogLevelOfDetail::fillSizes() {
    const auto& attributes = m_database.pointAttributes();
    fillCombineLevels(m_ui->editLodSizeCombine,
                      attributes.get(attributes.primaryAttributeName()).length);
}

void DialogLevelOfDetail::showSettings() {
    const std::uint32_t mode = m_database.management().getLodMode();
    const std::uint32_t size = m_database.management().getChunkSizeLOD();
    bool isShown = false;
    if (mode == 1) {
        m_ui->editLodMode->setCurrentIndex(0);
        isShown = showSize(m_ui->editLodSizeThinout, size);
    } else if (mode == 2) {
        m_ui->editLodMode->setCurrentIndex(1);
        isShown = showSize(m_ui->editLodSizeCombine, size);
    } else {
        showError(this, tr("Invalid LOD mode: %0").arg(mode));
        return;
    }
    if (!isShown)
        showError(this, tr("Invalid LOD size: %0").arg(size));
}

void DialogLevelOfDetail::on_editLodMode_currentIndexChanged(int index) {
    m_ui->editLodSizeThinout->setEnabled(index == 0);
    m_ui->editLodSizeCombine->setEnabled(index == 1);
}

void DialogLevelOfDetail::on_pushButtonApply_clicked() {
    double milliseconds = 0;
    const bool finished = guarded(this, [&] { milliseconds = update(); });
    if (finished)
        showInformation(this, tr("Successfully finished!\n\nDuration: %0 ms")
                                  .arg(QLocale().toString(milliseconds, 'f', 1)));
}

double DialogLevelOfDetail::update() {
    auto& management = m_database.management();
    std::uint32_t mode = management.getLodMode();
    std::uint32_t size = management.getChunkSizeLOD();
    if (m_ui->editLodMode->currentIndex() == 0) {
        mode = 1;
        size = static_cast<std::uint32_t>(m_ui->editLodSizeThinout->value());
    } else if (m_ui->editLodMode->currentIndex() == 1) {
        mode = 2;
        size = static_cast<std::uint32_t>(m_ui->editLodSizeCombine->currentIndex());
    }
    qrb::pointcloud::TransactionGuard transaction(
        m_database.transactions(), "Update LOD", transactionAgentText().toStdString(),
        QString("LOD mode: %0\nLOD size: %1").arg(mode).arg(size).toStdString(),
        QString("{\"lodMode\":%0,\"chunkSizeLOD\":%1}").arg(mode).arg(size).toStdString());
    return work(tr("Update cancelled."), [&](const qrb::pointcloud::Progress& progress) {
        management.setLodMode(mode);
        management.setChunkSizeLOD(size);
        transaction.commit({}, progress);
    });
}

void DialogLevelOfDetail::on_pushButtonClose_clicked() {
    close();
}

}  // namespace tarvo::window
