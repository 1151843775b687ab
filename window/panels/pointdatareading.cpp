// How the points tab reads and counts what is selected: aside, page by page.
#include "core/nodelist.h"
#include "ui_pointdatapanel.h"
#include "window/common/filterhistory.h"
#include "window/common/messageboxes.h"
#include "window/common/textformat.h"
#include "window/panels/pointdatapanel.h"
#include "window/panels/valuenames.h"

#include <QElapsedTimer>
#include <QLineEdit>
#include <limits>
#include <set>

namespace tarvo::window {

namespace {

// Points per call: few enough that the progress is seen.
constexpr std::uint32_t countBatch = 1'000'000;

QString countText(quint64 count) {
    if (count == 0)
        return QObject::tr("No points match the current filter expression.");
    if (count == 1)
        return QObject::tr("One point matches the current filter expression.");
    return QObject::tr("%0 points match the current filter expression.").arg(grouped(count));
}

}  // namespace

// Of ranges of nodes those that the index has, for which it is read.
core::PointSelection PointDataPanel::selection() {
    core::PointSelection result;
    result.filter = filterText().trimmed().toStdString();
    const std::string nodes = nodesText().trimmed().toStdString();
    if (nodes.empty())
        return result;
    result.nodes = core::parseNodeList(nodes);
    if (result.nodes->size() > core::parseSingleNodes(nodes).size())
        workAside(this, tr("Reading the point index..."), m_session.context,
                  [&](const StepProgress&) {
                      qrb::pointcloud::IndexNode root;
                      database()->stat().index(root);
                      result.nodes = core::existingNodes(nodes, root);
                  });
    return result;
}

void PointDataPanel::on_actionQuerySelectNext_triggered() {
    read(1);
}

void PointDataPanel::on_actionQuerySelectMore_triggered() {
    read(10);
}

void PointDataPanel::read(int pages) {
    if (!database())
        return;
    Rows rows;
    if (guarded([&] { rows = m_reader ? nextRows(pages) : firstRows(pages); }))
        showRows(rows);
    updateActions();
}

// The rows that are shown stay until those of the new query are there.
PointDataPanel::Rows PointDataPanel::firstRows(int pages) {
    const auto wanted = selection();
    if (!wanted.filter.empty()) {
        FilterHistory::add(filterText());
        refreshHistory();
        emit historyChanged();
    }
    Rows rows;
    std::unique_ptr<PointReader> reader;
    workAside(this, tr("Reading points..."), m_session.context, [&](const StepProgress& progress) {
        reader = std::make_unique<PointReader>(*database(), wanted);
        readRows(rows, *reader, pages, 0, progress);
        if (wanted.filter.empty() && !wanted.nodes)
            rows.total = wanted.query(*database()).next(std::numeric_limits<std::uint32_t>::max());
    });
    m_reader = std::move(reader);
    const bool isAnother = m_runningFilter != filterText() || m_runningNodes != nodesText();
    m_runningFilter = filterText();
    m_runningNodes = nodesText();
    if (!isOfSelection(m_counted))
        m_counted = {};
    m_rowCounter = 0;
    m_ui->progressPointData->setValue(0);
    keepSelection();
    dropRows();
    if (isAnother)
        m_ui->treePointData->scrollToTop();
    m_headers = QStringList("#") + m_reader->columns();
    m_idColumn = static_cast<int>(
        m_headers.indexOf(QString::fromStdString(database()->pointAttributes().pointIdName())));
    m_names = std::make_shared<ValueNames>(m_headers, m_attributes);
    m_names->setShown(m_ui->actionPointNames->isChecked());
    showHeaders();
    m_widths.restart();
    emit filterRun(m_runningFilter);
    return rows;
}

// A query that failed or was stopped can't go on.
PointDataPanel::Rows PointDataPanel::nextRows(int pages) {
    Rows rows;
    try {
        workAside(this, tr("Reading points..."), m_session.context,
                  [&](const StepProgress& progress) {
                      readRows(rows, *m_reader, pages, m_rowCounter, progress);
                  });
    } catch (...) {
        m_reader.reset();
        showCounter();
        throw;
    }
    return rows;
}

void PointDataPanel::readRows(Rows& rows, PointReader& reader, int pages, std::uint64_t before,
                              const StepProgress& progress) {
    QElapsedTimer timer;
    timer.start();
    for (int page = 0; page < pages && !rows.isEnd; ++page) {
        const std::uint32_t count = reader.next();
        for (std::uint32_t row = 0; row < count; ++row) {
            QStringList& texts = rows.texts.emplace_back();
            texts += QString::number(before + rows.texts.size());
            for (int column = 0; column < reader.columns().size(); ++column)
                texts += reader.text(row, column);
        }
        rows.isEnd = count < PointReader::pageSize;
        progress({}, static_cast<double>(page + 1) / pages);
    }
    rows.nodes = reader.nodesPassed();
    rows.milliseconds = timer.elapsed();
}

void PointDataPanel::on_actionQuerySelectCancel_triggered() {
    m_reader.reset();
    showCounter();
    updateActions();
}

void PointDataPanel::onPointDataSelectionEdited() {
    if (m_reader &&
        (filterText() != m_runningFilter || m_ui->editPointDataNodes->text() != m_runningNodes))
        m_ui->actionQuerySelectCancel->trigger();
}

void PointDataPanel::on_actionQuerySelectCount_triggered() {
    if (!database())
        return;
    quint64 total = 0;
    if (guarded([&] { total = countPoints(); }))
        showInformation(this, countText(total));
}

std::uint64_t PointDataPanel::countPoints() {
    std::uint64_t total = 0;
    const auto wanted = selection();
    workAside(this, tr("Counting points..."), m_session.context, [&](const StepProgress& progress) {
        auto query = wanted.query(*database());
        while (const std::uint32_t count = query.next(countBatch)) {
            total += count;
            progress({}, query.progress() / 100.0);
        }
    });
    m_counted = {filterText(), nodesText(), total};
    showCounter();
    return total;
}

}  // namespace tarvo::window
