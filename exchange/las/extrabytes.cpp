#include "exchange/las/extrabytes.h"

#include "exchange/bytes.h"
#include "exchange/las/texts.h"
#include "numbers/numbertext.h"

#include <cmath>

namespace tarvo::exchange::las {

using qrb::pointcloud::DataType;

namespace {

// A value of the "any type" fields, which are as wide as the widest of their kind.
double anyType(const std::uint8_t* bytes, DataType type) {
    switch (type) {
        case DataType::SINGLE:
        case DataType::DOUBLE:
            return get<double>(bytes);
        case DataType::INT8:
        case DataType::INT16:
        case DataType::INT32:
        case DataType::INT64:
            return static_cast<double>(get<std::int64_t>(bytes));
        default:
            return static_cast<double>(get<std::uint64_t>(bytes));
    }
}

ExtraDimension readDescriptor(const RawFile& file, const std::uint8_t* b) {
    const std::uint8_t type = b[2];
    const std::uint8_t options = b[3];
    ExtraDimension dimension;
    dimension.name = getText(b + 4, 32);
    dimension.description = getText(b + 160, 32);
    if (type > 30) {
        file.fail("the extra bytes \"" + dimension.name + "\" have the data type " +
                  std::to_string(type) + "; 0 to 30 are known");
    }
    if (type == 0) {  // raw bytes, as many as the options say
        dimension.length = options;
        return dimension;
    }
    dimension.type = static_cast<DataType>((type - 1) % 10 + 1);
    dimension.length = static_cast<std::uint32_t>((type - 1) / 10 + 1);
    dimension.hasNoData = (options & hasNoData) != 0;
    dimension.noData = anyType(b + 40, dimension.type);
    for (std::size_t i = 0; i < 3; ++i) {
        if (options & hasScale) {
            dimension.scale[i] = get<double>(b + 112 + 8 * i);
        }
        if (options & hasOffset) {
            dimension.shift[i] = get<double>(b + 136 + 8 * i);
        }
    }
    for (std::size_t i = 0; i < dimension.length; ++i) {
        if (!std::isfinite(dimension.scale[i]) || dimension.scale[i] == 0 ||
            !std::isfinite(dimension.shift[i])) {
            file.fail("the extra bytes \"" + dimension.name + "\" have the scale " +
                      numbers::numberText(dimension.scale[i]) + " and the offset " +
                      numbers::numberText(dimension.shift[i]));
        }
        dimension.scaled |= dimension.scale[i] != 1 || dimension.shift[i] != 0;
    }
    return dimension;
}

}  // namespace

std::vector<ExtraDimension> extraDimensions(const RawFile& file, const Header& header,
                                            const std::vector<Record>& records) {
    std::vector<ExtraDimension> dimensions;
    std::uint32_t position = pointSize(header.pointFormat);
    for (const Record& record : records) {
        if (record.userId != "LASF_Spec" || record.recordId != 4) {
            continue;
        }
        if (record.length % descriptorSize != 0 || record.data.size() != record.length) {
            file.fail("the extra bytes record has a length of " + std::to_string(record.length) +
                      ", which is not a multiple of 192");
        }
        for (std::size_t at = 0; at < record.data.size(); at += descriptorSize) {
            ExtraDimension dimension = readDescriptor(file, record.data.data() + at);
            const std::size_t bytes = dataTypeSize(dimension.type) * dimension.length;
            if (bytes > static_cast<std::size_t>(header.recordLength) - position) {
                file.fail("the extra bytes \"" + dimension.name + "\" take " +
                          std::to_string(bytes) + " bytes from byte " + std::to_string(position) +
                          " of a point, but the point data record length is " +
                          std::to_string(header.recordLength));
            }
            dimension.offset = position;
            position += static_cast<std::uint32_t>(bytes);
            if (bytes != 0) {
                dimensions.push_back(std::move(dimension));
            }
        }
    }
    if (position < header.recordLength) {
        ExtraDimension rest;
        rest.description = "Bytes of the point record that the file does not describe";
        rest.offset = position;
        rest.length = header.recordLength - position;
        dimensions.push_back(rest);
    }
    return dimensions;
}

}  // namespace tarvo::exchange::las
