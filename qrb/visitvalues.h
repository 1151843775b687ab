// Values of a type that is known at run time, as values of the C++ type.
#pragma once

#include "qrb/pointattribute.h"

#include <cstdint>

namespace tarvo::qrb::pointcloud {

// Calls function with a pointer to the values; not at all for NONE.
template <typename Function>
void visitValues(DataType type, const void* values, Function&& function) {
    switch (type) {
        case DataType::NONE:
            return;
        case DataType::UINT8:
            return function(static_cast<const std::uint8_t*>(values));
        case DataType::INT8:
            return function(static_cast<const std::int8_t*>(values));
        case DataType::UINT16:
            return function(static_cast<const std::uint16_t*>(values));
        case DataType::INT16:
            return function(static_cast<const std::int16_t*>(values));
        case DataType::UINT32:
            return function(static_cast<const std::uint32_t*>(values));
        case DataType::INT32:
            return function(static_cast<const std::int32_t*>(values));
        case DataType::UINT64:
            return function(static_cast<const std::uint64_t*>(values));
        case DataType::INT64:
            return function(static_cast<const std::int64_t*>(values));
        case DataType::SINGLE:
            return function(static_cast<const float*>(values));
        case DataType::DOUBLE:
            return function(static_cast<const double*>(values));
    }
}

}  // namespace tarvo::qrb::pointcloud
