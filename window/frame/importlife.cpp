// MainWindow: points that come in, of other programs and simulated ones.
#include "core/pointpages.h"
#include "ui_mainwindow.h"
#include "window/common/filefilter.h"
#include "window/common/guard.h"
#include "window/frame/givenfiles.h"
#include "window/frame/mainwindow.h"
#include "window/frame/pointimport.h"
#include "window/frame/samplecreation.h"

#include <QFileDialog>
#include <QFileInfo>

namespace tarvo::window {

namespace {

// With the elements of those that have several.
QStringList attributesOf(const qrb::Pointcloud& cloud) {
    QStringList names;
    for (const std::string& name : cloud.pointAttributes().list())
        for (const core::PointColumn& column : core::columnsOf(cloud.pointAttributes().get(name)))
            names += QString::fromStdString(column.name);
    return names;
}

}  // namespace

void MainWindow::on_actionImportPoints_triggered() {
    const QStringList names = QFileDialog::getOpenFileNames(this, tr("Import Points"),
                                                            QFileInfo(m_session.fileName).path(),
                                                            withAllFiles(pointFileTypeFilter()));
    if (!names.isEmpty())
        importPoints(names, false);
}

void MainWindow::on_actionSample_triggered() {
    guarded(this, [this] {
        const QString name = createSample(m_session, this);
        if (!name.isEmpty())
            openDatabase(name, true);
    });
}

void MainWindow::importPoints(const QStringList& fileNames, bool intoOpen) {
    guarded(this, [&] {
        ImportTarget target{m_session.fileName, {}, {}, intoOpen};
        if (m_session.database)
            target.attributes = attributesOf(*m_session.database);
        if (isPending())
            target.refusal = tr("a transaction is pending in it");
        else if (m_session.database && !isAsOpened())
            target.refusal = tr("its file was replaced or deleted since it was opened");
        const ImportOutcome outcome = window::importPoints(fileNames, m_session, target, this);
        if (outcome.changed)
            refreshPanels();
        if (!outcome.opened.isEmpty())
            openDatabase(outcome.opened, true);
    });
}

bool MainWindow::isImportable(const QString& fileName) const {
    return !isDatabaseFile(fileName) && isPointFile(fileName);
}

}  // namespace tarvo::window
