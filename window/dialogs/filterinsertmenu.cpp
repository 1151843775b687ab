#include "window/dialogs/filterinsertmenu.h"

#include "window/common/filterhistory.h"
#include "window/common/messageboxes.h"
#include "window/common/savedfilters.h"
#include "window/common/textformat.h"
#include "window/dialogs/dialograngequery.h"

#include <QInputDialog>
#include <QLineEdit>
#include <cmath>

namespace tarvo::window {

namespace {

QString dataOf(QObject* sender) {
    const auto* action = qobject_cast<QAction*>(sender);
    return action ? action->data().toString() : QString();
}

QIcon insertIcon(const QString& name) {
    return QIcon(":/resources/gui/filter-" + name + ".png");
}

}  // namespace

FilterInsertMenu::FilterInsertMenu(QLineEdit* target, QWidget* parent)
    : QMenu(parent), m_target(target) {
    m_attributes = addMenu(insertIcon("insert-attribute"), tr("Insert attribute name"));
    addProperties();
    addOperators();
    addCommands();
    m_valid = addMenu(insertIcon("insert-attribute"), tr("Insert test for a valid value"));
    m_rangeQuery = addAction(insertIcon("insert-range"), tr("Insert range query..."), this,
                             &FilterInsertMenu::onPointDataFilterInsertRangeQuery);
    m_rangeQuery->setEnabled(false);
    addSeparator();
    addAction(insertIcon("clear"), tr("Clear history"), this,
              &FilterInsertMenu::onPointDataFilterClearHistory);
    addAction(insertIcon("clear"), tr("Clear filter"), this,
              &FilterInsertMenu::onPointDataFilterClearFilter);
    addSeparator();
    m_save = addAction(tr("Save filter ..."), this, &FilterInsertMenu::onSaveFilter);
    m_saved = addMenu(tr("Saved filters"));
    m_removed = addMenu(tr("Remove saved filter"));
    // Another window may have changed them.
    connect(this, &QMenu::aboutToShow, this, &FilterInsertMenu::showSaved);
}

void FilterInsertMenu::addEntry(QMenu* menu, const QString& label, const QString& text, Slot slot) {
    QAction* action = menu->addAction(menu->icon(), label, this, slot);
    action->setData(text);
}

void FilterInsertMenu::addProperties() {
    QMenu* menu = addMenu(insertIcon("insert-attribute"), tr("Insert attribute property"));
    for (const char* property : {":minimum", ":maximum", ":default", ":invalid"})
        addEntry(menu, property, property, &FilterInsertMenu::onPointDataFilterInsertProperty);
}

void FilterInsertMenu::addOperators() {
    struct Operator {
        const char* label;
        const char* text;
    };
    static constexpr Operator separator{nullptr, nullptr};
    static constexpr Operator operators[] = {
        {QT_TR_NOOP("is equal to (==)"), "=="},
        {QT_TR_NOOP("not equal to (!=)"), "!="},
        separator,
        {QT_TR_NOOP("less than (<)"), "<"},
        {QT_TR_NOOP("less than or equal to (<=)"), "<="},
        separator,
        {QT_TR_NOOP("greater than (>)"), ">"},
        {QT_TR_NOOP("greater than or equal to (>=)"), ">="},
        separator,
        {QT_TR_NOOP("and (&&&&)"), "&&"},
        {QT_TR_NOOP("or (||)"), "||"},
        separator,
        {QT_TR_NOOP("modulo (%)"), "%"},
    };
    QMenu* menu = addMenu(insertIcon("insert-operator"), tr("Insert operator"));
    for (const Operator& entry : operators) {
        if (entry.label)
            addEntry(menu, tr(entry.label), entry.text,
                     &FilterInsertMenu::onPointDataFilterInsertOperator);
        else
            menu->addSeparator();
    }
}

void FilterInsertMenu::addCommands() {
    QMenu* menu = addMenu(insertIcon("insert-command"), tr("Insert command"));
    for (const char* command :
         {"find largest leaf", "find fullest leaf", "find largest node", "find fullest node"})
        addEntry(menu, command, command, &FilterInsertMenu::onPointDataFilterInsertCommand);
}

void FilterInsertMenu::setAttributes(
    const std::vector<qrb::pointcloud::PointAttribute>& attributes) {
    m_definitions = attributes;
    m_rangeQuery->setEnabled(!attributes.empty());
    QStringList names, valid;
    for (const auto& attribute : attributes) {
        const QString name = QString::fromStdString(attribute.name);
        const QStringList elements = attribute.length > mostShownElements
                                         ? QStringList(name)
                                         : shownElements(name, attribute.length);
        names += elements;
        if (!std::isnan(attribute.invalidValue))
            for (const QString& element : elements)
                valid += element + " != " + name + ":invalid";
    }
    fill(m_attributes, names);
    fill(m_valid, valid);
}

void FilterInsertMenu::fill(QMenu* menu, QStringList texts) {
    texts.sort();
    menu->clear();
    for (const QString& text : texts) {
        // A menu takes a single ampersand for the mark of a key.
        addEntry(menu, QString(text).replace('&', "&&"), text,
                 &FilterInsertMenu::onPointDataFilterInsertAttribute);
    }
    menu->setEnabled(!texts.isEmpty());
}

void FilterInsertMenu::onPointDataFilterInsertAttribute() {
    insertIntoFilter(m_target, dataOf(sender()));
}

void FilterInsertMenu::onPointDataFilterInsertProperty() {
    insertPropertyIntoFilter(m_target, dataOf(sender()));
}

void FilterInsertMenu::onPointDataFilterInsertOperator() {
    insertIntoFilter(m_target, dataOf(sender()));
}

void FilterInsertMenu::onPointDataFilterInsertCommand() {
    insertIntoFilter(m_target, dataOf(sender()));
}

void FilterInsertMenu::onPointDataFilterInsertRangeQuery() {
    DialogRangeQuery dialog(m_definitions, parentWidget());
    if (dialog.exec() == QDialog::Accepted)
        insertIntoFilter(m_target, dialog.expression());
}

void FilterInsertMenu::onPointDataFilterClearHistory() {
    if (!confirmed(parentWidget(), tr("Delete all recently used filter strings?")))
        return;
    FilterHistory::clear();
    emit historyCleared();
}

// Cut like an edit of the user, so that it ends a running query as one does.
void FilterInsertMenu::onPointDataFilterClearFilter() {
    m_target->selectAll();
    m_target->insert(QString());
}

void FilterInsertMenu::showSaved() {
    m_save->setEnabled(!m_target->text().trimmed().isEmpty());
    m_saved->clear();
    m_removed->clear();
    const auto filters = SavedFilters::all();
    for (auto filter = filters.cbegin(); filter != filters.cend(); ++filter) {
        const QString name = filter.key();
        const QString label = QString(name).replace('&', "&&");
        QAction* choice = m_saved->addAction(label, this, [this, expression = filter.value()] {
            m_target->selectAll();
            m_target->insert(expression);
            m_target->setFocus();
        });
        choice->setToolTip(plainToolTip(filter.value()));
        m_removed->addAction(label, this, [this, name] {
            if (lossConfirmed(parentWidget(), tr("Remove the saved filter \"%0\"?").arg(name)))
                SavedFilters::remove(name);
        });
    }
    m_saved->setToolTipsVisible(true);
    m_saved->setEnabled(!filters.isEmpty());
    m_removed->setEnabled(!filters.isEmpty());
}

void FilterInsertMenu::onSaveFilter() {
    QInputDialog dialog(parentWidget());
    dialog.setWindowTitle(tr("Save filter"));
    dialog.setLabelText(tr("Name:"));
    if (dialog.exec() != QDialog::Accepted)
        return;
    const QString name = dialog.textValue().simplified().left(SavedFilters::longestName);
    if (name.isEmpty())
        showWarning(parentWidget(), tr("The filter was not saved: it needs a name."));
    else if (!SavedFilters::all().contains(name) ||
             lossConfirmed(parentWidget(),
                           tr("There is a saved filter \"%0\". Replace it?").arg(name)))
        SavedFilters::save(name, m_target->text().trimmed());
}

void insertIntoFilter(QLineEdit* target, const QString& text) {
    target->insert(QString());
    const int cursor = target->cursorPosition();
    if (cursor > 0 && target->text()[cursor - 1] != ' ')
        target->insert(" ");
    target->insert(text + ' ');
    target->setFocus();
}

void insertPropertyIntoFilter(QLineEdit* target, const QString& property) {
    target->insert(QString());
    while (target->cursorPosition() > 0) {
        const QChar before = target->text()[target->cursorPosition() - 1];
        if (before != ' ' && before != ':')
            break;
        target->backspace();
    }
    target->insert(property + ' ');
    target->setFocus();
}

}  // namespace tarvo::window
