// MainWindow: the view of the points, and what it and the tabs tell each other.
#include "drawing/geometry.h"
#include "ui_mainwindow.h"
#include "window/common/guard.h"
#include "window/frame/mainwindow.h"
#include "window/panels/pointdatapanel.h"
#include "window/panels/pointindexpanel.h"
#include "window/view/cloudview.h"

#include <QMenu>
#include <QStatusBar>

namespace tarvo::window {

namespace {

constexpr int toldAreaFor = 8000;  // milliseconds

drawing::Vector vectorOf(const PointDataPanel::Place& place) {
    return {place[0], place[1], place[2]};
}

}  // namespace

void MainWindow::createView() {
    m_view = new CloudView(
        {[this] { return isAsOpened(); }, [this] { return m_pointData->filterText(); },
         [this] {
             drawing::Box extent;
             for (const PointDataPanel::Place& place : m_pointData->selectedPlaces())
                 extent.add(vectorOf(place));
             return extent;
         }},
        this);
    addDockWidget(Qt::RightDockWidgetArea, m_view);
    m_view->hide();

    auto* menu = findChild<QMenu*>("menuView");
    QAction* first = menu->actions().value(0);
    menu->insertAction(first, m_view->toggleViewAction());
    auto* actions = new QMenu(tr("Point cloud"), menu);
    actions->setObjectName("menuPointCloud");
    actions->setToolTipsVisible(true);
    m_view->addActionsTo(actions);
    menu->insertMenu(first, actions);
    menu->insertSeparator(first);

    connect(m_view, &CloudView::pointPicked, m_pointData, &PointDataPanel::showPointOf);
    connect(m_view, &CloudView::filterChosen, this,
            [this](const QString& filter, const QString& told) {
                m_pointData->takeFilter(filter);
                m_ui->statusBar->showMessage(told, toldAreaFor);
            });
    connect(m_pointData, &PointDataPanel::filterRun, m_view, &CloudView::filterRun);
    connect(m_pointData, &PointDataPanel::currentPointChanged, m_view, [this] {
        guarded(this, [this] {
            const auto place = m_pointData->currentPlace();
            m_view->markPoint(place ? std::optional(vectorOf(*place)) : std::nullopt);
        });
    });
    connect(m_pointIndex, &PointIndexPanel::nodeSelected, m_view, &CloudView::markNode);
}

void MainWindow::refreshView() {
    m_view->refresh(m_session.database, m_session.fileName, isPending());
}

}  // namespace tarvo::window
