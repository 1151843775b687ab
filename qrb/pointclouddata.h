// The shared part of a database: the context, kept alive, and the library's database handle.
#pragma once

#include "qrb/context.h"

namespace tarvo::qrb {

class PointcloudData {
public:
    explicit PointcloudData(const Context& context);
    ~PointcloudData();
    PointcloudData(const PointcloudData&) = delete;
    PointcloudData& operator=(const PointcloudData&) = delete;

    const Context context;
    qrb_pointcloud* handle = nullptr;

    // Throws Error unless the status says success.
    void check(std::int32_t status) const;
};

}  // namespace tarvo::qrb
