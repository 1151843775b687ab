// What is wrong or doubtful about a point attribute definition, in words for the fields of an
// editor and for a command's hints. No library is needed.
#pragma once

#include "qrb/pointattribute.h"

#include <string>
#include <vector>

namespace tarvo::core {

// Fields that stand in one row of an editor share their findings.
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

enum class Severity {
    ERROR,    // no library could take it
    REFUSAL,  // the library that comes with the programs refuses it; another one may take it
    NOTE,     // taken, and yet hardly meant
};

struct AttributeFinding {
    AttributeField field = AttributeField::NAME;
    Severity severity = Severity::ERROR;
    std::string text;  // a sentence
};

// What a definition is for.
struct AttributeUse {
    bool primary = false;  // of a database to be created
    std::vector<std::string> takenNames;
    // Of an attribute that is edited: the definition that is stored; null: there is none. Not
    // owned.
    const qrb::pointcloud::PointAttribute* stored = nullptr;
    bool key = false;  // points are found by the stored values
};

// In the order of the fields, the gravest of a field first.
std::vector<AttributeFinding> checkAttribute(const qrb::pointcloud::PointAttribute& attribute,
                                             const AttributeUse& use);

// Whether all values mean the same by both definitions.
bool sameValues(const qrb::pointcloud::PointAttribute& a, const qrb::pointcloud::PointAttribute& b);
// Whether all fields are the same; no invalid value equals no invalid value.
bool sameAttribute(const qrb::pointcloud::PointAttribute& a,
                   const qrb::pointcloud::PointAttribute& b);

}  // namespace tarvo::core
