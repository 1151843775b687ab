// The menu that puts attribute names, properties, operators and commands into a filter expression,
// and keeps expressions under names.
#pragma once

#include "qrb/pointattribute.h"

#include <QMenu>
#include <vector>

class QLineEdit;

namespace tarvo::window {

class FilterInsertMenu : public QMenu {
    Q_OBJECT

public:
    // The texts go into target, which must outlive the menu.
    FilterInsertMenu(QLineEdit* target, QWidget* parent);

    // Offers the attributes and their elements, in alphabetical order.
    void setAttributes(const std::vector<qrb::pointcloud::PointAttribute>& attributes);

signals:
    void historyCleared();

private slots:
    void onPointDataFilterInsertAttribute();
    void onPointDataFilterInsertProperty();
    void onPointDataFilterInsertOperator();
    void onPointDataFilterInsertCommand();
    void onPointDataFilterInsertRangeQuery();
    void onPointDataFilterClearHistory();
    void onPointDataFilterClearFilter();
    void onSaveFilter();
    void showSaved();

private:
    using Slot = void (FilterInsertMenu::*)();
    void addEntry(QMenu* menu, const QString& label, const QString& text, Slot slot);
    void fill(QMenu* menu, QStringList texts);
    void addProperties();
    void addOperators();
    void addCommands();

    QLineEdit* m_target;
    QMenu* m_attributes;
    QMenu* m_valid;
    QAction* m_rangeQuery = nullptr;
    QAction* m_save = nullptr;
    QMenu* m_saved = nullptr;
    QMenu* m_removed = nullptr;
    std::vector<qrb::pointcloud::PointAttribute> m_definitions;
};

// Puts a text and a blank at the cursor, in place of the selection, after a blank where none is.
void insertIntoFilter(QLineEdit* target, const QString& text);
// The same for a property, which is glued to what stands before the cursor.
void insertPropertyIntoFilter(QLineEdit* target, const QString& property);

}  // namespace tarvo::window
