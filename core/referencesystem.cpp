#include "core/referencesystem.h"

#include "core/itemobject.h"
#include "core/utf8.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace tarvo::core {

namespace {

constexpr const char* itemName = "tarvo.geo_tag";
// What any writer keeps of a number.
constexpr int comparedDigits = 10;

// A well-known text without what its writers are free in: white space, brackets, letters outside of
// quotes, the last digits of numbers.
std::string normalised(std::string_view wkt) {
    std::string result;
    for (std::size_t at = 0; at < wkt.size();) {
        const char c = wkt[at];
        if (c == '"') {
            const std::size_t end = std::min(wkt.find('"', at + 1), wkt.size() - 1);
            result += wkt.substr(at, end + 1 - at);
            at = end + 1;
            continue;
        }
        const std::size_t sign = c == '+' ? 1 : 0;
        double number = 0;
        const auto read = std::from_chars(wkt.data() + at + sign, wkt.data() + wkt.size(), number);
        const bool begins = result.empty() || result.back() == ',' || result.back() == '[';
        if (begins && read.ec == std::errc() && (c < 'A' || c > 'z')) {
            char digits[32];
            const auto end = std::to_chars(digits, digits + sizeof digits, number,
                                           std::chars_format::general, comparedDigits);
            result.append(digits, end.ptr);
            at = static_cast<std::size_t>(read.ptr - wkt.data());
            continue;
        }
        if (c == '(' || c == ')') {
            result += c == '(' ? '[' : ']';
        } else if (c >= 'a' && c <= 'z') {
            result += static_cast<char>(c - 'a' + 'A');
        } else if (c != ' ' && c != '\t' && c != '\r' && c != '\n') {
            result += c;
        }
        ++at;
    }
    return result;
}

bool isAngle(const std::string& unit) {
    return unit == "deg" || unit == "rad" || unit == "gon" || unit == "arcmin" || unit == "arcsec";
}

// Heights in the unit of the map are what no file needs to tell, unless they have a system.
std::string heightUnit(const ReferenceSystem& system) {
    const bool asMap = system.verticalUnit.empty() && system.code.find('+') == std::string::npos &&
                       !isAngle(system.horizontalUnit);
    return asMap ? system.horizontalUnit : system.verticalUnit;
}

bool canAgree(const std::string& a, const std::string& b) {
    return a.empty() || b.empty() || a == b;
}

bool isToldAlike(const ReferenceSystem& a, const ReferenceSystem& b) {
    if (!a.wkt.empty() && !b.wkt.empty()) {
        return normalised(a.wkt) == normalised(b.wkt);
    }
    return !a.keys.empty() && a.keys == b.keys;
}

// What stands in the first pair of quotes; a quote within is written twice.
std::string firstName(const std::string& wkt) {
    std::string name;
    for (std::size_t at = wkt.find('"'); at < wkt.size() && ++at < wkt.size();) {
        const std::size_t end = std::min(wkt.find('"', at), wkt.size());
        name += wkt.substr(at, end - at);
        at = end + 1;
        if (at >= wkt.size() || wkt[at] != '"') {
            break;
        }
        name += '"';
    }
    return name;
}

}  // namespace

std::string describe(const ReferenceSystem& system) {
    std::string text = system.name + system.code;
    if (!system.name.empty() && !system.code.empty()) {
        text = system.name + " (" + system.code + ")";
    }
    if (!system.isUnderstood()) {
        return text.empty() ? "a system that was not understood"
                            : text + ", not understood in full";
    }
    return text.empty() ? "unnamed system" : text;
}

std::string describeBoth(const ReferenceSystem& a, const ReferenceSystem& b) {
    const bool needUnits = describe(a) == describe(b);
    const auto text = [&](const ReferenceSystem& system) {
        return "\"" + describe(system) + "\"" + (needUnits ? " " + describeUnits(system) : "");
    };
    return text(a) + " and " + text(b);
}

std::string describeUnits(const ReferenceSystem& system) {
    const auto words = [](const std::string& symbol) {
        return symbol.empty() ? std::string("in a unit that is not told") : "in " + symbol;
    };
    return hasOwnHeights(system)
               ? "X and Y " + words(system.horizontalUnit) + ", Z " + words(system.verticalUnit)
               : words(system.horizontalUnit);
}

bool hasOwnHeights(const ReferenceSystem& system) {
    if (!system.verticalUnit.empty() || system.horizontalUnit.empty()) {
        return system.verticalUnit != system.horizontalUnit;
    }
    // A unit of heights may be among what was not understood.
    return isAngle(system.horizontalUnit) || !system.isUnderstood();
}

bool isSame(const ReferenceSystem& a, const ReferenceSystem& b) {
    if (!a.isUnderstood() || !b.isUnderstood()) {
        return isToldAlike(a, b);
    }
    if (!canAgree(a.horizontalUnit, b.horizontalUnit) || !canAgree(heightUnit(a), heightUnit(b))) {
        return false;
    }
    if (!a.code.empty() && !b.code.empty()) {
        return a.code == b.code || (a.epsg != 0 && a.epsg == b.epsg);
    }
    return isToldAlike(a, b);
}

std::optional<ReferenceSystem> referenceSystem(const qrb::pointcloud::MetaData& metaData) {
    const rapidjson::Document item = readItem(metaData, itemName);
    const auto crs = item.FindMember("crs");
    if (crs == item.MemberEnd() || !crs->value.IsObject()) {
        return std::nullopt;
    }
    ReferenceSystem system;
    system.name = textMember(crs->value, "name");
    system.code = textMember(crs->value, "code");
    system.wkt = textMember(crs->value, "wkt");
    system.keys = textMember(crs->value, "geokeys");
    system.horizontalUnit = textMember(crs->value, "horizontal_unit");
    system.verticalUnit = textMember(crs->value, "vertical_unit");
    system.unread = textMember(crs->value, "not_understood");
    const auto epsg = crs->value.FindMember("epsg");
    if (epsg != crs->value.MemberEnd() && epsg->value.IsUint()) {
        system.epsg = epsg->value.GetUint();
    }
    if (system.code.empty() && system.epsg != 0) {
        system.code = "EPSG:" + std::to_string(system.epsg);
    }
    if (system.name.empty()) {
        system.name = firstName(system.wkt);
    }
    const bool tellsAny = !system.name.empty() || !system.code.empty() || !system.wkt.empty() ||
                          !system.keys.empty() || !system.isUnderstood();
    return tellsAny ? std::optional(system) : std::nullopt;
}

bool setReferenceSystem(qrb::pointcloud::MetaData& metaData, const ReferenceSystem& system) {
    const rapidjson::Document before = readItem(metaData, itemName);
    if (before.MemberCount() > (before.HasMember("crs") ? 1 : 0) || isSigned(metaData, itemName)) {
        return false;
    }
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
    const auto put = [&](const char* name, const std::string& text) {
        if (!text.empty()) {
            const std::string valid = validUtf8(text);
            writer.Key(name);
            writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
        }
    };
    writer.StartObject();
    writer.Key("crs");
    writer.StartObject();
    if (system.epsg != 0) {
        writer.Key("epsg");
        writer.Uint(system.epsg);
    }
    put("name", system.name);
    put("code", system.code == "EPSG:" + std::to_string(system.epsg) ? "" : system.code);
    put("wkt", system.wkt);
    put("geokeys", system.keys);
    put("horizontal_unit", system.horizontalUnit);
    put("vertical_unit", system.verticalUnit);
    put("not_understood", system.unread);
    writer.EndObject();
    writer.EndObject();
    metaData.set(itemName, {buffer.GetString(), buffer.GetSize()});
    return true;
}

}  // namespace tarvo::core
