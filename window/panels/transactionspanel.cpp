#include "window/panels/transactionspanel.h"

#include "ui_transactionspanel.h"
#include "window/common/localnumbers.h"
#include "window/common/messageboxes.h"
#include "window/common/textformat.h"
#include "window/dialogs/dialoglevelofdetail.h"
#include "window/dialogs/dialogtransaction.h"
#include "window/dialogs/dialogtransactioncommit.h"
#include "window/panels/listfindbar.h"
#include "window/panels/transactioncomparison.h"
#include "window/widgets/headermemory.h"
#include "window/widgets/numerictreewidgetitem.h"

#include <QDateTime>
#include <QFileInfo>
#include <QLocale>
#include <QMenu>
#include <QToolButton>

namespace tarvo::window {

namespace {

// The longest text of a transaction that the list shows.
constexpr int longestText = 100;

enum TransactionColumn {
    TRANSACTION_ID,
    TRANSACTION_TITLE,
    TRANSACTION_AGENT,
    TRANSACTION_QRB,
    TRANSACTION_DURATION,
    TRANSACTION_START,
    TRANSACTION_STOP
};

// Those that the library deletes: not the first one, nor the current one.
std::vector<std::uint32_t> deletable(std::vector<std::uint32_t> ids, std::uint32_t current) {
    std::erase_if(ids, [&](std::uint32_t id) { return id == 1 || id == current; });
    return ids;
}

void showLine(QTreeWidgetItem* row, int column, const std::string& text) {
    const QString whole = QString::fromStdString(text);
    const QString line = firstLine(whole);
    row->setText(column, line.left(longestText));
    if (line != whole || whole.size() > longestText)
        row->setToolTip(column, plainToolTip(whole));
}

}  // namespace

TransactionsPanel::TransactionsPanel(const DatabaseSession& session, QWidget* parent)
    : Panel(session, parent), m_ui(std::make_unique<Ui::TransactionsPanel>()) {
    m_ui->setupUi(this);
    buildToolBar();
    alignNumberHeaders(m_ui->treeTransactions, {TRANSACTION_DURATION});
    m_headerMemory = new HeaderMemory(m_ui->treeTransactions, m_ui->treeTransactions->objectName());
    m_headerMemory->keepColumnOrder();
    if (!m_headerMemory->restoreSort())
        m_ui->treeTransactions->sortByColumn(TRANSACTION_ID, Qt::AscendingOrder);
    m_findBar = new ListFindBar(m_ui->treeTransactions, tr("find in the transactions"), this,
                                "Transactions");
    m_findBar->servePanel();
    m_ui->layoutPanel->insertWidget(m_ui->layoutPanel->indexOf(m_ui->treeTransactions) + 1,
                                    m_findBar);
    m_findAction =
        addFindAction("actionTransactionFind", tr("Find a text in the transactions [Ctrl+F]"),
                      [this] { m_findBar->open(); });
    m_ui->treeTransactions->addAction(m_findAction);
    updateActions();
}

TransactionsPanel::~TransactionsPanel() = default;

void TransactionsPanel::buildToolBar() {
    auto* button = new QToolButton(this);
    button->setObjectName("buttonFinalize");
    button->setIcon(QIcon(":/resources/gui/finalize.png"));
    button->setToolTip(tr("Delete transactions"));
    button->setPopupMode(QToolButton::InstantPopup);
    button->setStyleSheet("QToolButton::menu-indicator { image: none; }");
    auto* menu = new QMenu(button);
    m_deleteButton = button;
    menu->addActions({m_ui->actionManagementFinalize, m_ui->actionTransactionDiscard});
    button->setMenu(menu);
    button->setAccessibleName(tr("Delete transactions"));
    m_ui->toolBarTransactions->addWidget(button);
    m_ui->toolBarTransactions->addSeparator();
    m_ui->toolBarTransactions->addAction(m_ui->actionTransactionCompare);
}

void TransactionsPanel::refresh() {
    m_ui->treeTransactions->clear();
    m_ui->labelTransactions->clear();
    m_pending = false;
    if (!database()) {
        updateActions();
        return;
    }

    const auto& transactions = database()->transactions();
    const auto ids = transactions.list();
    const std::uint32_t current = transactions.current();
    m_ui->treeTransactions->setSortingEnabled(false);
    for (const std::uint32_t id : ids)
        addRow(id, current);
    m_ui->treeTransactions->setSortingEnabled(true);
    // After sorting, because the mark of the sorted column takes room.
    for (int column = TRANSACTION_ID; column <= TRANSACTION_STOP; ++column)
        m_ui->treeTransactions->resizeColumnToContents(column);

    m_pending = transactions.pending();
    m_ui->labelTransactions->setText(
        m_pending ? tr("Transaction pending...")
                  : tr("Transactions: %1, Current transaction: %2").arg(ids.size()).arg(current));
    m_findBar->refresh();
    updateActions();
}

QList<QAction*> TransactionsPanel::pendingActions() const {
    return {m_ui->actionTransactionCommit, m_ui->actionTransactionRollback};
}

void TransactionsPanel::updateActions() {
    const bool open = database() != nullptr;
    const bool idle = open && !m_pending && !m_session.readOnly;
    m_ui->actionTransactionBegin->setEnabled(idle);
    m_ui->actionTransactionCommit->setEnabled(m_pending);
    m_ui->actionTransactionRollback->setEnabled(m_pending);
    m_ui->actionTransactionRestore->setEnabled(idle && m_ui->treeTransactions->currentItem());
    m_findAction->setEnabled(open);
    m_ui->actionTransactionSize->setEnabled(open);
    m_ui->actionTransactionCompare->setEnabled(open);
    for (QAction* action : {m_ui->actionTransactionDiscard, m_ui->actionManagementFinalize,
                            m_ui->actionManagementVacuum, m_ui->actionManagementLevelOfDetail})
        action->setEnabled(idle);
    m_deleteButton->setEnabled(idle);
}

void TransactionsPanel::addRow(std::uint32_t id, std::uint32_t current) {
    const auto details = database()->transactions().details(id);
    auto* row = new NumericTreeWidgetItem(m_ui->treeTransactions);
    row->setText(TRANSACTION_ID, QString("%0%1").arg(id).arg(id == current ? "*" : ""));
    row->setData(TRANSACTION_ID, Qt::UserRole, id);
    showLine(row, TRANSACTION_TITLE, details.title);
    showLine(row, TRANSACTION_AGENT, details.agent);
    row->setText(TRANSACTION_QRB, shortLibraryVersion(QString::fromStdString(details.qrb)));
    showLine(row, TRANSACTION_START, details.start);
    showLine(row, TRANSACTION_STOP, details.stop);

    row->setTextAlignment(TRANSACTION_DURATION, Qt::AlignRight | Qt::AlignVCenter);
    const auto start =
        QDateTime::fromString(QString::fromStdString(details.start), Qt::ISODateWithMs);
    const auto stop =
        QDateTime::fromString(QString::fromStdString(details.stop), Qt::ISODateWithMs);
    if (!start.isValid()) {
        row->setText(TRANSACTION_DURATION, tr("failed to parse started"));
    } else if (!stop.isValid()) {
        row->setText(TRANSACTION_DURATION, tr("failed to parse stopped"));
    } else {
        const qint64 milliseconds = start.msecsTo(stop);
        row->setText(TRANSACTION_DURATION, durationText(milliseconds));
        row->setSortValue(TRANSACTION_DURATION, static_cast<double>(milliseconds));
        row->setToolTip(TRANSACTION_DURATION,
                        localNumber(QString::number(static_cast<double>(milliseconds) / 1000.0, 'g',
                                                    QLocale::FloatingPointShortest)) +
                            " s");
    }
}

void TransactionsPanel::on_treeTransactions_itemSelectionChanged() {
    updateActions();
}

void TransactionsPanel::on_treeTransactions_itemDoubleClicked(QTreeWidgetItem* item, int) {
    guarded([&] {
        auto details =
            database()->transactions().details(item->data(TRANSACTION_ID, Qt::UserRole).toUInt());
        DialogTransaction::edit(m_session.context, details, this, true, false);
    });
}

void TransactionsPanel::change(const QString& text, const AsideJob& action) {
    if (aside(text, action))
        emit databaseChanged();
}

std::vector<std::uint32_t> TransactionsPanel::selectedIds() {
    std::vector<std::uint32_t> ids;
    for (const QTreeWidgetItem* item : m_ui->treeTransactions->selectedItems())
        ids.push_back(item->data(TRANSACTION_ID, Qt::UserRole).toUInt());
    if (ids.empty())
        showInformation(this, tr("No transaction selected."));
    return ids;
}

bool TransactionsPanel::canChangeFile() {
    if (database() && m_session.fileState() == DatabaseSession::FileState::AS_OPENED &&
        !m_session.isOverwritten())
        return true;
    emit fileLost();
    return false;
}

void TransactionsPanel::on_actionTransactionBegin_triggered() {
    if (!canChangeFile())
        return;
    qrb::pointcloud::Transaction record;
    record.title = record.agent = transactionAgentText().toStdString();
    if (DialogTransaction::edit(m_session.context, record, this, false, true))
        change(tr("Beginning a transaction..."), [&](const StepProgress&) {
            database()->transactions().begin(record.title, record.agent, record.comments,
                                             record.settings);
        });
}

void TransactionsPanel::on_actionTransactionCommit_triggered() {
    if (!canChangeFile())
        return;
    DialogTransactionCommit dialog(this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const qrb::pointcloud::Signature signature{dialog.method(), dialog.key()};
    change(tr("Committing the transaction..."), [&](const StepProgress& progress) {
        database()->transactions().commit(signature, percentOf(progress));
    });
}

void TransactionsPanel::on_actionTransactionRollback_triggered() {
    if (lossConfirmed(this, tr("Rollback current transaction?\nAll changes will be lost.")))
        change(tr("Rolling the transaction back..."),
               [this](const StepProgress&) { database()->transactions().rollback(); });
}

void TransactionsPanel::on_actionTransactionRestore_triggered() {
    const QTreeWidgetItem* item = m_ui->treeTransactions->currentItem();
    if (!item || !canChangeFile())
        return;
    const auto id = item->data(TRANSACTION_ID, Qt::UserRole).toUInt();
    if (confirmed(this, tr("Restore transaction \"%0\" (%1)?\n\n"
                           "The database gets the state of that transaction. Others stay in "
                           "the list, and can be restored as well, until a new transaction "
                           "begins.")
                            .arg(item->text(TRANSACTION_TITLE), QString::number(id))))
        change(tr("Restoring the transaction..."),
               [&](const StepProgress&) { database()->transactions().restore(id); });
}

QString TransactionsPanel::spaceOf(const std::vector<std::uint32_t>& ids) {
    std::uint64_t bytes = 0;
    if (!ids.empty())
        workAside(this, tr("Measuring transactions..."), m_session.context,
                  [&](const StepProgress&) { bytes = database()->transactions().size(ids); });
    return "\n\n" +
           (ids.size() == 1
                ? tr("1 transaction can't be restored then. That frees about %1 in the file; "
                     "\"%2\" gives it back to the disk.")
                      .arg(humanReadableSize(bytes), m_ui->actionManagementVacuum->text())
                : tr("%1 transactions can't be restored then. That frees about %2 in the file; "
                     "\"%3\" gives it back to the disk.")
                      .arg(QString::number(ids.size()), humanReadableSize(bytes),
                           m_ui->actionManagementVacuum->text()));
}

void TransactionsPanel::on_actionTransactionDiscard_triggered() {
    guarded([this] {
        const std::vector<std::uint32_t> ids = selectedIds();
        if (ids.empty() || !canChangeFile())
            return;
        const std::uint32_t current = database()->transactions().current();
        const QString question =
            ids.size() == 1 ? tr("Delete transaction %0?\n\n"
                                 "Please note, that the first transaction (1) and \n"
                                 "the current transaction (%1) can not be deleted.")
                                  .arg(QString::number(ids[0]), QString::number(current))
                            : tr("Delete selected transactions (%0)?\n\n"
                                 "Please note, that the first transaction (1) and \n"
                                 "the current transaction (%1) can not be deleted.")
                                  .arg(QString::number(ids.size()), QString::number(current));
        if (lossConfirmed(this, question + spaceOf(deletable(ids, current))))
            change(tr("Deleting transactions..."),
                   [&](const StepProgress&) { database()->transactions().discard(ids); });
    });
}

void TransactionsPanel::on_actionTransactionSize_triggered() {
    guarded([this] {
        const std::vector<std::uint32_t> ids = selectedIds();
        if (ids.empty())
            return;
        std::uint64_t bytes = 0;
        if (aside(tr("Measuring transactions..."),
                  [&](const StepProgress&) { bytes = database()->transactions().size(ids); }))
            showInformation(
                this, (ids.size() == 1 ? tr("Size of transaction %0:\n\n%1 (%2 B)")
                                       : tr("Size of selected transactions (%0):\n\n%1 (%2 B)"))
                          .arg(QString::number(ids.size() == 1 ? ids[0] : ids.size()),
                               humanReadableSize(bytes))
                          .arg(bytes));
    });
}

void TransactionsPanel::on_actionTransactionCompare_triggered() {
    guarded([this] {
        const std::vector<std::uint32_t> ids = selectedIds();
        // The file of that name is read, which must be the one that is open.
        if (ids.empty() || !canChangeFile())
            return;
        if (ids.size() > 2)
            return showInformation(this, tr("Select one or two transactions to compare."));
        const auto& transactions = database()->transactions();
        const auto [before, after] =
            comparedTransactions(ids, transactions.list(), transactions.current());
        if (before == after)
            return showInformation(this, tr("There is no other transaction to compare with."));
        compareTransactions(m_session, before, after, this);
    });
}

void TransactionsPanel::on_actionManagementLevelOfDetail_triggered() {
    if (!canChangeFile())
        return;
    DialogLevelOfDetail::edit(*database(), this);
    emit databaseChanged();
}

void TransactionsPanel::on_actionManagementFinalize_triggered() {
    guarded([this] {
        if (!canChangeFile())
            return;
        const auto& transactions = database()->transactions();
        if (lossConfirmed(this,
                          tr("Delete all transactions except the first and current/last?") +
                              spaceOf(deletable(transactions.list(), transactions.current()))))
            change(tr("Deleting transactions..."),
                   [this](const StepProgress&) { database()->management().finalize(); });
    });
}

void TransactionsPanel::on_actionManagementVacuum_triggered() {
    if (!canChangeFile())
        return;
    std::optional<std::uint64_t> unused;
    if (!aside(tr("Measuring unused disk space..."),
               [&](const StepProgress&) { unused = database()->management().unusedSize(); }))
        return;
    QString question = tr("Reorganize database file to release unused disk space?");
    if (unused)
        question += "\n\n" + tr("That releases about %1.").arg(humanReadableSize(*unused));
    if (confirmed(this, question)) {
        const qint64 before = QFileInfo(m_session.fileName).size();
        change(tr("Reorganizing the database file..."), [this](const StepProgress& progress) {
            database()->management().vacuum(percentOf(progress));
        });
        const qint64 freed = before - QFileInfo(m_session.fileName).size();
        emit told(freed > 0 ? tr("The clean-up released %0.")
                                  .arg(humanReadableSize(static_cast<std::uint64_t>(freed)))
                            : tr("There was nothing to release."));
    }
}

}  // namespace tarvo::window
