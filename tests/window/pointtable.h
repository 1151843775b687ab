// All points of a database, for comparing databases value by value.
#pragma once

#include "qrb/pointcloud.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// Every value of every point, by point id.
using Table = std::map<std::uint64_t, std::vector<double>>;

Table tableOf(const tarvo::qrb::Pointcloud& cloud, const std::vector<std::string>& attributes,
              const std::string& filter = {});
