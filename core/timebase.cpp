#include "core/timebase.h"

#include "core/itemobject.h"

#include <algorithm>
#include <iterator>

namespace tarvo::core {

namespace {

constexpr const char* timeBaseItem = "tarvo.time_base";
constexpr const char* timeBaseMembers[] = {"epoch", "timescale", "source"};
constexpr const char* unknownWord = "unknown";

std::string orUnknown(std::string text) {
    return text.empty() ? unknownWord : text;
}

}  // namespace

std::string describe(const TimeBase& base) {
    return (base.timescale == unknownWord ? "time" : base.timescale + " time") +
           (base.epoch == unknownWord ? " of an unknown epoch" : " since " + base.epoch);
}

std::string describeBoth(const TimeBase& a, const TimeBase& b) {
    return "\"" + describe(a) + "\" and \"" + describe(b) + "\"";
}

bool isSame(const TimeBase& a, const TimeBase& b) {
    return a.epoch == b.epoch &&
           (a.timescale == b.timescale || a.timescale == unknownWord || b.timescale == unknownWord);
}

std::optional<TimeBase> timeBase(const qrb::pointcloud::MetaData& metaData) {
    const rapidjson::Document item = readItem(metaData, timeBaseItem);
    const TimeBase base{orUnknown(textMember(item, timeBaseMembers[0])),
                        orUnknown(textMember(item, timeBaseMembers[1]))};
    const bool tellsAny = base.epoch != unknownWord || base.timescale != unknownWord;
    return tellsAny ? std::optional(base) : std::nullopt;
}

bool setTimeBase(qrb::pointcloud::MetaData& metaData, const TimeBase& base) {
    const rapidjson::Document before = readItem(metaData, timeBaseItem);
    const auto members = std::ranges::count_if(
        timeBaseMembers, [&](const char* name) { return before.HasMember(name); });
    if (before.MemberCount() > static_cast<std::size_t>(members) ||
        isSigned(metaData, timeBaseItem)) {
        return false;
    }
    const std::string texts[] = {base.epoch, base.timescale,
                                 orUnknown(textMember(before, timeBaseMembers[2]))};
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
    writer.StartObject();
    for (std::size_t i = 0; i < std::size(timeBaseMembers); ++i) {
        writer.Key(timeBaseMembers[i]);
        writer.String(texts[i].data(), static_cast<rapidjson::SizeType>(texts[i].size()));
    }
    writer.EndObject();
    metaData.set(timeBaseItem, {buffer.GetString(), buffer.GetSize()});
    return true;
}

}  // namespace tarvo::core
