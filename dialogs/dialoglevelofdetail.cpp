#include "dialogs/dialoglevelofdetail.h"

#include "common/guard.h"
#include "common/messageboxes.h"
#include "common/textformat.h"
#include "ui_dialoglevelofdetail.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLocale>
#include <QThread>
#include <QtConcurrentRun>
#include <cmath>
#include <exception>
#include <stdexcept>

namespace common = tarvo::common;

namespace {

constexpr int largestCombineLevel = 16;
constexpr int defaultCombineLevel = 8;

}  // namespace

// The dialog's state while the library works.
class DialogLevelOfDetail::Busy {
public:
    explicit Busy(DialogLevelOfDetail& dialog) : m_dialog(dialog) {
        m_dialog.m_cancel = false;
        m_dialog.m_busy = true;
        m_dialog.m_ui->progressBar->setValue(0);
        m_dialog.m_ui->progressBar->show();
        m_dialog.setEnabled(false);
    }
    ~Busy() {
        m_dialog.m_busy = false;
        m_dialog.m_cancel = false;
        m_dialog.m_ui->progressBar->hide();
        m_dialog.setEnabled(true);
    }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

private:
    DialogLevelOfDetail& m_dialog;
    const common::WaitCursor m_waiting;
};

void DialogLevelOfDetail::edit(const tarvo::qrb::Pointcloud& database, QWidget* parent) {
    DialogLevelOfDetail dialog(database, parent);
    common::guarded(&dialog, [&] {
        dialog.fillSizes();
        dialog.showSettings();
    });
    dialog.exec();
    dialog.m_settings.saveGeometryOf(&dialog);
}

DialogLevelOfDetail::DialogLevelOfDetail(const tarvo::qrb::Pointcloud& database, QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::DialogLevelOfDetail>()),
      m_database(database),
      m_settings("DialogLevelOfDetail") {
    m_ui->setupUi(this);
    m_ui->progressBar->hide();
    connect(this, &DialogLevelOfDetail::update_progress, m_ui->progressBar, &QProgressBar::setValue,
            Qt::QueuedConnection);
    m_settings.restoreGeometryOf(this);
    on_editLodMode_currentIndexChanged(m_ui->editLodMode->currentIndex());
}

DialogLevelOfDetail::~DialogLevelOfDetail() = default;

void DialogLevelOfDetail::fillSizes() {
    const auto& attributes = m_database.pointAttributes();
    const int length = static_cast<int>(attributes.get(attributes.primaryAttributeName()).length);
    const int before = m_ui->editLodSizeCombine->currentIndex();
    m_ui->editLodSizeCombine->clear();
    m_ui->editLodSizeCombine->addItem("0 (off)");
    for (int level = 1; level <= largestCombineLevel; ++level)
        m_ui->editLodSizeCombine->addItem(
            QString("%0 (up to %1 points per node)")
                .arg(level)
                .arg(QLocale().toString(std::pow(2.0, length * level), 'f', 0)));
    m_ui->editLodSizeCombine->setCurrentIndex(before >= 0 ? before : defaultCombineLevel);
}

void DialogLevelOfDetail::showSettings() {
    const std::uint32_t mode = m_database.management().getLodMode();
    const std::uint32_t size = m_database.management().getChunkSizeLOD();
    if (mode == 1) {
        m_ui->editLodMode->setCurrentIndex(0);
        m_ui->editLodSizeThinout->setValue(static_cast<int>(size));
    } else if (mode == 2) {
        m_ui->editLodMode->setCurrentIndex(1);
        m_ui->editLodSizeCombine->setCurrentIndex(static_cast<int>(size));
    } else {
        common::showError(this, QString("Invalid LOD mode: %0").arg(mode));
    }
}

void DialogLevelOfDetail::on_editLodMode_currentIndexChanged(int index) {
    m_ui->editLodSizeThinout->setEnabled(index == 0);
    m_ui->editLodSizeCombine->setEnabled(index == 1);
}

void DialogLevelOfDetail::on_pushButtonApply_clicked() {
    double milliseconds = 0;
    const bool finished = common::guarded(this, [&] {
        const Busy busy(*this);
        milliseconds = update();
    });
    if (finished)
        common::showInformation(this, QString("Successfully finished!\n\nDuration: %0 ms")
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
    tarvo::qrb::pointcloud::TransactionGuard transaction(
        m_database.transactions(), "Update LOD", common::transactionAgentText().toStdString(),
        QString("LOD mode: %0\nLOD size: %1").arg(mode).arg(size).toStdString(),
        QString("{\"lodMode\":%0,\"chunkSizeLOD\":%1}").arg(mode).arg(size).toStdString());
    QElapsedTimer timer;
    timer.start();
    std::exception_ptr failure;
    const auto work = QtConcurrent::run([&] {
        try {
            management.setLodMode(mode);
            management.setChunkSizeLOD(size);
            transaction.commit({}, [this](int percent) {
                if (m_cancel)
                    throw std::runtime_error("Update cancelled.");
                emit update_progress(percent);
            });
        } catch (...) {
            failure = std::current_exception();
        }
    });
    while (!work.isFinished()) {
        QApplication::processEvents();
        QThread::msleep(50);
    }
    if (m_cancel)
        throw std::runtime_error("Update cancelled.");
    if (failure)
        std::rethrow_exception(failure);
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void DialogLevelOfDetail::on_pushButtonClose_clicked() {
    close();
}

void DialogLevelOfDetail::done(int result) {
    if (m_busy) {
        m_cancel = true;
        return;
    }
    QDialog::done(result);
}
