#include "window/view/pointdetails.h"

#include "core/namedvalues.h"
#include "core/pointpages.h"
#include "window/common/aside.h"
#include "window/common/textformat.h"

#include <QHeaderView>
#include <QLabel>
#include <QToolButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <map>

namespace tarvo::window {

namespace {

struct Value {
    QString attribute;
    QString value;
    QString unit;
};

// "2 ground" where the attribute names the value.
QString withName(const QString& value, const std::vector<core::NamedValue>& names) {
    for (const core::NamedValue& named : names)
        if (named.understood && value == QString::fromStdString(named.value))
            return value + ' ' + oneLine(QString::fromStdString(named.name));
    return value;
}

// None: no point has the id.
std::vector<Value> valuesOf(const qrb::Pointcloud& database, std::uint64_t id) {
    const auto& attributes = database.pointAttributes();
    std::vector<core::PointColumn> columns;
    std::map<std::string, qrb::pointcloud::PointAttribute> definitions;
    for (const std::string& name : attributes.list()) {
        const auto& definition = definitions[name] = attributes.get(name);
        for (auto& column : core::columnsOf(definition, mostShownElements))
            columns.push_back(std::move(column));
    }
    core::PointPages points(database, {attributes.pointIdName() + " == " + std::to_string(id), {}},
                            std::move(columns), 1);
    std::vector<Value> values;
    if (points.next() == 0)
        return values;
    for (std::size_t i = 0; i < points.columns().size(); ++i) {
        const core::PointColumn& column = points.columns()[i];
        const auto& definition = definitions[column.attribute];
        std::string text;
        points.appendText(text, 0, i);
        values.push_back(
            {oneLine(QString::fromStdString(column.name)),
             withName(QString::fromStdString(text), core::readNamedValues(definition.namedValues)),
             oneLine(QString::fromStdString(definition.unitSymbol))});
    }
    return values;
}

}  // namespace

PointDetails::PointDetails(QWidget* parent)
    : QWidget(parent), m_title(new QLabel(this)), m_values(new QTreeWidget(this)) {
    setObjectName("pointDetails");
    m_title->setObjectName("labelPickedPoint");
    m_title->setWordWrap(true);
    m_title->setTextFormat(Qt::PlainText);
    m_values->setObjectName("treePickedPoint");
    m_values->setAccessibleName(tr("Values of the point"));
    m_values->setHeaderLabels({tr("Attribute"), tr("Value"), tr("Unit")});
    m_values->setRootIsDecorated(false);
    m_values->setUniformRowHeights(true);
    m_values->setAlternatingRowColors(true);
    auto* close = new QToolButton(this);
    close->setObjectName("buttonClosePickedPoint");
    close->setText("\u00d7");
    close->setAutoRaise(true);
    close->setToolTip(tr("Hide the values of the point"));
    close->setAccessibleName(tr("Hide the values of the point"));
    connect(close, &QToolButton::clicked, this, &PointDetails::clear);
    auto* head = new QHBoxLayout;
    head->addWidget(m_title, 1);
    head->addWidget(close, 0, Qt::AlignTop);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(head);
    layout->addWidget(m_values, 1);
    hide();
}

void PointDetails::show(const qrb::Pointcloud& database, std::uint64_t id) {
    std::vector<Value> values;
    workAside(window(), tr("Reading the point..."), database.context(),
              [&](const StepProgress&) { values = valuesOf(database, id); });
    m_values->clear();
    QList<QTreeWidgetItem*> rows;
    for (const Value& value : values)
        rows += new QTreeWidgetItem({value.attribute, value.value, value.unit});
    m_values->addTopLevelItems(rows);
    for (int column = 0; column < 3; ++column)
        m_values->resizeColumnToContents(column);
    m_values->setVisible(!values.empty());
    m_title->setText(values.empty()
                         ? tr("Point %1 is not in the database: the level of detail made it of "
                              "several. Zoom in to see those.")
                               .arg(id)
                         : tr("Point %1").arg(id));
    setVisible(true);
}

void PointDetails::clear() {
    hide();
    m_values->clear();
}

}  // namespace tarvo::window
