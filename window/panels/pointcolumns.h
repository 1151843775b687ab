// The choice and order of attributes that are shown as columns: what the column chooser holds, kept
// in the program settings under "Attributes".
#pragma once

#include "qrb/pointcloud.h"

#include <QStringList>

class QListWidget;
class QTreeWidget;

namespace tarvo::window {

class PointColumns {
public:
    explicit PointColumns(QListWidget* chooser) : m_chooser(chooser) {}

    // Fills the chooser with the attributes, in the kept order; those not known yet come last and
    // are shown.
    void fill(const std::vector<qrb::pointcloud::PointAttribute>& attributes);
    void save() const;

    // The names of the checked attributes, in order.
    QStringList shownAttributes() const;
    // Hides and moves the columns of the tree; column 0 stays. Headers are element names.
    void apply(QTreeWidget* tree) const;

    // Takes the order of the tree's columns after one of them was moved; the elements of an
    // attribute follow the one that was.
    void takeOrder(const QTreeWidget* tree, int movedColumn);
    // Hides the entries of the chooser in which the text does not stand, from now on; nothing else
    // changes.
    void search(const QString& text);

    void setAllShown(bool shown);
    void setSelectedShown(bool shown);
    void setShown(const QStringList& names);
    // Attributes that the list doesn't name come last.
    void sort(const QStringList& order);
    void sortByName();

    // Whether the chooser is being filled, so that its signals mean no choice of the user.
    bool isBusy() const { return m_busy; }

private:
    void addEntry(const QString& name, std::uint32_t length, bool shown);
    QStringList names() const;

    QListWidget* m_chooser;
    QString m_search;
    bool m_busy = false;
};

}  // namespace tarvo::window
