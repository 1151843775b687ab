#include "tests/window/pictureprobe.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QCheckBox>
#include <QComboBox>
#include <QHash>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>
#include <QStyleOptionViewItem>
#include <QTabBar>
#include <QTextEdit>
#include <QToolButton>
#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int narrowestWord = 5;  // pixels; what is narrower is a mark that smoothing makes fainter
constexpr int wordGap = 4;        // pixels between words, at least
constexpr int mostRows = 12;      // of a table, from the top

double luminanceOf(QColor colour) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

// Pictures have few colours and many pixels.
double luminance(QRgb colour) {
    static QHash<QRgb, double> known;
    const auto found = known.constFind(colour);
    return found != known.cend() ? *found : *known.insert(colour, luminanceOf(QColor(colour)));
}

double contrastOf(QRgb one, QRgb other) {
    const double a = luminance(one) + 0.05, b = luminance(other) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

// Ranges in which a value is set, with gaps of at least that many joined.
std::vector<std::pair<int, int>> runs(const std::vector<bool>& set, int gap) {
    std::vector<std::pair<int, int>> result;
    for (int i = 0; i < static_cast<int>(set.size()); ++i) {
        if (!set[static_cast<std::size_t>(i)])
            continue;
        if (!result.empty() && i - result.back().second <= gap)
            result.back().second = i;
        else
            result.emplace_back(i, i);
    }
    return result;
}

class Probe {
public:
    explicit Probe(QWidget* window)
        : m_window(window),
          m_picture(window->grab().toImage().convertToFormat(QImage::Format_RGB32)) {
        for (QWidget* widget : window->findChildren<QWidget*>())
            if (widget->isVisible() && widget->visibleRegion().boundingRect().isValid())
                measure(widget);
    }

    QStringList faint;

private:
    QRect inWindow(const QWidget* widget, const QRect& rect) const {
        return {widget->mapTo(m_window, rect.topLeft()), rect.size()};
    }

    void measure(QWidget* widget) {
        const QString name = widget->objectName().isEmpty() ? widget->metaObject()->className()
                                                            : widget->objectName();
        const QRect rect = widget->visibleRegion().boundingRect();
        if (auto* view = qobject_cast<QAbstractItemView*>(widget->parentWidget());
            view && view->viewport() == widget) {
            if (auto* header = qobject_cast<QHeaderView*>(view))
                sections(header);
            else
                cells(view);
        } else if (auto* area = qobject_cast<QAbstractScrollArea*>(widget->parentWidget());
                   area && area->viewport() == widget &&
                   (qobject_cast<QTextEdit*>(area) || qobject_cast<QPlainTextEdit*>(area))) {
            words(widget, rect.adjusted(2, 2, -2, -2), area->objectName());
        } else if (qobject_cast<QLabel*>(widget)) {
            words(widget, rect, name);
        } else if (auto* tool = qobject_cast<QToolButton*>(widget)) {
            if (tool->icon().isNull())
                words(widget, rect.adjusted(4, 4, -4, -4), name);
            else if (tool->isEnabled())
                icon(widget, iconPart(tool), name);
        } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
            words(widget, textOf(button), name);
        } else if (qobject_cast<QLineEdit*>(widget)) {
            words(widget, rect.adjusted(4, 4, -4, -4), name);
        } else if (auto* list = qobject_cast<QComboBox*>(widget); list && !list->isEditable()) {
            QStyleOptionComboBox option;
            option.initFrom(list);
            words(widget,
                  list->style()
                      ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField,
                                       list)
                      .adjusted(2, 3, -2, -3),
                  name);
        } else if (auto* tabs = qobject_cast<QTabBar*>(widget)) {
            for (int i = 0; i < tabs->count(); ++i)
                words(widget, (tabs->tabRect(i) & rect).adjusted(6, 5, -6, -5),
                      name + ' ' + tabs->tabText(i));
        } else if (auto* bar = qobject_cast<QMenuBar*>(widget)) {
            for (QAction* action : bar->actions())
                words(widget, bar->actionGeometry(action).adjusted(2, 2, -2, -2), name);
        }
    }

    static QRect textOf(QAbstractButton* button) {
        QStyleOptionButton option;
        option.initFrom(button);
        const bool radio = qobject_cast<QRadioButton*>(button);
        if (radio || qobject_cast<QCheckBox*>(button))
            return button->style()->subElementRect(
                radio ? QStyle::SE_RadioButtonContents : QStyle::SE_CheckBoxContents, &option,
                button);
        // Boxes put icons of the toolkit before the text.
        const int front = button->icon().isNull() ? 0 : button->iconSize().width() + 8;
        return button->rect().adjusted(6 + front, 5, -6, -5);
    }

    void sections(QHeaderView* header) {
        for (int i = 0; i < header->count(); ++i)
            if (!header->isSectionHidden(i))
                words(header->viewport(),
                      QRect(header->sectionViewportPosition(i), 0, header->sectionSize(i),
                            header->height())
                              .adjusted(3, 4, -4, -4) &
                          header->viewport()->rect(),
                      header->parentWidget()->objectName() + " header");
    }

    void cells(QAbstractItemView* view) {
        const auto* model = view->model();
        int rows = 0;
        std::vector<QModelIndex> open{view->rootIndex()};
        while (!open.empty() && rows < mostRows) {
            const QModelIndex parent = open.back();
            open.pop_back();
            for (int row = 0; row < model->rowCount(parent) && rows < mostRows; ++row, ++rows) {
                for (int column = 0; column < model->columnCount(parent); ++column)
                    cell(view, model->index(row, column, parent));
                if (model->rowCount(model->index(row, 0, parent)) > 0)
                    open.push_back(model->index(row, 0, parent));
            }
        }
    }

    void cell(QAbstractItemView* view, const QModelIndex& index) {
        // Rows of groups have one cell that covers the others.
        if (index.data().toString().isEmpty())
            return;
        QRect rect = view->visualRect(index) & view->viewport()->rect();
        const QString place =
            QString("%1 \"%2\"").arg(view->objectName(), index.data().toString().left(30));
        if (!index.data(Qt::DecorationRole).isNull()) {
            const QRect drawn = decorationOf(view, index);
            icon(view->viewport(), drawn, place);
            rect.setLeft(drawn.right() + 4);
        }
        if (!index.data(Qt::CheckStateRole).isNull())
            rect.setLeft(rect.left() + 22);
        words(view->viewport(), rect.adjusted(2, 1, -2, -1), place);
    }

    static QRect decorationOf(const QAbstractItemView* view, const QModelIndex& index) {
        const int side = view->style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, view);
        QStyleOptionViewItem option;
        option.initFrom(view);
        option.rect = view->visualRect(index);
        option.features = QStyleOptionViewItem::HasDecoration | QStyleOptionViewItem::HasDisplay;
        option.decorationSize = {side, side};
        option.text = index.data().toString();
        const QVariant alignment = index.data(Qt::TextAlignmentRole);
        if (!alignment.isNull())
            option.displayAlignment = Qt::Alignment(alignment.toInt());
        return view->style()->subElementRect(QStyle::SE_ItemViewItemDecoration, &option, view) &
               view->viewport()->rect();
    }

    void words(const QWidget* widget, const QRect& part, const QString& place) {
        const QRect rect = inWindow(widget, part) & m_picture.rect();
        if (rect.width() < narrowestWord || rect.height() < narrowestWord)
            return;
        const QRgb ground = groundOf(m_picture, rect).rgb();
        const auto inked = [&](int x, int y) {
            return contrastOf(m_picture.pixel(x, y), ground) > 1.15;
        };
        std::vector<bool> lines(static_cast<std::size_t>(rect.height()));
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            for (int x = rect.left();
                 x <= rect.right() && !lines[static_cast<std::size_t>(y - rect.top())]; ++x)
                lines[static_cast<std::size_t>(y - rect.top())] = inked(x, y);
        for (const auto& [top, bottom] : runs(lines, 1)) {
            if (bottom - top < narrowestWord - 1)
                continue;
            std::vector<bool> columns(static_cast<std::size_t>(rect.width()));
            std::vector<double> best(static_cast<std::size_t>(rect.width()), 1);
            for (int x = 0; x < rect.width(); ++x)
                for (int y = top; y <= bottom; ++y) {
                    const auto at = static_cast<std::size_t>(x);
                    best[at] = std::max(
                        best[at],
                        contrastOf(m_picture.pixel(rect.left() + x, rect.top() + y), ground));
                    columns[at] = best[at] > 1.15;
                }
            for (const auto& [left, right] : runs(columns, wordGap)) {
                if (right - left < narrowestWord)
                    continue;
                const double most =
                    *std::max_element(best.begin() + left, best.begin() + right + 1);
                if (most < textContrast)
                    tell(place, "text", most);
            }
        }
    }

    // Where a button has its icon: before the text, if it shows one.
    static QRect iconPart(const QToolButton* tool) {
        const bool isBeside = tool->toolButtonStyle() == Qt::ToolButtonTextBesideIcon;
        return QStyle::alignedRect(Qt::LeftToRight,
                                   isBeside ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter,
                                   tool->iconSize(), tool->rect().adjusted(4, 0, -4, 0));
    }

    // Most of what an icon draws stands out; signs on it may be fainter.
    void icon(const QWidget* widget, const QRect& part, const QString& place) {
        const QRect rect = inWindow(widget, part) & m_picture.rect();
        const QRgb ground = groundOf(m_picture, rect).rgb();
        std::vector<double> ink;
        for (int y = rect.top(); y <= rect.bottom(); ++y)
            for (int x = rect.left(); x <= rect.right(); ++x)
                if (const double one = contrastOf(m_picture.pixel(x, y), ground); one > 1.15)
                    ink.push_back(one);
        // What is seen of the cell may end before the icon.
        if (rect.width() < part.height() / 2 || rect.height() < 10)
            return;
        if (ink.size() < 10)
            return tell(place, "no icon", 1);
        std::nth_element(ink.begin(), ink.begin() + static_cast<std::ptrdiff_t>(ink.size() / 2),
                         ink.end());
        if (ink[ink.size() / 2] < iconContrast)
            tell(place, "icon", ink[ink.size() / 2]);
    }

    void tell(const QString& place, const char* what, double measured) {
        const QString text = QString("%1: %2 %3").arg(place, what).arg(measured, 0, 'f', 1);
        if (!faint.contains(text))
            faint += text;
    }

    QWidget* m_window;
    QImage m_picture;
};

}  // namespace

double contrast(QColor one, QColor other) {
    return contrastOf(one.rgb(), other.rgb());
}

QColor groundOf(const QImage& picture, const QRect& part) {
    QHash<QRgb, int> counts;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            ++counts[picture.pixel(x, y)];
    // Of several that are as frequent always the same one, whatever the order of the table.
    QRgb most = 0;
    int count = 0;
    for (auto it = counts.cbegin(); it != counts.cend(); ++it)
        if (it.value() > count || (it.value() == count && it.key() > most)) {
            most = it.key();
            count = it.value();
        }
    return count == 0 ? QColor() : QColor(most);
}

QStringList faintParts(QWidget* window) {
    return Probe(window).faint;
}
