#include "window/dialogs/plugin/pictureview.h"

#include <QLabel>
#include <QPixmap>

namespace tarvo::window {

PictureView::PictureView(const QImage& picture, QWidget* parent)
    : QScrollArea(parent), m_label(new QLabel), m_size(picture.size()) {
    m_label->setPixmap(QPixmap::fromImage(picture));
    m_label->setScaledContents(true);
    setAlignment(Qt::AlignCenter);
    setWidget(m_label);
    showPicture();
}

void PictureView::setFitted(bool fitted) {
    m_fitted = fitted;
    showPicture();
}

void PictureView::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    showPicture();
}

void PictureView::showPicture() {
    // Without the scroll bars that the picture will no longer need.
    const QSize room = maximumViewportSize();
    const bool larger = m_size.width() > room.width() || m_size.height() > room.height();
    m_label->resize(m_fitted && larger ? m_size.scaled(room, Qt::KeepAspectRatio).expandedTo({1, 1})
                                       : m_size);
}

}  // namespace tarvo::window
