#include "window/panels/pointdatapanel.h"

#include "ui_pointdatapanel.h"
#include "window/common/filterhistory.h"
#include "window/common/messageboxes.h"
#include "window/common/textfiles.h"
#include "window/panels/filterhelp.h"
#include "window/panels/formatexport.h"
#include "window/panels/listfindbar.h"
#include "window/panels/pointexport.h"
#include "window/widgets/splittermemory.h"

#include <QBoxLayout>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QSplitter>
#include <algorithm>
#include <limits>

namespace tarvo::window {

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
    m_findBar = new ListFindBar(m_ui->treePointData, tr("find in the points shown"), this);
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

const qrb::pointcloud::PointAttribute* PointDataPanel::attributeOf(int column) const {
    const std::string name = m_headers.value(column).section('[', 0, 0).toStdString();
    const auto found = std::find_if(m_attributes.begin(), m_attributes.end(),
                                    [&](const auto& attribute) { return attribute.name == name; });
    return found == m_attributes.end() ? nullptr : &*found;
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
