#include "exchange/las/crs.h"

#include "exchange/las/geokeys.h"
#include "exchange/las/texts.h"
#include "exchange/las/units.h"
#include "exchange/las/wkt.h"

#include <algorithm>
#include <span>

namespace tarvo::exchange::las {

namespace {

const Record* find(const std::vector<Record>& records, std::uint16_t id) {
    const auto found = std::find_if(records.begin(), records.end(), [id](const Record& record) {
        return isCrs(record) && record.recordId == id && record.length > 0;
    });
    return found == records.end() ? nullptr : &*found;
}

std::span<const std::uint8_t> dataOf(const Record* record) {
    return record == nullptr ? std::span<const std::uint8_t>() : record->data;
}

// What was too long to be kept.
std::optional<core::ReferenceSystem> unreadSystem(const char* words) {
    core::ReferenceSystem system;
    system.unread = words;
    return system;
}

std::optional<core::ReferenceSystem> systemByText(const Record* record) {
    auto data = dataOf(record);
    if (data.empty()) {
        return record ? unreadSystem("the well-known text, which is too long") : std::nullopt;
    }
    const auto begin =
        std::find_if(data.begin(), data.end(), [](std::uint8_t byte) { return byte != 0; });
    data = data.subspan(static_cast<std::size_t>(begin - data.begin()));
    return systemOfWkt(getText(data.data(), data.size()));
}

std::optional<core::ReferenceSystem> systemByKeys(const std::vector<Record>& records) {
    const Record* const directory = find(records, directoryId);
    if (directory != nullptr && directory->data.empty()) {
        return unreadSystem("the GeoTIFF keys, which are too long");
    }
    return systemOfKeys(dataOf(directory), dataOf(find(records, doublesId)),
                        dataOf(find(records, asciiId)));
}

bool tellsAny(const core::ReferenceSystem& system) {
    return !system.code.empty() || !system.horizontalUnit.empty() || !system.verticalUnit.empty();
}

}  // namespace

bool isCrs(const Record& record) {
    return record.userId == "LASF_Projection";
}

std::optional<core::ReferenceSystem> referenceSystem(const Header& header,
                                                     const std::vector<Record>& records) {
    auto byText = systemByText(find(records, textId));
    auto byKeys = systemByKeys(records);
    const bool textCounts = (header.globalEncoding & wktCounts) != 0;
    auto& counting = textCounts ? byText : byKeys;
    auto& other = textCounts ? byKeys : byText;
    if (!counting || !other) {
        return counting ? counting : other;
    }
    if (!counting->isUnderstood() && !tellsAny(*counting) && tellsAny(*other)) {
        // What the other one tells is told, but not that it is what counts.
        noteUnread(other->unread, counting->unread);
        other->wkt = byText->wkt;
        return other;
    }
    // Keys of a system without a code mean nothing to most programs.
    if (!textCounts && byKeys->code.empty() && byText->isUnderstood() &&
        byText->horizontalUnit == byKeys->horizontalUnit) {
        byKeys->wkt = std::move(byText->wkt);
    }
    return counting;
}

}  // namespace tarvo::exchange::las
