// Definitions of point attributes that tests begin with.
#pragma once

#include "core/defaultattribute.h"
#include "catalogue/catalogue.h"
#include "qrb/pointattribute.h"

#include <QString>
#include <exception>
#include <functional>
#include <string>

using tarvo::qrb::pointcloud::PointAttribute;

inline PointAttribute defaultAttribute(const char* name) {
    return tarvo::core::defaultAttribute(*tarvo::catalogue::findAttribute(name));
}

inline PointAttribute byteAttribute(const std::string& name) {
    PointAttribute attribute;
    attribute.name = name;
    attribute.length = 1;
    attribute.maximumValue = 255;
    attribute.storageClass = PointAttribute::VARIABLE;
    return attribute;
}

// What the action throws; empty: nothing.
inline QString messageOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::exception& error) {
        return error.what();
    }
    return {};
}
