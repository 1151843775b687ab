// Metadata items that are JSON objects, read for a few of their members.
#pragma once

#include "catalogue/jsonmemory.h"
#include "qrb/metadata.h"

#include <string>

namespace tarvo::core {

// An empty object where there is no item, or one that is no object. Throws qrb::Error.
rapidjson::Document readItem(const qrb::pointcloud::MetaData& metaData, const std::string& name);

// Empty where there is no such text.
std::string textMember(const rapidjson::Value& object, const char* name);

// Throws qrb::Error.
bool isSigned(const qrb::pointcloud::MetaData& metaData, const std::string& name);

}  // namespace tarvo::core
