#include "exchange/las/crsrecords.h"

#include "catalogue/jsonmemory.h"
#include "exchange/bytes.h"
#include "exchange/las/crs.h"
#include "exchange/las/geokeys.h"

#include <charconv>
#include <optional>

namespace tarvo::exchange::las {

namespace {

using Bytes = std::vector<std::uint8_t>;

Record crsRecord(std::uint16_t id, const char* description, Bytes data) {
    Record result;
    result.userId = "LASF_Projection";
    result.recordId = id;
    result.description = description;
    result.length = data.size();
    result.data = std::move(data);
    return result;
}

template <typename T>
void append(Bytes& bytes, T value) {
    bytes.resize(bytes.size() + sizeof value);
    put(bytes.data() + bytes.size() - sizeof value, value);
}

Record textRecord(const std::string& wkt) {
    Bytes data(wkt.begin(), wkt.end());
    data.push_back(0);
    return crsRecord(textId, "OGC WKT", std::move(data));
}

// The three records of an item, the last two empty where it has none.
struct GeoTiff {
    Bytes directory;
    Bytes doubles;
    Bytes ascii;

    std::vector<Record> records() const {
        std::vector<Record> all = {crsRecord(directoryId, "GeoTIFF keys", directory)};
        if (!doubles.empty()) {
            all.push_back(crsRecord(doublesId, "GeoTIFF numbers", doubles));
        }
        if (!ascii.empty()) {
            all.push_back(crsRecord(asciiId, "GeoTIFF texts", ascii));
        }
        return all;
    }
};

std::optional<GeoTiff> geoTiffOf(const std::string& json) {
    rapidjson::Document document;
    if (document
            .Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag>(json.data(),
                                                                                        json.size())
            .HasParseError() ||
        !document.IsObject()) {
        return std::nullopt;
    }
    GeoTiff keys;
    for (const auto& member : document.GetObject()) {
        const std::string name = member.name.GetString();
        if (name == "directory" && member.value.IsArray()) {
            for (const rapidjson::Value& word : member.value.GetArray()) {
                if (!word.IsUint() || word.GetUint() > UINT16_MAX) {
                    return std::nullopt;
                }
                append(keys.directory, static_cast<std::uint16_t>(word.GetUint()));
            }
        } else if (name == "doubles" && member.value.IsArray()) {
            for (const rapidjson::Value& number : member.value.GetArray()) {
                if (!number.IsNumber()) {
                    return std::nullopt;
                }
                append(keys.doubles, number.GetDouble());
            }
        } else if (name == "ascii" && member.value.IsString()) {
            const char* const text = member.value.GetString();
            keys.ascii.assign(text, text + member.value.GetStringLength());
            keys.ascii.push_back(0);
        }
    }
    return keys.directory.empty() ? std::nullopt : std::optional(std::move(keys));
}

std::optional<std::uint16_t> epsgCode(std::string_view text) {
    std::uint16_t code = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), code);
    return error != std::errc() || end != text.data() + text.size() ? std::nullopt
                                                                    : std::optional(code);
}

// "EPSG:25832" or "EPSG:25832+7837" as keys: model type, system, heights.
std::optional<GeoTiff> keysOfCode(const core::ReferenceSystem& system) {
    constexpr std::string_view prefix = "EPSG:";
    if (!system.code.starts_with(prefix)) {
        return std::nullopt;
    }
    const std::string_view code = std::string_view(system.code).substr(prefix.size());
    const std::size_t plus = code.find('+');
    const auto plane = epsgCode(code.substr(0, plus));
    const auto height = plus == std::string_view::npos ? std::optional<std::uint16_t>()
                                                       : epsgCode(code.substr(plus + 1));
    if (!plane || (plus != std::string_view::npos && !height)) {
        return std::nullopt;
    }
    const bool isGeographic = system.horizontalUnit == "deg";
    GeoTiff keys;
    const auto key = [&](std::uint16_t id, std::uint16_t value) {
        for (const std::uint16_t word : {id, std::uint16_t{0}, std::uint16_t{1}, value}) {
            append(keys.directory, word);
        }
    };
    for (const std::uint16_t word : {1, 1, 0, height ? 3 : 2}) {
        append(keys.directory, word);
    }
    key(1024, isGeographic ? 2 : 1);
    key(isGeographic ? 2048 : 3072, *plane);
    if (height) {
        key(4096, *height);
    }
    return keys;
}

bool meansSystem(const GeoTiff& keys, const core::ReferenceSystem& system) {
    const auto told = systemOfKeys(keys.directory, keys.doubles, keys.ascii);
    return told && core::isSame(*told, system);
}

}  // namespace

CrsRecords crsRecords(const core::ReferenceSystem& system,
                      const std::vector<std::pair<std::string, std::string>>& items) {
    if (!system.wkt.empty()) {
        return {{textRecord(system.wkt)}, true, {}};
    }
    for (const auto& [name, value] : items) {
        if (!name.starts_with("las.crs.geotiff")) {
            continue;
        }
        if (const auto keys = geoTiffOf(value); keys && meansSystem(*keys, system)) {
            return {keys->records(), false, {}};
        }
    }
    if (const auto keys = keysOfCode(system); keys && meansSystem(*keys, system)) {
        return {keys->records(), false, {}};
    }
    return {{}, false, core::describe(system)};
}

}  // namespace tarvo::exchange::las
