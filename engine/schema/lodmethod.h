// How the values of several points become that of the one point that stands for them when levels
// of detail are combined. lod_settings names the method: a bare name, a JSON string or a JSON
// object with a member "method".
//
//   default   majority for enumerations and booleans, first for the point id, average else
//   average   of the valid values, weighted by the points that they stand for; invalid where there
//   is none minimum, maximum   of the valid values majority  the most frequent value, of equally
//   frequent ones the smallest first, thinout   the value of the first point in the order of the
//   index
#pragma once

#include "engine/schema/attribute.h"

namespace tarvo::engine::schema {

enum class LodMethod { Average, Minimum, Maximum, Majority, First };

// Throws Failure(Argument) for settings that name no method.
LodMethod lodMethod(const AttributeRecord& record);

}  // namespace tarvo::engine::schema
