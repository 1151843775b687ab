// The filter expressions used last, shared by the panels that take one; kept in the program
// settings.
#pragma once

#include <QStringList>

class QComboBox;

namespace tarvo::window {

class FilterHistory {
public:
    static constexpr int maximum = 10;

    // Newest first.
    static QStringList list();
    // Puts the trimmed text in front; an equal one is moved there.
    static void add(const QString& filter);
    static void clear();
    // Fills the combo box's list without signals; its edit text stays.
    static void show(QComboBox* combo);
};

}  // namespace tarvo::window
