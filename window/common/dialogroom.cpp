#include "window/common/dialogroom.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QEvent>
#include <QScreen>
#include <QScrollArea>
#include <memory>

namespace tarvo::window {

namespace {

// Pixels that a window's frame takes; what they are really is known only once it is there.
constexpr QSize frame(12, 40);

QSize neededBy(const QDialog* dialog) {
    const QSize needed = dialog->minimumSizeHint().expandedTo(dialog->minimumSize());
    const QLayout* layout = dialog->layout();
    // Texts that break their lines are higher where the dialog is narrow.
    return layout->hasHeightForWidth()
               ? needed.expandedTo({0, layout->totalMinimumHeightForWidth(dialog->width())})
               : needed;
}

void letScroll(QDialog* dialog, QVBoxLayout* layout) {
    auto* area = new QScrollArea(dialog);
    area->setObjectName("areaOfDialog");
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    auto* contents = new QWidget(area);
    auto* inner = new QVBoxLayout(contents);
    inner->setContentsMargins({});
    inner->setSpacing(layout->spacing());
    while (layout->count() > 1) {
        const int stretch = layout->stretch(0);
        std::unique_ptr<QLayoutItem> item(layout->takeAt(0));
        if (QWidget* widget = item->widget()) {
            inner->addWidget(widget, stretch, item->alignment());
        } else if (QLayout* row = item->layout()) {
            item.release();
            inner->addLayout(row, stretch);
        } else {
            inner->addItem(item.release());
        }
    }
    area->setWidget(contents);
    layout->insertWidget(0, area, 1);
    dialog->setMinimumSize(0, 0);
}

class DialogRoom : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Show && !event->spontaneous())
            if (auto* dialog = qobject_cast<QDialog*>(watched))
                fitInto(dialog, dialog->screen()->availableSize() - frame);
        return QObject::eventFilter(watched, event);
    }
};

}  // namespace

void keepDialogsOnScreen() {
    qApp->installEventFilter(new DialogRoom(qApp));
}

void fitInto(QDialog* dialog, const QSize& room) {
    auto* layout = qobject_cast<QVBoxLayout*>(dialog->layout());
    if (!layout || layout->count() < 2)
        return;
    const QSize needed = neededBy(dialog);
    if (needed.width() > room.width() || needed.height() > room.height())
        letScroll(dialog, layout);
    dialog->resize(dialog->size().boundedTo(room));
}

}  // namespace tarvo::window
