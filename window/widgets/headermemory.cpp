#include "window/widgets/headermemory.h"

#include "window/common/programsettings.h"

#include <QAbstractItemModel>
#include <QEvent>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTreeView>

namespace tarvo::window {

namespace {

const QString headers = "Headers/";

}  // namespace

HeaderMemory::HeaderMemory(QTreeView* view, const QString& key)
    : QObject(view), m_view(view), m_header(view->header()), m_key(key) {
    m_widths = ProgramSettings().value(headers + m_key + "/Widths").toMap();
    m_header->viewport()->installEventFilter(this);
    connect(m_header, &QHeaderView::sectionResized, this,
            [this](int column, int, int size) { resized(column, size); });
    connect(m_header, &QHeaderView::sectionHandleDoubleClicked, this, [this](int column) {
        m_widths.remove(title(column));
        m_isChanged = true;
    });
    connect(m_header, &QHeaderView::sectionClicked, this, [this] {
        ProgramSettings settings;
        settings.setValue(headers + m_key + "/SortColumn", title(m_header->sortIndicatorSection()));
        settings.setValue(headers + m_key + "/SortDescending",
                          m_header->sortIndicatorOrder() == Qt::DescendingOrder);
    });
}

QString HeaderMemory::title(int column) const {
    return m_view->model()->headerData(column, Qt::Horizontal).toString();
}

// The last one has what the others leave.
bool HeaderMemory::isRest(int column) const {
    return m_header->stretchLastSection() && m_header->visualIndex(column) == m_header->count() - 1;
}

void HeaderMemory::resized(int column, int size) {
    if (m_isRestoring || size == 0 || isRest(column))
        return;
    const QString name = title(column);
    if (m_isPressed) {
        m_widths[name] = size;
        m_isChanged = true;
    } else if (const int kept = m_widths.value(name).toInt(); kept > 0 && kept != size) {
        const QScopedValueRollback restoring(m_isRestoring, true);
        m_header->resizeSection(column, kept);
    }
}

bool HeaderMemory::restoreSort() {
    if (m_isSorted)
        return false;
    m_isSorted = true;
    const ProgramSettings settings;
    const QString name = settings.value(headers + m_key + "/SortColumn").toString();
    const bool isDescending = settings.value(headers + m_key + "/SortDescending").toBool();
    for (int column = 0; column < m_header->count(); ++column)
        if (!name.isEmpty() && title(column) == name) {
            m_view->sortByColumn(column, isDescending ? Qt::DescendingOrder : Qt::AscendingOrder);
            return true;
        }
    return false;
}

void HeaderMemory::keepColumnOrder() {
    restoreColumnOrder();
    connect(m_header, &QHeaderView::sectionMoved, this, [this] {
        if (m_isRestoring)
            return;
        QStringList titles;
        for (int place = 0; place < m_header->count(); ++place)
            titles += title(m_header->logicalIndex(place));
        ProgramSettings().setValue(headers + m_key + "/Order", titles);
    });
}

// Columns that the settings don't know stay behind the others.
void HeaderMemory::restoreColumnOrder() {
    const QScopedValueRollback restoring(m_isRestoring, true);
    int place = 0;
    for (const QString& name : ProgramSettings().value(headers + m_key + "/Order").toStringList())
        for (int column = 0; column < m_header->count(); ++column)
            if (title(column) == name && m_header->visualIndex(column) >= place) {
                m_header->moveSection(m_header->visualIndex(column), place++);
                break;
            }
    // Not all of them get a width from the view once they are no longer the last one.
    for (int column = 0; column < m_header->count(); ++column)
        if (const int kept = m_widths.value(title(column)).toInt(); kept > 0 && !isRest(column))
            m_header->resizeSection(column, kept);
}

void HeaderMemory::keep() const {
    ProgramSettings().setValue(headers + m_key + "/Widths", m_widths);
}

bool HeaderMemory::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick)
        m_isPressed = true;
    if (event->type() == QEvent::MouseButtonRelease) {
        m_isPressed = false;
        if (m_isChanged)
            keep();
        m_isChanged = false;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace tarvo::window
