// What is marked, clicked and chosen in the view.
#include "window/common/guard.h"
#include "window/view/areafilter.h"
#include "window/view/cloudview.h"
#include "window/view/pointdetails.h"

namespace tarvo::window {

void CloudView::markPoint(const std::optional<drawing::Vector>& place) {
    m_isNodeChosenLast = false;
    m_canvas->setMarked(place);
}

void CloudView::markNode(std::uint32_t node) {
    m_node = node;
    m_isNodeChosenLast = node != 0;
    showNodeBox();
}

// The stream may have to ask the index first, and tells news then.
void CloudView::showNodeBox() {
    m_canvas->setNodeBox(m_stream && m_scene && m_node != 0 ? m_stream->boxOf(m_node)
                                                            : drawing::Box());
}

void CloudView::showChosen() {
    const bool isNode = m_isNodeChosenLast && m_stream && m_node != 0;
    guarded(this, [&] { m_canvas->show(isNode ? m_stream->boxOf(m_node) : m_sources.chosen()); });
}

void CloudView::pick(const std::optional<PickedPoint>& point) {
    const auto database = m_database.lock();
    if (!point || !database) {
        m_details->clear();
        m_canvas->setMarked(std::nullopt);
        return;
    }
    m_canvas->setMarked(point->place);
    if (guarded(this, [&] { m_details->show(*database, point->id); }))
        emit pointPicked(point->id);
}

void CloudView::chooseArea(CloudCanvas::Area area,
                           const std::vector<std::array<double, 2>>& corners) {
    const auto database = m_database.lock();
    if (!database || !m_scene)
        return;
    guarded(this, [&] {
        const auto attribute = database->pointAttributes().get(m_scene->space.attribute);
        if (area == CloudCanvas::Area::Rectangle)
            emit filterChosen(
                QString::fromStdString(rectangleFilter(attribute, corners[0], corners[1])),
                tr("The filter selects the points in the rectangle. Show them with F3."));
        else
            emit filterChosen(QString::fromStdString(polygonFilter(attribute, corners)),
                              tr("The filter selects the points in the polygon. Show them with "
                                 "F3."));
    });
}

}  // namespace tarvo::window
