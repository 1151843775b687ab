#include "exchange/las/crs.h"

#include "exchange/las/bytes.h"
#include "exchange/las/geokeys.h"
#include "exchange/las/wkt.h"

namespace tarvo::exchange::las {

namespace {

constexpr std::uint16_t wktCounts = 1 << 4;  // of the global encoding

std::span<const std::uint8_t> dataOf(const std::vector<Record>& records, std::uint16_t id) {
    for (const Record& record : records) {
        if (isCrs(record) && record.recordId == id && !record.data.empty()) {
            return record.data;
        }
    }
    return {};
}

}  // namespace

bool isCrs(const Record& record) {
    return record.userId == "LASF_Projection";
}

std::optional<core::ReferenceSystem> referenceSystem(const Header& header,
                                                     const std::vector<Record>& records) {
    const std::span<const std::uint8_t> text = dataOf(records, 2112);
    auto byText = text.empty() ? std::nullopt : systemOfWkt(getText(text.data(), text.size()));
    auto byKeys =
        systemOfKeys(dataOf(records, 34735), dataOf(records, 34736), dataOf(records, 34737));
    if (!byKeys || (byText && (header.globalEncoding & wktCounts) != 0)) {
        return byText;
    }
    // Keys of a system without a code mean nothing to most programs.
    if (byText && byKeys->code.empty() && byText->horizontalUnit == byKeys->horizontalUnit) {
        byKeys->wkt = std::move(byText->wkt);
    }
    return byKeys;
}

}  // namespace tarvo::exchange::las
