#include "window/panels/pointdatapanel.h"

#include "core/nodelist.h"
#include "ui_pointdatapanel.h"
#include "window/common/filterhistory.h"
#include "window/common/messageboxes.h"
#include "window/common/textfiles.h"
#include "window/common/textformat.h"
#include "window/panels/filterhelp.h"
#include "window/panels/findbar.h"
#include "window/panels/formatexport.h"
#include "window/panels/pointexport.h"
#include "window/panels/pointrow.h"
#include "window/panels/valuenames.h"
#include "window/widgets/headermemory.h"
#include "window/widgets/splittermemory.h"

#include <QAbstractItemModel>
#include <QBoxLayout>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QLocale>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QThreadPool>
#include <algorithm>
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

// What a query's way through the index was.
QString wayOf(const qrb::pointcloud::NodesPassed& nodes) {
    return QObject::tr(
               "Nodes of the index so far: %1 skipped, %2 taken whole, %3 read point by "
               "point")
        .arg(grouped(nodes.skipped), grouped(nodes.whole), grouped(nodes.read));
}

}  // namespace

PointDataPanel::PointDataPanel(const DatabaseSession& session, QWidget* parent)
    : Panel(session, parent),
      m_ui(std::make_unique<Ui::PointDataPanel>()),
      m_columns(nullptr),
      m_widths(nullptr) {
    m_ui->setupUi(this);
    m_widths = ColumnWidths(m_ui->treePointData);
    setUpFilter();
    setUpColumns();
    setUpMemory();
    // In the order read until a header is clicked; "#" leads back to it.
    m_ui->treePointData->sortByColumn(-1, Qt::AscendingOrder);
    m_ui->treePointData->setSortingEnabled(true);
    // Line edits copy by the same keys.
    m_ui->actionQuerySelectCopy->setShortcutContext(Qt::WidgetShortcut);
    m_findBar = new FindBar(m_ui->treePointData, tr("find in the points shown"), this);
    auto* layout = qobject_cast<QBoxLayout*>(this->layout());
    layout->insertWidget(layout->indexOf(m_ui->splitterPointData) + 1, m_findBar);
    m_ui->splitterPointData->setStretchFactor(0, 5);
    m_ui->splitterPointData->setStretchFactor(1, 1);
    m_ui->splitterPointData->setSizes({500, 140});
    m_ui->splitterPoints->setStretchFactor(0, 2);
    m_ui->splitterPoints->setStretchFactor(1, 1);
    m_ui->splitterPoints->setSizes({560, 340});
    for (QSplitter* splitter : {m_ui->splitterPointData, m_ui->splitterPoints})
        rememberSplitter(splitter);
    updateActions();
}

PointDataPanel::~PointDataPanel() = default;

void PointDataPanel::setUpFilter() {
    auto* filter = m_ui->PointDataFilter;
    m_filterHelp = new FilterHelp(m_session, FilterHelp::Kind::POINTS, filter,
                                  m_ui->buttonFilterMenu, m_ui->labelPointDataFilter);
    m_ui->editPointDataNodes->setMaxLength(std::numeric_limits<int>::max());
    for (QLineEdit* edit : {filter->lineEdit(), m_ui->editPointDataNodes}) {
        connect(edit, &QLineEdit::returnPressed, m_ui->actionQuerySelectNext, &QAction::trigger);
        connect(edit, &QLineEdit::textChanged, this, &PointDataPanel::onPointDataSelectionEdited);
    }
    connect(filter, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &PointDataPanel::onPointDataSelectionEdited);

    connect(m_filterHelp, &FilterHelp::historyCleared, this, [this] {
        refreshHistory();
        emit historyChanged();
    });
}

QAction* PointDataPanel::findAction() const {
    return m_ui->actionQuerySelectFind;
}

QAction* PointDataPanel::runAction() const {
    return m_ui->actionQuerySelectNext;
}

QAction* PointDataPanel::cancelAction() const {
    return m_ui->actionQuerySelectCancel;
}

void PointDataPanel::refresh() {
    if (!database() || m_shownDatabase.lock() != m_session.database) {
        if (m_shownFile == m_session.fileName)
            keepSelection();
        else
            m_keptIds.clear();
        clear();
        m_shownDatabase = m_session.database;
        if (database())
            m_shownFile = m_session.fileName;
    }
    refreshHistory();
    updateActions();
    refreshAttributes();
}

void PointDataPanel::clear() {
    m_reader.reset();
    m_rowCounter = 0;
    m_counted = {};
    showCounter();
    dropRows();
    m_ui->treePointValues->setColumns({}, {});
    m_ui->treePointData->sortByColumn(-1, Qt::AscendingOrder);
    m_ui->treePointData->setColumnCount(1);
    m_widths.restart();
    m_findBar->refresh();
    m_ui->editPointDataNodes->clear();
    m_ui->labelPointData->clear();
    m_ui->progressPointData->setValue(0);
}

// Many rows take long to be deleted, which nobody has to wait for.
void PointDataPanel::dropRows() {
    const QScopedValueRollback filling(m_isFilling, true);
    const auto rows = m_ui->treePointData->invisibleRootItem()->takeChildren();
    if (!rows.isEmpty())
        QThreadPool::globalInstance()->start([rows] { qDeleteAll(rows); });
}

void PointDataPanel::refreshAttributes() {
    m_attributes.clear();
    if (database()) {
        const auto& attributes = database()->pointAttributes();
        for (const std::string& name : attributes.list())
            m_attributes.push_back(attributes.get(name));
    }
    m_filterHelp->setAttributes(m_attributes);
    m_columns.fill(m_attributes);
    applyColumns();
}

void PointDataPanel::refreshHistory() {
    FilterHistory::show(m_ui->PointDataFilter);
}

void PointDataPanel::updateActions() {
    const bool open = database() != nullptr;
    const bool selected = !m_ui->listPointAttributes->selectedItems().isEmpty();
    m_ui->actionQuerySelectNext->setEnabled(open);
    m_ui->actionQuerySelectMore->setEnabled(open);
    m_ui->actionQuerySelectAll->setEnabled(open);
    m_ui->actionQuerySelectCancel->setEnabled(isQueryRunning());
    m_ui->actionQuerySelectCount->setEnabled(open);
    m_ui->actionQuerySelectExport->setEnabled(open);
    m_ui->actionQuerySelectExportPoints->setEnabled(open);
    const bool anyRow = m_ui->treePointData->topLevelItemCount() > 0;
    for (QAction* action :
         {m_ui->actionQuerySelectFind, m_ui->actionQuerySelectCopy, m_ui->actionQuerySelectCopyCsv,
          m_ui->actionQuerySelectCopyFilter, m_ui->actionQuerySelectCopyColumn,
          m_ui->actionQuerySelectCopyCellFilter})
        action->setEnabled(anyRow);
    m_ui->actionColumnsShow->setEnabled(selected);
    m_ui->actionColumnsHide->setEnabled(selected);
    for (QAction* action :
         {m_ui->actionColumnsShowAll, m_ui->actionColumnsHideAll, m_ui->actionColumnsShowDefault,
          m_ui->actionColumnsSortByName, m_ui->actionColumnsSortDefault})
        action->setEnabled(open);
}

QString PointDataPanel::filterText() const {
    return m_ui->PointDataFilter->currentText();
}

QString PointDataPanel::nodesText() const {
    return m_ui->editPointDataNodes->text();
}

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
    m_runningFilter = filterText();
    m_runningNodes = nodesText();
    if (!isOfSelection(m_counted))
        m_counted = {};
    m_rowCounter = 0;
    m_ui->progressPointData->setValue(0);
    keepSelection();
    dropRows();
    m_headers = QStringList("#") + m_reader->columns();
    m_idColumn = static_cast<int>(
        m_headers.indexOf(QString::fromStdString(database()->pointAttributes().pointIdName())));
    m_names = std::make_shared<ValueNames>(m_headers, m_attributes);
    m_names->setShown(m_ui->actionPointNames->isChecked());
    showHeaders();
    m_widths.restart();
    return rows;
}

const qrb::pointcloud::PointAttribute* PointDataPanel::attributeOf(int column) const {
    const std::string name = m_headers.value(column).section('[', 0, 0).toStdString();
    const auto found = std::find_if(m_attributes.begin(), m_attributes.end(),
                                    [&](const auto& attribute) { return attribute.name == name; });
    return found == m_attributes.end() ? nullptr : &*found;
}

// For rows that come again, later: what is selected then is selected beside them.
void PointDataPanel::keepSelection() {
    const auto selected = m_ui->treePointData->selectedItems();
    if (m_idColumn < 0 || selected.isEmpty())
        return;
    m_keptIds.clear();
    for (const QTreeWidgetItem* row : selected)
        m_keptIds += static_cast<const PointRow*>(row)->value(m_idColumn);
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

void PointDataPanel::showRows(const Rows& rows) {
    if (rows.texts.empty()) {
        tellRows(rows, 0);
        m_ui->actionQuerySelectCancel->setEnabled(true);
        m_ui->actionQuerySelectCancel->trigger();
        showInformation(this, tr("No data received."));
        return;
    }
    appendRows(rows.texts);
    tellRows(rows, rows.texts.size());
}

// shown: how many of them are in the table now.
void PointDataPanel::tellRows(const Rows& rows, std::size_t shown) {
    m_ui->labelPointData->setText(tr("%0 ms").arg(rows.milliseconds));
    m_ui->labelPointRows->setToolTip(rows.nodes ? wayOf(*rows.nodes) : QString());
    if (shown == 0)
        return;
    m_rowCounter += shown;
    m_ui->progressPointData->setValue(static_cast<int>(m_reader->progress()));
    m_findBar->refresh();
    if (rows.isEnd && shown == rows.texts.size())
        m_counted = {m_runningFilter, m_runningNodes, m_rowCounter};
    else if (rows.total)
        m_counted = {m_runningFilter, m_runningNodes, *rows.total};
    showCounter();
}

bool PointDataPanel::isOfSelection(const Counted& counted) const {
    return counted.points && counted.filter == filterText() && counted.nodes == nodesText();
}

// Which points are shown, and of how many, where that is known.
void PointDataPanel::showCounter() {
    QString text;
    if (m_rowCounter > 0) {
        text = QString("1\u2013%1").arg(grouped(m_rowCounter));
        const bool isKnown = m_counted.points && m_counted.filter == m_runningFilter &&
                             m_counted.nodes == m_runningNodes;
        if (isKnown)
            text = tr("%1 of %2").arg(text, grouped(*m_counted.points));
        if (m_reader && !(isKnown && *m_counted.points == m_rowCounter))
            text = tr("%1 (more with F3, 1,000 more with Shift+F3, all with Ctrl+F3)").arg(text);
    }
    m_ui->labelPointRows->setText(text);
    if (text.isEmpty())
        m_ui->labelPointRows->setToolTip({});
}

void PointDataPanel::appendRows(const std::vector<QStringList>& texts) {
    QTreeWidget* tree = m_ui->treePointData;
    const bool isFirst = tree->topLevelItemCount() == 0;
    // Sorted once, not row by row.
    tree->setSortingEnabled(false);
    const auto rows = addRows(texts);
    tree->setSortingEnabled(true);
    // Headers have room for the mark of sorting only now.
    {
        const QScopedValueRollback moving(m_isMovingColumns, true);
        m_columns.apply(tree);
    }
    m_widths.add(rows);
    m_headerMemory->restoreSort();
    selectKept(rows);
    if (!isFirst)
        tree->scrollToItem(rows.first(), QAbstractItemView::PositionAtTop);
}

QList<QTreeWidgetItem*> PointDataPanel::addRows(std::span<const QStringList> texts) {
    QList<QTreeWidgetItem*> rows;
    for (const QStringList& row : texts)
        rows += new PointRow(row, m_headers, m_names);
    m_ui->treePointData->addTopLevelItems(rows);
    return rows;
}

void PointDataPanel::selectKept(const QList<QTreeWidgetItem*>& rows) {
    if (m_keptIds.isEmpty() || m_idColumn < 0)
        return;
    const QScopedValueRollback filling(m_isFilling, true);
    for (QTreeWidgetItem* row : rows)
        if (m_keptIds.contains(static_cast<const PointRow*>(row)->value(m_idColumn)))
            row->setSelected(true);
}

void PointDataPanel::on_actionQuerySelectCancel_triggered() {
    m_reader.reset();
    showCounter();
    updateActions();
}

void PointDataPanel::on_treePointData_itemSelectionChanged() {
    // What the user selects himself is all that he wants.
    if (!m_isFilling)
        m_keptIds.clear();
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

void PointDataPanel::on_actionQuerySelectFind_triggered() {
    emit shown();
    m_findBar->open();
}

void PointDataPanel::on_actionQuerySelectExport_triggered() {
    if (!database())
        return;
    static const QStringList filters = {tr("Comma-separated values (*.csv)"),
                                        tr("Semicolon-separated values (*.csv)"),
                                        tr("Tab-separated values (*.csv)")};
    static constexpr char separators[] = {',', ';', '\t'};
    QString chosen = filters.first();
    const QString name = QFileDialog::getSaveFileName(
        this, tr("Export"), m_session.fileName + ".csv", filters.join(";;"), &chosen);
    if (name.isEmpty())
        return;
    QString result = tr("Export successfully finished.");
    const bool done = guarded([&] {
        const auto wanted = selection();
        const auto file =
            openOutput(name, tr("Failed to open export file."), {m_session.fileName.toStdString()});
        const QStringList attributes = m_columns.shownAttributes();
        const char separator = separators[std::max<qsizetype>(filters.indexOf(chosen), 0)];
        bool isLeft = false;
        workAside(this, tr("Exporting points..."), m_session.context,
                  [&](const StepProgress& progress) {
                      const std::uint64_t points = exportPoints(
                          *database(), wanted, attributes, separator, *file, percentOf(progress));
                      // A filter that was mistyped must not cost last week's export.
                      isLeft = points == 0 && file->replaces();
                      // To the disk, which takes its time.
                      if (!isLeft)
                          file->publish();
                  });
        if (isLeft)
            result = tr("No points are selected; \"%0\" was left as it was.")
                         .arg(QDir::toNativeSeparators(name));
    });
    if (done)
        showInformation(this, result);
}

void PointDataPanel::on_actionQuerySelectExportPoints_triggered() {
    if (database())
        guarded([&] { exportPointsAs(m_session, selection(), m_columns.shownAttributes(), this); });
}

void PointDataPanel::showNodes(const QString& nodes) {
    m_ui->actionQuerySelectCancel->trigger();
    m_ui->editPointDataNodes->setText(nodes);
    emit shown();
    m_ui->actionQuerySelectNext->trigger();
}

}  // namespace tarvo::window
