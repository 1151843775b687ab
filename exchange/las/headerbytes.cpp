#include "exchange/las/headerbytes.h"

#include "exchange/bytes.h"
#include "exchange/las/texts.h"

#include <algorithm>

namespace tarvo::exchange::las {

void PointTotals::add(const FileDescription& file, const std::uint8_t* records, std::size_t count) {
    const std::uint8_t returnMask = file.pointFormat < 6 ? 7 : 15;
    for (std::size_t i = 0; i < count; ++i, records += file.recordLength) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            const auto value = get<std::int32_t>(records + 4 * axis);
            const bool isFirst = points == 0 && i == 0;
            least[axis] = isFirst ? value : std::min(least[axis], value);
            greatest[axis] = isFirst ? value : std::max(greatest[axis], value);
        }
        // Points without a number are in no count by return.
        if (const unsigned number = records[14] & returnMask) {
            ++byReturn[number - 1];
        }
    }
    points += count;
}

std::vector<std::uint8_t> headerBytes(const FileDescription& file, const PointTotals& totals,
                                      const FilePlaces& places) {
    std::vector<std::uint8_t> bytes(writtenHeaderSize);
    std::uint8_t* const b = bytes.data();
    std::memcpy(b, "LASF", 4);
    put(b + 4, file.fileSourceId);
    put(b + 6, file.globalEncoding);
    std::copy(file.guid.begin(), file.guid.end(), b + 8);
    b[24] = 1;
    b[25] = 4;
    putText(b + 26, 32, file.systemIdentifier);
    putText(b + 58, 32, file.generatingSoftware);
    put(b + 90, file.creationDay);
    put(b + 92, file.creationYear);
    put(b + 94, static_cast<std::uint16_t>(writtenHeaderSize));
    put(b + 96, places.points);
    put(b + 100, places.plainRecords);
    b[104] = static_cast<std::uint8_t>(file.pointFormat | (file.compress ? 0x80 : 0));
    put(b + 105, file.recordLength);
    // The fields of earlier versions, for their formats and numbers.
    if (file.pointFormat < 6 && totals.points <= UINT32_MAX) {
        put(b + 107, static_cast<std::uint32_t>(totals.points));
        for (std::size_t i = 0; i < 5; ++i) {
            put(b + 111 + 4 * i, static_cast<std::uint32_t>(totals.byReturn[i]));
        }
    }
    for (std::size_t i = 0; i < 3; ++i) {
        put(b + 131 + 8 * i, file.scale[i]);
        put(b + 155 + 8 * i, file.offset[i]);
        if (totals.points != 0) {
            const double first = totals.least[i] * file.scale[i] + file.offset[i];
            const double last = totals.greatest[i] * file.scale[i] + file.offset[i];
            put(b + 179 + 16 * i, std::max(first, last));
            put(b + 187 + 16 * i, std::min(first, last));
        }
    }
    put(b + 235, places.extendedRecords ? places.firstExtended : std::uint64_t{0});
    put(b + 243, places.extendedRecords);
    put(b + 247, totals.points);
    for (std::size_t i = 0; i < totals.byReturn.size(); ++i) {
        put(b + 255 + 8 * i, totals.byReturn[i]);
    }
    return bytes;
}

std::vector<std::uint8_t> recordBytes(const Record& record, bool extended) {
    std::vector<std::uint8_t> bytes(extended ? 60 : 54);
    std::uint8_t* const b = bytes.data();
    putText(b + 2, 16, record.userId);
    put(b + 18, record.recordId);
    if (extended) {
        put(b + 20, static_cast<std::uint64_t>(record.data.size()));
    } else {
        put(b + 20, static_cast<std::uint16_t>(record.data.size()));
    }
    putText(b + (extended ? 28 : 22), 32, record.description);
    bytes.insert(bytes.end(), record.data.begin(), record.data.end());
    return bytes;
}

}  // namespace tarvo::exchange::las
