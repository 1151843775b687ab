// One definition for the values of an attribute in several databases.
#pragma once

#include "engine/schema/attribute.h"

#include <vector>

namespace tarvo::engine::schema {

// A definition that holds every value of all the records, which have the same name; there is at
// least one.
//
// Range: the widest. Resolution: the greatest common divisor of the resolutions and of the
// distances between the minima, as decimal numbers, so that the values of all lie on the grid; 0
// (floating-point numbers) where that would make more than 2^53 steps. Invalid value: that of those
// that have one. Storage class: the most flexible one; several constants make a variable. Named
// values: those of all, the first name where a value has several. Default value, texts and
// compression: those of the first.
//
// Throws Failure(Argument) where values can't be mixed: other lengths, units, scale factors or
// invalid values; one's invalid value being another's value; whole numbers that no common
// definition holds exactly.
AttributeRecord merged(const std::vector<AttributeRecord>& records);

}  // namespace tarvo::engine::schema
