// The lists in which the sizes of chunks and levels of detail are chosen; an entry's index is the
// level. Filling anew keeps the index where it still exists.
#pragma once

#include "qrb/pointattribute.h"

#include <cstdint>

class QComboBox;
class QSpinBox;

namespace tarvo::window {

// Edge lengths of chunks: 2^level steps of the primary attribute's resolution, levels 0 to 63.
void fillEdgeLengths(QComboBox* list, const qrb::pointcloud::PointAttribute& primaryAttribute);

// Nodes of combined points: up to 2^(length * level) points, levels 1 to 16 and 0 for none. length:
// elements of the primary attribute.
void fillCombineLevels(QComboBox* list, std::uint32_t length);

// Shows a size. False, and nothing is changed, where the field has no such size.
bool showSize(QComboBox* list, std::uint32_t level);
bool showSize(QSpinBox* box, std::uint32_t size);

}  // namespace tarvo::window
