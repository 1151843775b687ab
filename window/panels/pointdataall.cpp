// All points of a selection in the points tab, where the table can hold them.
#include "ui_pointdatapanel.h"
#include "window/common/messageboxes.h"
#include "window/common/stepdialog.h"
#include "window/common/textformat.h"
#include "window/panels/pointdatapanel.h"

#include <algorithm>
#include <exception>

namespace tarvo::window {

namespace {

// A cell of the table is a variant of 32 bytes and a text on the heap, 32 bytes and two per
// character, each with the heap's own; a row has some 600 bytes besides: the item, its lists, and
// what the view knows of it. Of 62,500 rows of 16 columns 2,800 bytes a row were measured: a
// million rows would take gigabytes. What fits takes less than 100 MB, and is sorted in a twentieth
// of a second, which is what one act of the window may take also where others use the machine.
constexpr std::uint64_t cellBytes = 140;
constexpr std::uint64_t rowBytes = 600;
constexpr std::uint64_t mostCells = 320'000;
constexpr std::uint64_t mostRows = 30'000;

constexpr std::uint64_t mostUnasked = 1000;  // points
constexpr std::size_t stepRows = 1000;       // made in some milliseconds

std::uint64_t columnsOf(const std::vector<qrb::pointcloud::PointAttribute>& attributes) {
    std::uint64_t columns = 1;
    for (const auto& attribute : attributes)
        columns += std::min(attribute.length, mostShownElements);
    return columns;
}

}  // namespace

void PointDataPanel::on_actionQuerySelectAll_triggered() {
    if (!database())
        return;
    guarded([this] { readAll(); });
    updateActions();
}

void PointDataPanel::readAll() {
    const std::uint64_t total = isOfSelection(m_counted) ? *m_counted.points : countPoints();
    const std::uint64_t shown = m_reader ? m_rowCounter : 0;
    if (m_reader && total <= shown) {
        emit told(tr("All points are shown."));
        return;
    }
    const std::uint64_t columns = columnsOf(m_attributes);
    const std::uint64_t most = std::min(mostRows, mostCells / columns);
    if (total > most) {
        if (confirmed(this,
                      tr("%1 points match the current filter expression.\n"
                         "The table shows %2 of them at most; a file takes all.")
                          .arg(grouped(total), grouped(most)),
                      tr("Export ...")))
            m_ui->actionQuerySelectExport->trigger();
        return;
    }
    const std::uint64_t left = total - shown;
    if (left > mostUnasked &&
        !confirmed(this, tr("Read %1 points?\nThe table takes about %2 of memory for them.")
                             .arg(grouped(left),
                                  humanReadableSize(left * (rowBytes + columns * cellBytes)))))
        return;
    if (!m_reader) {
        const Rows first = firstRows(1);
        showRows(first);
        if (first.isEnd)
            return;
    }
    if (total > m_rowCounter)
        readRest(total - m_rowCounter);
}

// What was read until the user stopped it, or until a failure, stays; the query ends then.
void PointDataPanel::readRest(std::uint64_t points) {
    const auto pages = (points + PointReader::pageSize - 1) / PointReader::pageSize;
    Rows rows;
    std::exception_ptr failure;
    try {
        workAside(this, tr("Reading points..."), m_session.context,
                  [&](const StepProgress& progress) {
                      readRows(rows, *m_reader, static_cast<int>(pages), m_rowCounter, progress);
                  });
    } catch (...) {
        failure = std::current_exception();
    }
    if (!showInSteps(rows) || failure) {
        m_reader.reset();
        showCounter();
    }
    if (failure)
        std::rethrow_exception(failure);
}

bool PointDataPanel::showInSteps(const Rows& rows) {
    QTreeWidget* tree = m_ui->treePointData;
    const int before = tree->topLevelItemCount();
    const std::span<const QStringList> texts = rows.texts;
    bool goesOn = true;
    std::size_t done = 0;
    tree->setSortingEnabled(false);
    {
        StepDialog dialog(this, tr("Showing the points..."));
        while (goesOn && done < texts.size()) {
            const auto items =
                addRows(texts.subspan(done, std::min(stepRows, texts.size() - done)));
            m_widths.add(items);
            selectKept(items);
            done += static_cast<std::size_t>(items.size());
            goesOn = dialog.goesOn(static_cast<double>(done) / static_cast<double>(texts.size()));
        }
    }
    const QTreeWidgetItem* first = tree->topLevelItem(before);
    tree->setSortingEnabled(true);
    if (first)
        tree->scrollToItem(first, QAbstractItemView::PositionAtTop);
    tellRows(rows, done);
    return goesOn;
}

}  // namespace tarvo::window
