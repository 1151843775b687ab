// Names of the default definitions as an editable combo box offers them.
#pragma once

#include <QStringList>

class QComboBox;

namespace tarvo::window {

// Fills the list and completes what is typed from anywhere in the names. Names that are taken can't
// be chosen.
void suggestNames(QComboBox* box, const QStringList& names, const QStringList& taken);

}  // namespace tarvo::window
