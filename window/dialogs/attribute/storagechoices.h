// The lists of storage classes and of compressions of an attribute, with what each is good for.
#pragma once

class QComboBox;

namespace tarvo::window {

// Each entry has its number as its data.
void fillStorageClasses(QComboBox* list);
void fillCompressions(QComboBox* list);

// A value that the list lacks gets an entry of its own, so that it is kept.
void chooseValue(QComboBox* list, int value);

}  // namespace tarvo::window
