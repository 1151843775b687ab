#include "mainwindow/transactionspanel.h"

#include "common/comingactions.h"
#include "common/numerictreewidgetitem.h"
#include "common/textformat.h"
#include "ui_transactionspanel.h"

#include <QDateTime>
#include <QMenu>
#include <QToolButton>

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

QString shown(const std::string& text) {
    return QString::fromStdString(text).left(longestText);
}

}  // namespace

TransactionsPanel::TransactionsPanel(const DatabaseSession& session, QWidget* parent)
    : Panel(session, parent), m_ui(std::make_unique<Ui::TransactionsPanel>()) {
    m_ui->setupUi(this);
    buildToolBar();
    m_ui->treeTransactions->sortByColumn(TRANSACTION_ID, Qt::AscendingOrder);
    tarvo::common::announceForLater({m_ui->actionTransactionBegin, m_ui->actionTransactionCommit,
                                     m_ui->actionTransactionRollback,
                                     m_ui->actionTransactionRestore, m_ui->actionTransactionDiscard,
                                     m_ui->actionTransactionSize, m_ui->actionManagementFinalize,
                                     m_ui->actionManagementVacuum,
                                     m_ui->actionManagementLevelOfDetail});
}

TransactionsPanel::~TransactionsPanel() = default;

void TransactionsPanel::buildToolBar() {
    auto* button = new QToolButton(this);
    button->setObjectName("buttonFinalize");
    button->setIcon(QIcon(":/resources/gui/finalize.png"));
    button->setToolTip("Delete transactions");
    button->setPopupMode(QToolButton::InstantPopup);
    button->setStyleSheet("QToolButton::menu-indicator { image: none; }");
    auto* menu = new QMenu(button);
    menu->addActions({m_ui->actionManagementFinalize, m_ui->actionTransactionDiscard});
    button->setMenu(menu);
    // Its actions are announced for later; there is nothing to choose until they are there.
    button->setEnabled(false);
    m_ui->toolBarTransactions->addWidget(button);
}

void TransactionsPanel::refresh() {
    m_ui->treeTransactions->clear();
    m_ui->labelTransactions->clear();
    if (!database())
        return;

    const auto& transactions = database()->transactions();
    const auto ids = transactions.list();
    const std::uint32_t current = transactions.current();
    m_ui->treeTransactions->setSortingEnabled(false);
    for (const std::uint32_t id : ids)
        addRow(id, current);
    m_ui->treeTransactions->setSortingEnabled(true);
    // After sorting, because the mark of the sorted column takes room.
    for (int column = TRANSACTION_ID; column <= TRANSACTION_START; ++column)
        m_ui->treeTransactions->resizeColumnToContents(column);

    m_ui->labelTransactions->setText(
        transactions.pending()
            ? QString("Transaction pending...")
            : QString("Transactions: %1, Current transaction: %2").arg(ids.size()).arg(current));
}

void TransactionsPanel::addRow(std::uint32_t id, std::uint32_t current) {
    const auto details = database()->transactions().details(id);
    auto* row = new NumericTreeWidgetItem(m_ui->treeTransactions);
    row->setText(TRANSACTION_ID, QString("%0%1").arg(id).arg(id == current ? "*" : ""));
    row->setData(TRANSACTION_ID, Qt::UserRole, id);
    row->setText(TRANSACTION_TITLE, shown(details.title));
    row->setText(TRANSACTION_AGENT, shown(details.agent));
    row->setText(TRANSACTION_QRB,
                 tarvo::common::shortLibraryVersion(QString::fromStdString(details.qrb)));
    row->setText(TRANSACTION_START, shown(details.start));
    row->setText(TRANSACTION_STOP, shown(details.stop));

    row->setTextAlignment(TRANSACTION_DURATION, Qt::AlignRight | Qt::AlignVCenter);
    const auto start =
        QDateTime::fromString(QString::fromStdString(details.start), Qt::ISODateWithMs);
    const auto stop =
        QDateTime::fromString(QString::fromStdString(details.stop), Qt::ISODateWithMs);
    if (!start.isValid()) {
        row->setText(TRANSACTION_DURATION, "failed to parse started");
    } else if (!stop.isValid()) {
        row->setText(TRANSACTION_DURATION, "failed to parse stopped");
    } else {
        const qint64 milliseconds = start.msecsTo(stop);
        const qint64 seconds = milliseconds / 1000;
        row->setText(TRANSACTION_DURATION, QString("%1:%2:%3.%4")
                                               .arg(seconds / 3600)
                                               .arg(seconds / 60 % 60, 2, 10, QChar('0'))
                                               .arg(seconds % 60, 2, 10, QChar('0'))
                                               .arg(milliseconds % 1000, 3, 10, QChar('0')));
        row->setSortValue(TRANSACTION_DURATION, static_cast<double>(milliseconds));
        row->setToolTip(TRANSACTION_DURATION, QString("%1 s").arg(milliseconds / 1000.0));
    }
}
