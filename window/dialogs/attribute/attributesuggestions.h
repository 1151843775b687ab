// The default catalogue's point attributes as suggestions for a new definition.
#pragma once

#include "catalogue/catalogue.h"

#include <QString>
#include <QStringList>

class QTreeWidget;
class QTreeWidgetItem;

namespace tarvo::window {

// One row per default attribute: name, title, group, unit, data type. Those of takenNames can't be
// selected and say why. Needs the library.
void fillSuggestions(QTreeWidget* tree, const QStringList& takenNames);
// Shows the rows of which name, title, tags and description hold all the words. The first of them
// that can be taken becomes the current one; none, where there are no words. Returns how many are
// shown.
int filterSuggestions(QTreeWidget* tree, const QString& words);
// Null where the row can't be taken.
const catalogue::AttributeEntry* suggestionOf(const QTreeWidgetItem* row);

// What the catalogue uses, without duplicates, in its order.
QStringList suggestedUnits();
QStringList suggestedTags();

}  // namespace tarvo::window
