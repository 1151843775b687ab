#include "mainwindow/pointindexpanel.h"

#include "common/comingactions.h"
#include "ui_pointindexpanel.h"

#include <QLineEdit>

PointIndexPanel::PointIndexPanel(const DatabaseSession& session, QWidget* parent)
    : Panel(session, parent), m_ui(std::make_unique<Ui::PointIndexPanel>()) {
    m_ui->setupUi(this);
    m_ui->PointIndexFilter->setCompleter(nullptr);
    m_ui->PointIndexFilter->lineEdit()->setPlaceholderText(
        m_ui->PointIndexFilter->placeholderText());
    m_ui->PointIndexFilter->setEnabled(false);
    tarvo::common::announceForLater(
        {m_ui->actionPointIndexFilterNodes, m_ui->actionPointIndexNodeExpand,
         m_ui->actionPointIndexNodeCollapse, m_ui->actionPointIndexStats});
}

PointIndexPanel::~PointIndexPanel() = default;

void PointIndexPanel::refresh() {}
