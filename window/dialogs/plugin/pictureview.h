// A picture, made small enough to be seen whole, or pixel by pixel.
#pragma once

#include <QImage>
#include <QScrollArea>

class QLabel;

namespace tarvo::window {

class PictureView : public QScrollArea {
    Q_OBJECT

public:
    PictureView(const QImage& picture, QWidget* parent);

    // true: fits into the view, but is never enlarged.
    void setFitted(bool fitted);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void showPicture();

    QLabel* m_label;
    QSize m_size;
    bool m_fitted = true;
};

}  // namespace tarvo::window
