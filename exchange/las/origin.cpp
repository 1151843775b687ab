#include "exchange/las/origin.h"

#include "exchange/las/crs.h"
#include "exchange/table/names.h"

#include <chrono>
#include <cstdio>

namespace tarvo::exchange::las {

namespace {

// ISO 8601; empty where the header has none.
std::string creationDate(const Header& header) {
    using namespace std::chrono;
    const year inYear{header.creationYear};
    if (header.creationYear == 0 || header.creationYear > 9999 || header.creationDay == 0 ||
        header.creationDay > (inYear.is_leap() ? 366 : 365)) {
        return {};
    }
    const year_month_day date{sys_days{inYear / January / 1} + days{header.creationDay - 1}};
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return text;
}

bool hasTime(int pointFormat) {
    return pointFormat == 1 || pointFormat >= 3;
}

}  // namespace

Origin originOf(const Header& header, const std::vector<Record>& records) {
    Origin origin;
    origin.system = referenceSystem(header, records);
    if (header.guid.find_first_not_of("0-") != std::string::npos) {
        origin.project = header.guid;
    }
    for (const auto& [label, text] :
         {std::pair{"System identifier: ", validUtf8(header.systemIdentifier)},
          {"Generating software: ", validUtf8(header.generatingSoftware)},
          {"Created: ", creationDate(header)}}) {
        if (!text.empty()) {
            origin.comments += (origin.comments.empty() ? "" : "\n") + std::string(label) + text;
        }
    }
    if (hasTime(header.pointFormat)) {
        // The other choice is seconds of a week that the header doesn't tell.
        const bool isStandard = (header.globalEncoding & standardTime) != 0;
        origin.timeBase = {isStandard ? standardEpoch : "unknown", "GPS"};
    }
    return origin;
}

}  // namespace tarvo::exchange::las
