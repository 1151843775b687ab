// The shared part of a database: the context, kept alive, and the library's database handle.
#pragma once

#include "qrb/context.h"

#include <functional>
#include <memory>
#include <string>

namespace tarvo::qrb {

namespace pointcloud {
class PointAttributes;
}  // namespace pointcloud

// Hands a filter to the library; throws Error.
using FilterCall = std::function<void(const std::string& filter)>;
// Has the library take a filter: calls call once, with the filter as the library is to have it.
// What call throws it passes on, or says in other words. attributes: of the database.
using FilterReader = std::function<void(const pointcloud::PointAttributes& attributes,
                                        const std::string& filter, const FilterCall& call)>;

class PointcloudData {
public:
    explicit PointcloudData(const Context& context);
    ~PointcloudData();
    PointcloudData(const PointcloudData&) = delete;
    PointcloudData& operator=(const PointcloudData&) = delete;

    const Context context;
    qrb_pointcloud* handle = nullptr;
    FilterReader filterReader;  // may be empty

    // Throws Error unless the status says success.
    void check(std::int32_t status) const;
};

// Runs call with the filter, through the database's reader of filters if there is one.
void withFilter(const std::shared_ptr<PointcloudData>& data, const std::string& filter,
                const FilterCall& call);

}  // namespace tarvo::qrb
