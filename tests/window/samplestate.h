// What tests of the sample look at and point to.
#pragma once

#include <QStringList>

class SampleWindow;

// What a change would change.
QStringList stateOf(const SampleWindow& window);
// Selects these rows of the tab's tree.
void select(const SampleWindow& window, const char* tab, const char* tree, const QStringList& rows);
