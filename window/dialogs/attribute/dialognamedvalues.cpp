#include "window/dialogs/attribute/dialognamedvalues.h"

#include "ui_dialognamedvalues.h"
#include "window/common/filefilter.h"
#include "window/common/guard.h"
#include "window/common/messageboxes.h"
#include "window/common/messages.h"
#include "window/common/outputdialog.h"
#include "window/common/textfiles.h"
#include "window/common/textformat.h"
#include "window/common/theme.h"
#include "window/dialogs/attribute/namedvaluescsv.h"
#include "window/dialogs/checklabel.h"

#include <QFileDialog>
#include <QMenu>
#include <QPushButton>
#include <QSignalBlocker>
#include <algorithm>
#include <functional>
#include <set>

namespace tarvo::window {

namespace {

using core::NamedValue;

enum NamedValueColumn { NAMED_VALUE, NAMED_NAME, NAMED_COLUMNS };

QString csvFilter() {
    return withAllFiles(QObject::tr("CSV files (*.csv)"));
}

}  // namespace

bool DialogNamedValues::edit(std::string& namedValues,
                             const qrb::pointcloud::PointAttribute* attribute, QWidget* parent) {
    DialogNamedValues dialog(attribute, parent);
    dialog.m_values = core::readNamedValues(namedValues);
    dialog.showValues(0);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    if (dialog.m_changed)
        namedValues = core::writeNamedValues(dialog.m_values);
    return true;
}

DialogNamedValues::DialogNamedValues(const qrb::pointcloud::PointAttribute* attribute,
                                     QWidget* parent)
    : QDialog(parent),
      m_ui(std::make_unique<Ui::DialogNamedValues>()),
      m_settings("DialogNamedValues"),
      m_attribute(attribute) {
    m_ui->setupUi(this);
    m_ui->buttonAdd->setDefaultAction(m_ui->actionAdd);
    m_ui->buttonRemove->setDefaultAction(m_ui->actionRemove);
    m_ui->buttonMoveUp->setDefaultAction(m_ui->actionMoveUp);
    m_ui->buttonMoveDown->setDefaultAction(m_ui->actionMoveDown);
    m_ui->buttonSort->setDefaultAction(m_ui->actionSort);
    buildMenu();
    m_settings.restoreGeometryOf(this);
}

DialogNamedValues::~DialogNamedValues() {
    m_settings.saveGeometryOf(this);
}

void DialogNamedValues::buildMenu() {
    auto* menu = new QMenu(this);
    menu->addActions({m_ui->actionImport, m_ui->actionExport});
    m_ui->buttonMenu->setMenu(menu);
    // Shortcuts work only on actions of a visible widget.
    addActions({m_ui->actionImport, m_ui->actionExport});
    // Ins and Del belong to the cell while one is edited.
    for (QAction* action :
         {m_ui->actionAdd, m_ui->actionRemove, m_ui->actionMoveUp, m_ui->actionMoveDown})
        action->setShortcutContext(Qt::WidgetShortcut);
}

void DialogNamedValues::showValues(int current) {
    {
        const QSignalBlocker filling(m_ui->tableNamedValues);
        m_ui->tableNamedValues->setRowCount(static_cast<int>(m_values.size()));
        for (int row = 0; row < m_ui->tableNamedValues->rowCount(); ++row) {
            const NamedValue& each = m_values[static_cast<std::size_t>(row)];
            for (int column = 0; column < NAMED_COLUMNS; ++column) {
                auto* cell = new QTableWidgetItem(
                    QString::fromStdString(column == NAMED_VALUE ? each.value : each.name));
                if (!each.understood)
                    cell->setFlags(cell->flags() & ~Qt::ItemIsEditable);
                m_ui->tableNamedValues->setItem(row, column, cell);
            }
        }
    }
    // Whatever modifier key is held down for the action: the row is the only one selected.
    if (!m_values.empty())
        m_ui->tableNamedValues->setCurrentCell(
            std::clamp(current, 0, static_cast<int>(m_values.size()) - 1), NAMED_VALUE,
            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    updateChecks();
}

void DialogNamedValues::updateChecks() {
    const QSignalBlocker painting(m_ui->tableNamedValues);
    const auto findings = core::checkNamedValues(m_values, m_attribute);
    const QColor marked = readable(QColor(0xb0, 0x00, 0x20), palette());
    for (int row = 0; row < m_ui->tableNamedValues->rowCount(); ++row) {
        QStringList texts;
        bool error = false;
        for (const core::NamedValueFinding& finding : findings)
            if (finding.row == static_cast<std::size_t>(row)) {
                texts += translatedMessage(finding.text);
                error = error || finding.error;
            }
        for (int column = 0; column < NAMED_COLUMNS; ++column) {
            QTableWidgetItem* cell = m_ui->tableNamedValues->item(row, column);
            cell->setToolTip(plainToolTip(texts.join('\n')));
            cell->setData(Qt::ForegroundRole, error ? QVariant(QBrush(marked)) : QVariant());
            QFont font = m_ui->tableNamedValues->font();
            font.setItalic(!texts.isEmpty());
            cell->setFont(font);
        }
    }

    // The first error, else the first note.
    const auto first = std::find_if(findings.begin(), findings.end(),
                                    [](const auto& finding) { return finding.error; });
    const bool wrong = first != findings.end();
    QString text;
    if (!findings.empty()) {
        const core::NamedValueFinding& shown = wrong ? *first : findings.front();
        text = tr("Row %0: %1").arg(QString::number(shown.row + 1), translatedMessage(shown.text));
        if (findings.size() > 1)
            text += ' ' + tr("(And %0 more.)").arg(findings.size() - 1);
    }
    showCheck(m_ui->labelCheck, text, wrong ? CheckKind::ERROR : CheckKind::NOTE);
    m_ui->buttonBox->button(QDialogButtonBox::Ok)->setEnabled(!wrong);
    on_tableNamedValues_itemSelectionChanged();
}

void DialogNamedValues::on_tableNamedValues_itemSelectionChanged() {
    const int row = m_ui->tableNamedValues->currentRow();
    const int rows = m_ui->tableNamedValues->rowCount();
    m_ui->actionRemove->setEnabled(!m_ui->tableNamedValues->selectedItems().isEmpty());
    m_ui->actionMoveUp->setEnabled(row > 0);
    m_ui->actionMoveDown->setEnabled(row >= 0 && row + 1 < rows);
    m_ui->actionSort->setEnabled(rows > 1);
    m_ui->actionExport->setEnabled(rows > 0);
}

void DialogNamedValues::on_tableNamedValues_currentCellChanged(int, int, int, int) {
    on_tableNamedValues_itemSelectionChanged();
}

void DialogNamedValues::on_tableNamedValues_itemChanged(QTableWidgetItem* item) {
    NamedValue& value = m_values[static_cast<std::size_t>(item->row())];
    QString text = item->text().trimmed();
    if (item->column() == NAMED_VALUE && text.startsWith('+'))
        text.remove(0, 1);  // the library reads no plus sign
    std::string& field = item->column() == NAMED_VALUE ? value.value : value.name;
    if (text != QString::fromStdString(field)) {
        field = text.toStdString();
        value.line.clear();
        m_changed = true;
    }
    {
        const QSignalBlocker writing(m_ui->tableNamedValues);
        item->setText(text);
    }
    updateChecks();
}

// A row below the current one, whose value is to be typed.
void DialogNamedValues::on_actionAdd_triggered() {
    const int row = m_values.empty() ? 0 : m_ui->tableNamedValues->currentRow() + 1;
    m_values.insert(m_values.begin() + row, NamedValue());
    m_changed = true;
    showValues(row);
    m_ui->tableNamedValues->setFocus();
    m_ui->tableNamedValues->editItem(m_ui->tableNamedValues->item(row, NAMED_VALUE));
}

void DialogNamedValues::on_actionRemove_triggered() {
    std::set<int, std::greater<>> rows;
    for (const QTableWidgetItem* item : m_ui->tableNamedValues->selectedItems())
        rows.insert(item->row());
    if (rows.empty())
        return;
    for (const int row : rows)
        m_values.erase(m_values.begin() + row);
    m_changed = true;
    showValues(*rows.rbegin());
}

void DialogNamedValues::move(int by) {
    const int row = m_ui->tableNamedValues->currentRow();
    const int rows = static_cast<int>(m_values.size());
    if (row < 0 || row + by < 0 || row + by >= rows)
        return;
    std::swap(m_values[static_cast<std::size_t>(row)],
              m_values[static_cast<std::size_t>(row + by)]);
    m_changed = true;
    showValues(row + by);
}

void DialogNamedValues::on_actionMoveUp_triggered() {
    move(-1);
}

void DialogNamedValues::on_actionMoveDown_triggered() {
    move(1);
}

void DialogNamedValues::on_actionSort_triggered() {
    core::sortNamedValues(m_values);
    m_changed = true;
    showValues(0);
}

void DialogNamedValues::on_actionImport_triggered() {
    const QString name =
        QFileDialog::getOpenFileName(this, tr("Import Named Values"), {}, csvFilter());
    if (name.isEmpty())
        return;
    std::vector<NamedValue> imported;
    const bool read = guarded(
        this, [&] { imported = namedValuesFromCsv(QByteArray::fromStdString(readFile(name))); });
    if (!read)
        return;
    if (!m_values.empty() &&
        !confirmed(this, tr("Replace the %0 named values by the %1 of the file?")
                             .arg(m_values.size())
                             .arg(imported.size())))
        return;
    m_values = std::move(imported);
    m_changed = true;
    showValues(0);
}

void DialogNamedValues::on_actionExport_triggered() {
    const auto lost = std::count_if(m_values.begin(), m_values.end(),
                                    [](const NamedValue& each) { return !each.understood; });
    if (lost > 0 && !confirmed(this, tr("Lines that are no \"VALUE=NAME\" can't be exported: %0. "
                                        "Export the others?")
                                         .arg(lost)))
        return;
    const QString name =
        chooseOutput(this, tr("Export Named Values"), "named-values.csv", csvFilter(), "csv");
    if (name.isEmpty())
        return;
    guarded(this, [&] { writeFile(name, namedValuesToCsv(m_values).toStdString()); });
}

}  // namespace tarvo::window
