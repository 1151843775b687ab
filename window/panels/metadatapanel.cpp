#include "window/panels/metadatapanel.h"

#include "core/json.h"
#include "core/metadatafile.h"
#include "ui_metadatapanel.h"
#include "window/common/messageboxes.h"
#include "window/common/outputdialog.h"
#include "window/common/textfiles.h"
#include "window/common/textformat.h"
#include "window/common/theme.h"
#include "window/dialogs/dialogmetadata.h"
#include "window/dialogs/dialogmetadatasignature.h"
#include "window/panels/listfindbar.h"
#include "window/widgets/headermemory.h"
#include "window/widgets/listkeys.h"
#include "window/widgets/numerictreewidgetitem.h"

#include <QBoxLayout>
#include <QFileDialog>
#include <algorithm>

namespace tarvo::window {

namespace {

// Bytes of a value that the list shows.
constexpr std::size_t previewSize = 8192;

enum MetaDataColumn { ITEM_NAME, ITEM_FORMAT, ITEM_SIZE, ITEM_VALUE };

// Of the name's cell: the name itself, which the text shows in one line, and whether the item is
// signed.
constexpr int nameRole = Qt::UserRole;
constexpr int lockedRole = Qt::UserRole + 1;

// Names that a box shows; the others are counted.
constexpr std::size_t shownNames = 30;

QString joined(const std::vector<std::string>& names) {
    if (names.empty())
        return QObject::tr("(none)");
    QStringList shown;
    for (std::size_t i = 0; i < std::min(names.size(), shownNames); ++i)
        shown += QString::fromStdString(names[i]);
    const QString text = shown.join(", ");
    return names.size() > shownNames
               ? QObject::tr("%0 and %1 more").arg(text, QString::number(names.size() - shownNames))
               : text;
}

// What an import did: in short, and all names where those are more than a box holds.
struct ImportReport {
    QString text;
    QString details;
};

ImportReport reportOf(const core::MetaDataImport& import, const std::vector<std::string>& skipped) {
    ImportReport report{QObject::tr("Import successfully finished.") + '\n', {}};
    const auto add = [&](const QString& label, const std::vector<std::string>& names) {
        report.text += QString("\n%0: %1").arg(label, joined(names));
        if (names.size() <= shownNames)
            return;
        report.details += label + ":\n";
        for (const std::string& name : names)
            report.details += QString::fromStdString(name) + '\n';
    };
    add(QObject::tr("Items added"), import.added);
    add(QObject::tr("Items updated"), import.updated);
    if (!import.unchanged.empty())
        add(QObject::tr("Items unchanged"), import.unchanged);
    if (!import.unsignedNow.empty())
        add(QObject::tr("Items no longer signed"), import.unsignedNow);
    if (!skipped.empty())
        add(QObject::tr("Members skipped"), skipped);
    return report;
}

// One line that shows every character where it stands.
QString previewOf(const std::string& value) {
    std::size_t end = std::min(value.size(), previewSize);
    while (end > 0 && end < value.size() && (static_cast<unsigned char>(value[end]) & 0xc0) == 0x80)
        --end;
    QString preview = QString::fromUtf8(value.data(), static_cast<qsizetype>(end));
    for (QChar& c : preview)
        if (c == '\n' || c == '\r' || c == '\t')
            c = ' ';
    return end < value.size() ? preview + "..." : preview;
}

}  // namespace

MetaDataPanel::MetaDataPanel(const DatabaseSession& session, QWidget* parent)
    : Panel(session, parent), m_ui(std::make_unique<Ui::MetaDataPanel>()) {
    m_ui->setupUi(this);
    useListKeys(m_ui->treeMetaData, m_ui->actionMetaDataEdit, m_ui->actionMetaDataRemove);
    alignNumberHeaders(m_ui->treeMetaData, {ITEM_SIZE});
    m_headerMemory = new HeaderMemory(m_ui->treeMetaData, m_ui->treeMetaData->objectName());
    m_headerMemory->keepColumnOrder();
    m_findBar =
        new ListFindBar(m_ui->treeMetaData, tr("find in the metadata items"), this, "MetaData");
    m_findBar->servePanel();
    m_ui->layoutPanel->insertWidget(m_ui->layoutPanel->indexOf(m_ui->treeMetaData) + 1, m_findBar);
    on_treeMetaData_itemSelectionChanged();
}

MetaDataPanel::~MetaDataPanel() = default;

QAction* MetaDataPanel::findAction() const {
    return m_ui->actionMetaDataFind;
}

void MetaDataPanel::on_actionMetaDataFind_triggered() {
    m_findBar->open();
}

void MetaDataPanel::refresh() {
    auto* tree = m_ui->treeMetaData;
    QStringList selected;
    for (const QTreeWidgetItem* row : tree->selectedItems())
        selected += row->data(ITEM_NAME, nameRole).toString();
    tree->clear();
    m_ui->labelMetaData->clear();
    m_findBar->refresh();
    on_treeMetaData_itemSelectionChanged();
    if (!database())
        return;

    tree->setSortingEnabled(false);
    for (const std::string& name : database()->metaData().list())
        addRow(name);
    for (int column = ITEM_NAME; column <= ITEM_SIZE; ++column)
        tree->resizeColumnToContents(column);
    if (!m_headerMemory->restoreSort())
        tree->sortByColumn(ITEM_NAME, Qt::AscendingOrder);
    tree->setSortingEnabled(true);
    for (int row = 0; row < tree->topLevelItemCount(); ++row)
        if (selected.contains(tree->topLevelItem(row)->data(ITEM_NAME, nameRole).toString()))
            tree->topLevelItem(row)->setSelected(true);
    m_findBar->refresh();
    m_ui->labelMetaData->setText(tr("Meta data items: %1").arg(tree->topLevelItemCount()));
}

void MetaDataPanel::addRow(const std::string& name) {
    auto& metaData = database()->metaData();
    std::string value = metaData.get(name);
    const std::size_t bytes = value.size();
    const bool locked = metaData.verifySignature(name, 0, {});
    const bool json = core::compactJson(value);

    auto* row = new NumericTreeWidgetItem(m_ui->treeMetaData);
    row->setText(ITEM_NAME, oneLine(QString::fromStdString(name)));
    row->setData(ITEM_NAME, nameRole, QString::fromStdString(name));
    row->setIcon(ITEM_NAME, QIcon(locked ? ":/resources/gui/object-locked.png"
                                         : ":/resources/gui/object-unlocked.png"));
    row->setData(ITEM_NAME, lockedRole, locked);
    colourName(row);
    row->setText(ITEM_FORMAT, json ? "JSON" : tr("text"));
    row->setTextAlignment(ITEM_FORMAT, Qt::AlignCenter);
    row->setText(ITEM_SIZE, humanReadableSize(bytes));
    row->setTextAlignment(ITEM_SIZE, Qt::AlignRight | Qt::AlignVCenter);
    row->setSortValue(ITEM_SIZE, static_cast<double>(bytes));

    row->setText(ITEM_VALUE, previewOf(value));
}

void MetaDataPanel::colourName(QTreeWidgetItem* row) const {
    if (row->data(ITEM_NAME, lockedRole).toBool())
        row->setForeground(ITEM_NAME, readable(QColor(Qt::darkBlue), palette()));
}

void MetaDataPanel::changeEvent(QEvent* event) {
    Panel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        for (int i = 0; i < m_ui->treeMetaData->topLevelItemCount(); ++i)
            colourName(m_ui->treeMetaData->topLevelItem(i));
}

void MetaDataPanel::on_treeMetaData_itemSelectionChanged() {
    const auto selected = m_ui->treeMetaData->selectedItems().size();
    m_ui->actionMetaDataAdd->setEnabled(isChangeable());
    m_ui->actionMetaDataEdit->setEnabled(selected == 1);
    m_ui->actionMetaDataRemove->setEnabled(selected > 0 && isChangeable());
    m_ui->actionMetaDataExport->setEnabled(selected > 0);
    m_ui->actionMetaDataSignature->setEnabled(selected == 1);
    m_ui->actionMetaDataImport->setEnabled(isChangeable());
    m_ui->actionMetaDataFind->setEnabled(database() != nullptr);
}

std::vector<std::string> MetaDataPanel::selectedItems() const {
    std::vector<std::string> names;
    for (const QTreeWidgetItem* item : m_ui->treeMetaData->selectedItems())
        names.push_back(item->data(ITEM_NAME, nameRole).toString().toStdString());
    return names;
}

void MetaDataPanel::on_treeMetaData_itemDoubleClicked(QTreeWidgetItem* item, int) {
    editItem(item->data(ITEM_NAME, nameRole).toString(), false);
}

void MetaDataPanel::on_actionMetaDataAdd_triggered() {
    if (database())
        editItem({}, true);
}

void MetaDataPanel::on_actionMetaDataEdit_triggered() {
    const auto names = selectedItems();
    if (names.size() == 1)
        editItem(QString::fromStdString(names.front()), false);
}

void MetaDataPanel::editItem(QString name, bool isNew) {
    guarded([&] {
        if (!database())
            return;
        auto& metaData = database()->metaData();
        const std::string stored = isNew ? std::string() : metaData.get(name.toStdString());
        std::string value = stored;
        bool written = false;
        // Where the database refuses the value, the editor comes up again with what was typed.
        while (!written) {
            if (!DialogMetaData::edit(*database(), name, value, isNew, this, m_session.readOnly))
                return;
            if (!isNew && value == stored)
                return;  // An item that is not written keeps its signature.
            written =
                inTransaction(
                    QString("%1 meta data item %2").arg(isNew ? "Add" : "Edit", oneLine(name))) &&
                mayWriteOver(name, isNew ? std::nullopt : std::optional(stored)) &&
                guarded([&] { metaData.set(name.toStdString(), value); });
        }
        emit databaseChanged();
        for (int i = 0; i < m_ui->treeMetaData->topLevelItemCount(); ++i)
            if (auto* row = m_ui->treeMetaData->topLevelItem(i);
                row->data(ITEM_NAME, nameRole).toString() == name)
                m_ui->treeMetaData->setCurrentItem(row);
    });
}

// Asks where the item is not as it was read, because others may have written before the transaction
// began. read: none where there was no such item.
bool MetaDataPanel::mayWriteOver(const QString& name, const std::optional<std::string>& read) {
    const auto& metaData = database()->metaData();
    const std::string item = name.toStdString();
    std::optional<std::string> now;
    if (metaData.exists(item))
        now = metaData.get(item);
    return now == read ||
           lossConfirmed(this, tr("\"%0\" was changed elsewhere since it was read.\nWrite over "
                                  "what is there now?")
                                   .arg(oneLine(name)));
}

void MetaDataPanel::on_actionMetaDataRemove_triggered() {
    const auto names = selectedItems();
    if (names.empty()) {
        showWarning(this, tr("Nothing selected!"));
        return;
    }
    const QString question = names.size() == 1
                                 ? tr("Remove entry \"%0\"?").arg(QString::fromStdString(names[0]))
                                 : tr("Remove %0 entries?").arg(names.size());
    if (!confirmed(this, question) || !inTransaction("Remove meta data items"))
        return;
    guarded([&] {
        for (const std::string& name : names)
            database()->metaData().remove(name);
    });
    emit databaseChanged();
}

void MetaDataPanel::on_actionMetaDataSignature_triggered() {
    // A click with Ctrl may leave another item as the current one.
    const auto names = selectedItems();
    if (names.size() != 1 || !database())
        return;
    DialogMetaDataSignature dialog(
        *database(), QString::fromStdString(names.front()),
        [this](const QString& title) { return inTransaction(title); }, this);
    dialog.exec();
    if (dialog.changed())
        emit databaseChanged();
}

QString MetaDataPanel::proposedFileName() const {
    return m_session.fileName + ".meta.json";
}

void MetaDataPanel::on_actionMetaDataExport_triggered() {
    const auto names = selectedItems();
    if (names.empty())
        return;
    const QString fileName =
        chooseOutput(this, tr("Export"), proposedFileName(), tr("JSON files (*.json)"), "json");
    if (fileName.isEmpty())
        return;
    const bool done = aside(tr("Exporting metadata items..."), [&](const StepProgress&) {
        std::vector<core::MetaDataItem> items;
        for (const std::string& name : names)
            items.push_back({name, database()->metaData().get(name)});
        const std::string text = core::writeMetaDataFile(items);
        const auto file = openOutput(fileName, tr("Failed to open export file."),
                                     {m_session.fileName.toStdString()});
        file->write(text);
        file->publish();
    });
    if (done)
        showInformation(this, tr("Export successfully finished."));
}

void MetaDataPanel::on_actionMetaDataImport_triggered() {
    if (!database())
        return;
    const QString fileName = QFileDialog::getOpenFileName(this, tr("Import"), proposedFileName(),
                                                          tr("JSON files (*.json)"));
    if (!fileName.isEmpty() && inTransaction("Import meta data items"))
        importItems(fileName);
}

void MetaDataPanel::importItems(const QString& fileName) {
    core::MetaDataImport import(database()->metaData());
    core::MetaDataFile file;
    const bool done = aside(tr("Importing metadata items..."), [&](const StepProgress& progress) {
        file = core::readMetaDataFile(readFile(fileName, tr("Failed to open import file.")));
        std::vector<std::size_t> last;
        try {
            for (std::size_t i = 0; i < file.items.size(); ++i) {
                progress({}, static_cast<double>(i) / static_cast<double>(file.items.size()));
                if (import.losesSignature(file.items[i]))
                    last.push_back(i);
                else
                    import.set(file.items[i]);
            }
        } catch (const Cancelled&) {
            import.takeBack();
            throw;
        }
        // When nobody can cancel any more.
        for (const std::size_t i : last)
            import.set(file.items[i]);
    });
    emit databaseChanged();
    if (!done)
        return;
    const ImportReport report = reportOf(import, file.skipped);
    showInformation(this, report.text, report.details);
}

}  // namespace tarvo::window
