// MainWindow: points of other programs that come in.
#include "ui_mainwindow.h"
#include "window/common/filefilter.h"
#include "window/common/guard.h"
#include "window/frame/mainwindow.h"
#include "window/frame/pointimport.h"

#include <QFileDialog>
#include <QFileInfo>

namespace tarvo::window {

void MainWindow::on_actionImportPoints_triggered() {
    const QStringList names =
        QFileDialog::getOpenFileNames(this, "Import Points", QFileInfo(m_session.fileName).path(),
                                      pointFileTypeFilter() + ";;All files (*.*)");
    if (!names.isEmpty())
        importPoints(names);
}

void MainWindow::importPoints(const QStringList& fileNames) {
    guarded(this, [&] {
        ImportTarget target{m_session.fileName, {}};
        if (isPending())
            target.refusal = "a transaction is pending in it";
        else if (m_session.database && !isAsOpened())
            target.refusal = "its file was replaced or deleted since it was opened";
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
