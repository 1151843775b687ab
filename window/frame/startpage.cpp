#include "window/frame/startpage.h"

#include "window/common/recentfiles.h"
#include "window/common/textformat.h"
#include "window/frame/recentmenu.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>
#include <memory>

namespace tarvo::window {

namespace {

constexpr int margin = 12;

QLabel* heading(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

}  // namespace

StartPage::StartPage(const QList<QAction*>& actions, QWidget* parent) : QWidget(parent) {
    setObjectName("startPage");
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->addWidget(heading(tr("No database is open"), this));
    auto* buttons = new QHBoxLayout;
    for (QAction* action : actions) {
        auto* button = new QToolButton(this);
        button->setDefaultAction(action);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setFocusPolicy(Qt::StrongFocus);
        buttons->addWidget(button);
    }
    buttons->addStretch();
    layout->addLayout(buttons);
    layout->addWidget(new QLabel(
        tr("Databases, and points of other programs, can be dropped on the window, too."), this));
    layout->addSpacing(margin);
    m_recent = new QVBoxLayout;
    m_recent->setSpacing(0);
    layout->addLayout(m_recent);
    layout->addStretch();
}

void StartPage::refresh() {
    while (const std::unique_ptr<QLayoutItem> item{m_recent->takeAt(0)})
        if (item->widget())
            item->widget()->deleteLater();
    const QStringList names = RecentFiles::list();
    if (!names.isEmpty())
        m_recent->addWidget(heading(tr("Open again"), this));
    for (const QString& name : names) {
        auto* button = new QPushButton(recentFileText(name, fontMetrics()), this);
        button->setFlat(true);
        button->setStyleSheet(
            "QPushButton { text-align: left; padding: 3px; }"
            "QPushButton:enabled { color: palette(link); }");
        button->setToolTip(plainToolTip(name));
        button->setEnabled(QFileInfo::exists(name));
        // Later: what is opened makes this button go.
        connect(
            button, &QPushButton::clicked, this, [this, name] { emit chosen(name); },
            Qt::QueuedConnection);
        m_recent->addWidget(button);
    }
}

}  // namespace tarvo::window
