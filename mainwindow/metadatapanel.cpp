#include "mainwindow/metadatapanel.h"

#include "common/guard.h"
#include "common/jsonvalues.h"
#include "common/messageboxes.h"
#include "common/numerictreewidgetitem.h"
#include "common/progress.h"
#include "common/textfiles.h"
#include "common/textformat.h"
#include "common/theme.h"
#include "dialogs/dialogmetadata.h"
#include "dialogs/dialogmetadatasignature.h"
#include "ui_metadatapanel.h"

#include <QFileDialog>
#include <algorithm>

namespace common = tarvo::common;

namespace {

// Bytes of a value that the list shows.
constexpr std::size_t previewSize = 8192;

enum MetaDataColumn { ITEM_NAME, ITEM_FORMAT, ITEM_SIZE, ITEM_VALUE };

QString joined(const QStringList& names) {
    return names.isEmpty() ? QString("(none)") : names.join(", ");
}

// Sets metadata items; what it changed can be taken back, but for signatures.
class MetaDataImport {
public:
    explicit MetaDataImport(tarvo::qrb::pointcloud::MetaData& metaData) : m_metaData(metaData) {}
    void set(const std::string& name, const std::string& value) {
        const bool exists = m_metaData.exists(name);
        m_before.push_back({name, exists, exists ? m_metaData.get(name) : std::string()});
        m_metaData.set(name, value);
        (exists ? updated : added) += QString::fromStdString(name);
    }
    // Whether setting an item loses a signature, which nobody without its key can give back.
    bool losesSignature(const std::string& name) const {
        return m_metaData.exists(name) && m_metaData.verifySignature(name, 0, {});
    }
    void takeBack() {
        for (auto old = m_before.rbegin(); old != m_before.rend(); ++old)
            old->exists ? m_metaData.set(old->name, old->value) : m_metaData.remove(old->name);
    }
    QStringList added;
    QStringList updated;

private:
    struct Before {
        std::string name;
        bool exists;
        std::string value;
    };
    tarvo::qrb::pointcloud::MetaData& m_metaData;
    std::vector<Before> m_before;
};

}  // namespace

MetaDataPanel::MetaDataPanel(const DatabaseSession& session, QWidget* parent)
    : Panel(session, parent), m_ui(std::make_unique<Ui::MetaDataPanel>()) {
    m_ui->setupUi(this);
    on_treeMetaData_itemSelectionChanged();
}

MetaDataPanel::~MetaDataPanel() = default;

void MetaDataPanel::refresh() {
    auto* tree = m_ui->treeMetaData;
    tree->clear();
    m_ui->labelMetaData->clear();
    on_treeMetaData_itemSelectionChanged();
    if (!database())
        return;

    tree->setSortingEnabled(false);
    for (const std::string& name : database()->metaData().list())
        addRow(name);
    for (int column = ITEM_NAME; column <= ITEM_SIZE; ++column)
        tree->resizeColumnToContents(column);
    tree->sortByColumn(ITEM_NAME, Qt::AscendingOrder);
    tree->setSortingEnabled(true);
    m_ui->labelMetaData->setText(QString("Meta data items: %1").arg(tree->topLevelItemCount()));
}

void MetaDataPanel::addRow(const std::string& name) {
    auto& metaData = database()->metaData();
    std::string value = metaData.get(name);
    const std::size_t bytes = value.size();
    const bool locked = metaData.verifySignature(name, 0, {});
    const bool json = common::compactJson(value);

    auto* row = new NumericTreeWidgetItem(m_ui->treeMetaData);
    row->setText(ITEM_NAME, QString::fromStdString(name));
    row->setIcon(ITEM_NAME, QIcon(locked ? ":/resources/gui/object-locked.png"
                                         : ":/resources/gui/object-unlocked.png"));
    if (locked)
        row->setForeground(ITEM_NAME, common::readable(QColor(Qt::darkBlue), palette()));
    row->setText(ITEM_FORMAT, json ? "JSON" : "text");
    row->setTextAlignment(ITEM_FORMAT, Qt::AlignCenter);
    row->setText(ITEM_SIZE, common::humanReadableSize(bytes));
    row->setTextAlignment(ITEM_SIZE, Qt::AlignRight | Qt::AlignVCenter);
    row->setSortValue(ITEM_SIZE, static_cast<double>(bytes));

    QString preview = QString::fromUtf8(value.data(), std::min(value.size(), previewSize));
    if (value.size() > previewSize)
        preview += "...";
    row->setText(ITEM_VALUE, preview.simplified());
}

void MetaDataPanel::on_treeMetaData_itemSelectionChanged() {
    const auto selected = m_ui->treeMetaData->selectedItems().size();
    m_ui->actionMetaDataAdd->setEnabled(database() != nullptr);
    m_ui->actionMetaDataEdit->setEnabled(selected == 1);
    m_ui->actionMetaDataRemove->setEnabled(selected > 0);
    m_ui->actionMetaDataExport->setEnabled(selected > 0);
    m_ui->actionMetaDataSignature->setEnabled(selected == 1);
    m_ui->actionMetaDataImport->setEnabled(database() != nullptr);
}

std::vector<std::string> MetaDataPanel::selectedItems() const {
    std::vector<std::string> names;
    for (const QTreeWidgetItem* item : m_ui->treeMetaData->selectedItems())
        names.push_back(item->text(ITEM_NAME).toStdString());
    return names;
}

void MetaDataPanel::on_treeMetaData_itemDoubleClicked(QTreeWidgetItem* item, int) {
    editItem(item->text(ITEM_NAME), false);
}

void MetaDataPanel::on_actionMetaDataAdd_triggered() {
    if (!database())
        return;
    if (!database()->transactions().pending())
        common::showWarning(this,
                            "No transaction is pending.\n"
                            "Begin a transaction before adding a meta data item.");
    else
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
            if (!DialogMetaData::edit(*database(), name, value, isNew, this))
                return;
            if (!isNew && value == stored)
                return;  // An item that is not written keeps its signature.
            written = guarded([&] { metaData.set(name.toStdString(), value); });
        }
        emit databaseChanged();
        const auto rows = m_ui->treeMetaData->findItems(name, Qt::MatchExactly, ITEM_NAME);
        if (!rows.isEmpty())
            m_ui->treeMetaData->setCurrentItem(rows.first());
    });
}

void MetaDataPanel::on_actionMetaDataRemove_triggered() {
    const auto names = selectedItems();
    if (names.empty()) {
        common::showWarning(this, "Nothing selected!");
        return;
    }
    const QString question =
        names.size() == 1 ? QString("Remove entry \"%0\"?").arg(QString::fromStdString(names[0]))
                          : QString("Remove %0 entries?").arg(names.size());
    if (!common::confirmed(this, question))
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
    DialogMetaDataSignature dialog(*database(), QString::fromStdString(names.front()), this);
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
        QFileDialog::getSaveFileName(this, "Export", proposedFileName(), "JSON files (*.json)");
    if (fileName.isEmpty())
        return;
    const bool done = guarded([&] {
        const common::WaitCursor waiting;
        std::vector<std::pair<std::string, std::string>> items;
        for (const std::string& name : names)
            items.emplace_back(name, database()->metaData().get(name));
        const std::string text = common::writeJsonItems(items) + '\n';
        const auto file = common::openOutput(fileName, "Failed to open export file.",
                                             {m_session.fileName.toStdString()});
        file->write(text);
        file->publish();
    });
    if (done)
        common::showInformation(this, "Export successfully finished.");
}

void MetaDataPanel::on_actionMetaDataImport_triggered() {
    if (!database())
        return;
    const QString fileName =
        QFileDialog::getOpenFileName(this, "Import", proposedFileName(), "JSON files (*.json)");
    if (!fileName.isEmpty())
        importItems(fileName);
}

void MetaDataPanel::importItems(const QString& fileName) {
    MetaDataImport import(database()->metaData());
    const bool done = guarded([&] {
        const std::string text = common::readFile(fileName, "Failed to open import file.");
        common::Progress progress(this, "Importing metadata items...");
        const auto items = common::readJsonItems(text);
        std::vector<std::size_t> last;
        try {
            for (std::size_t i = 0; i < items.size(); ++i) {
                progress.update(static_cast<int>(i * 100 / items.size()));
                if (import.losesSignature(items[i].first))
                    last.push_back(i);
                else
                    import.set(items[i].first, items[i].second);
            }
        } catch (const common::Cancelled&) {
            import.takeBack();
            throw;
        }
        // When nobody can cancel any more.
        for (const std::size_t i : last)
            import.set(items[i].first, items[i].second);
    });
    emit databaseChanged();
    if (done)
        common::showInformation(
            this, QString("Import successfully finished.\n\nItems added: %0\nItems updated: %1")
                      .arg(joined(import.added), joined(import.updated)));
}
