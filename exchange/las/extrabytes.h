// The extra bytes of point records as the "LASF_Spec" record 4 describes them.
#pragma once

#include "exchange/las/header.h"
#include "qrb/pointattribute.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::exchange::las {

// Bytes of a description, and what its options say.
inline constexpr std::size_t descriptorSize = 192;
enum ExtraOptions : std::uint8_t { hasNoData = 1, hasScale = 8, hasOffset = 16 };

struct ExtraDimension {
    std::string name;  // as it stands in the file; may be empty
    std::string description;
    qrb::pointcloud::DataType type = qrb::pointcloud::DataType::UINT8;
    std::uint32_t length = 1;  // values per point; more than one for the old array types
    std::uint32_t offset = 0;  // of the first value within the point record
    bool scaled = false;       // value = raw * scale + offset
    double scale[3] = {1, 1, 1};
    double shift[3] = {0, 0, 0};
    bool hasNoData = false;
    double noData = 0;  // raw
};

// The dimensions of the bytes behind the point format's own ones; bytes that no record describes
// come last, as one dimension without a name. Throws Failure.
std::vector<ExtraDimension> extraDimensions(const RawFile& file, const Header& header,
                                            const std::vector<Record>& records);

}  // namespace tarvo::exchange::las
