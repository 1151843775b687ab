// What the view says of itself.
#include "window/common/messages.h"
#include "window/common/textformat.h"
#include "window/view/cloudview.h"

namespace tarvo::window {

QStringList CloudView::stateLines(const view::StreamPicture& picture) const {
    QStringList lines;
    if (!picture.error.empty()) {
        lines += oneLine(translatedMessage(picture.error));
        if (!picture.details.empty())
            lines += oneLine(translatedMessage(picture.details));
        return lines;
    }
    if (m_database.expired()) {
        lines += tr("No database is open.");
    } else if (!m_stream) {
        lines += tr("The file is not the one any more that was opened. Open it again.");
    } else if (!m_scene) {
        lines += tr("Reading the point index...");
    } else if (m_scene->points == 0) {
        lines += tr("The database has no points.");
    } else {
        const QString shown = grouped(picture.points);
        const QString all = grouped(m_scene->points);
        lines += picture.isComplete ? tr("%1 of %2 points").arg(shown, all)
                                    : tr("%1 of %2 points, reading...").arg(shown, all);
        if (m_scene->isSample)
            lines += tr("An even part, because there is no level of detail.");
    }
    if (m_isPending)
        lines += tr("The committed state, without the pending transaction.");
    if (!m_plainReason.isEmpty())
        lines += tr("Drawn without OpenGL: %1.").arg(m_plainReason);
    return lines;
}

void CloudView::showState() {
    m_canvas->setState(stateLines(m_stream ? m_stream->picture() : view::StreamPicture()));
}

}  // namespace tarvo::window
