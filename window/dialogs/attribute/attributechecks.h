// What is wrong or doubtful about a point attribute definition, in words for the fields of its
// editor. The rules are those by which the database library takes a definition or refuses it; no
// library is needed.
#pragma once

#include "qrb/pointattribute.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace tarvo::window {

// Fields that stand in one row of the editor share their findings.
enum class AttributeField {
    NAME,
    TITLE,
    TAGS,
    LENGTH,
    RANGE,
    RESOLUTION,  // and scale factor
    DEFAULT,     // and invalid value
    STORAGE,     // and compression
    NAMED_VALUES,
    LOD_SETTINGS,
};

struct AttributeFinding {
    AttributeField field = AttributeField::NAME;
    bool error = true;  // else the library takes it
    QString text;
};

// What a definition is for.
struct AttributeUse {
    bool primary = false;  // of a database to be created
    QStringList takenNames;
    // Of an attribute that is edited: the definition that is stored; null: there is none. Not
    // owned.
    const qrb::pointcloud::PointAttribute* stored = nullptr;
    bool key = false;  // points are found by the stored values
};

// In the order of the fields, errors of a field first.
std::vector<AttributeFinding> checkAttribute(const qrb::pointcloud::PointAttribute& attribute,
                                             const AttributeUse& use);

// Where a value lies: it is stored as it is; rounded to a neighbour; not at all. The definition
// itself has to be valid.
enum class ValuePlace { ON_GRID, OFF_GRID, OUTSIDE };
ValuePlace placeOf(double value, const qrb::pointcloud::PointAttribute& attribute);
// The value nearest to one of the range that can be stored.
double nearestValue(double value, const qrb::pointcloud::PointAttribute& attribute);

// Whether stored values mean the same by both definitions.
bool sameValues(const qrb::pointcloud::PointAttribute& a, const qrb::pointcloud::PointAttribute& b);
// Whether all fields are the same; no invalid value equals no invalid value.
bool sameAttribute(const qrb::pointcloud::PointAttribute& a,
                   const qrb::pointcloud::PointAttribute& b);

// What happens to the stored values when the definition is replaced; empty: nothing.
QString conversionText(const qrb::pointcloud::PointAttribute& stored,
                       const qrb::pointcloud::PointAttribute& attribute);

}  // namespace tarvo::window
