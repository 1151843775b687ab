#include "exchange/las/geokeys.h"

#include "exchange/bytes.h"
#include "exchange/las/texts.h"
#include "exchange/las/units.h"
#include "numbers/numbertext.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>

namespace tarvo::exchange::las {

namespace {

// Names as in the GeoTIFF standard.
enum KeyId : std::uint16_t {
    NoKey = 0,
    ModelType = 1024,
    RasterType = 1025,
    Citation = 1026,
    GeographicType = 2048,
    GeogCitation = 2049,
    GeogLinearUnits = 2052,
    GeogLinearUnitSize = 2053,
    GeogAngularUnits = 2054,
    GeogAngularUnitSize = 2055,
    ProjectedType = 3072,
    ProjCitation = 3073,
    ProjLinearUnits = 3076,
    ProjLinearUnitSize = 3077,
    VerticalType = 4096,
    VerticalCitation = 4097,
    VerticalUnits = 4099,
};
enum Model : int { Projected = 1, Geographic = 2, Geocentric = 3 };

constexpr int userDefined = 32767;
constexpr std::size_t longestKeyName = 200;
// More than any system needs; records may claim to hold billions.
constexpr std::size_t mostKeys = 256;
constexpr std::size_t mostNumbers = 64;
constexpr std::size_t longestKeyText = 4096;

struct Key {
    int code = -1;  // of keys that are one whole number
    std::vector<double> numbers;
    std::string text;
};

struct Keys {
    std::map<std::uint16_t, Key> known;
    std::string unread;  // in words; empty: all was read
};

std::string keyWords(std::uint16_t id) {
    return "GeoTIFF key " + std::to_string(id);
}

Keys readKeys(std::span<const std::uint8_t> directory, std::span<const std::uint8_t> doubles,
              std::span<const std::uint8_t> ascii) {
    const auto word = [&](std::size_t i) { return get<std::uint16_t>(directory.data() + 2 * i); };
    const std::size_t words = directory.size() / 2;
    Keys keys;
    if (words < 4) {
        keys.unread =
            directory.empty() ? "" : "the directory of the GeoTIFF keys, which is cut off";
        return keys;
    }
    const std::size_t count = std::min({std::size_t{word(3)}, words / 4 - 1, mostKeys});
    if (count < word(3)) {
        keys.unread = "GeoTIFF keys from number " + std::to_string(count + 1) + " on";
    }
    for (std::size_t i = 1; i <= count; ++i) {
        const std::uint16_t id = word(4 * i);
        const std::uint16_t place = word(4 * i + 1);
        const std::size_t length = word(4 * i + 2);
        const std::size_t value = word(4 * i + 3);
        if (id == 0) {
            continue;
        }
        Key key;
        if (place == 0) {
            key.code = static_cast<int>(value);
        } else if (place == 34735 && length == 1 && value < words) {
            key.code = word(value);
        } else if (place == 34736 && length <= mostNumbers &&
                   value + length <= doubles.size() / 8) {
            for (std::size_t k = 0; k < length; ++k) {
                key.numbers.push_back(get<double>(doubles.data() + 8 * (value + k)));
            }
        } else if (place == 34737 && value <= ascii.size()) {
            const std::size_t end =
                std::min(ascii.size(), value + std::min(length, longestKeyText));
            key.text = getText(ascii.data() + value, end - value);
            while (key.text.ends_with('|')) {
                key.text.pop_back();
            }
        } else {
            noteUnread(keys.unread, keyWords(id) + ", which stands nowhere");
            continue;
        }
        keys.known.emplace(id, std::move(key));
    }
    return keys;
}

// What stands for nothing: codes 0, and the word that writers put for a name they don't know.
bool tellsNothing(const Key& key) {
    return key.code == 0 ||
           (key.code < 0 && key.numbers.empty() && (key.text.empty() || key.text == "unknown"));
}

// Heights above mean sea level had numbers of their own before the register's were taken, and one
// register number per unit since then.
int verticalCode(int code, int unit) {
    constexpr int navd88 = 5703;
    if (code >= 5101 && code <= 5106) {
        code += 600;
    }
    return code != navd88 ? code : unit == 9003 ? 6360 : unit == 9002 ? 8228 : navd88;
}

// Units of systems that files seldom tell besides their codes.
std::string unitOfSystem(int code) {
    struct Range {
        int first;
        int last;
        const char* unit;
    };
    static constexpr Range ranges[] = {
        {32601, 32660, "m"},  {32701, 32760, "m"},  {25828, 25838, "m"}, {26901, 26923, "m"},
        {3857, 3857, "m"},    {4978, 4978, "m"},    {4326, 4326, "deg"}, {4258, 4258, "deg"},
        {4267, 4267, "deg"},  {4269, 4269, "deg"},  {5701, 5701, "m"},   {5703, 5703, "m"},
        {5773, 5773, "m"},    {3855, 3855, "m"},    {5783, 5783, "m"},   {7837, 7837, "m"},
        {6360, 6360, "ftUS"}, {5702, 5702, "ftUS"}, {8228, 8228, "ft"},
    };
    for (const Range& range : ranges) {
        if (code >= range.first && code <= range.last) {
            return range.unit;
        }
    }
    return {};
}

class KeyReader {
public:
    explicit KeyReader(Keys keys)
        : m_keys(std::move(keys.known)), m_unread(std::move(keys.unread)) {}

    std::optional<core::ReferenceSystem> run() {
        core::ReferenceSystem system;
        const int model = modelType();
        int horizontal = systemCode(model == Projected ? ProjectedType : GeographicType);
        if (model == Geocentric && unitOfSystem(horizontal) == "deg") {
            // That of the latitudes and longitudes which the coordinates are not.
            noteUnread(m_unread, "the geographic system " + std::to_string(horizontal) +
                                     " for geocentric coordinates");
            horizontal = 0;
        }
        system.name = name({model == Projected ? ProjCitation : GeogCitation, Citation});
        std::optional<std::string> told;
        if (model == Projected) {
            told = unit(ProjLinearUnits, ProjLinearUnitSize, false);
        } else if (model == Geographic) {
            told = unit(GeogAngularUnits, GeogAngularUnitSize, true);
        } else if (model == Geocentric) {
            told = unit(GeogLinearUnits, GeogLinearUnitSize, false);
            system.verticalUnit = told.value_or("");
        }
        system.horizontalUnit = told ? *told : unitOfSystem(horizontal);
        if (const auto heights = unit(VerticalUnits, NoKey, false)) {
            system.verticalUnit = *heights;
        }
        if (horizontal != 0) {
            system.code = "EPSG:" + std::to_string(horizontal);
            system.epsg = static_cast<std::uint32_t>(horizontal);
        }
        if (code(VerticalType) > 0) {
            addVertical(system, verticalCode(systemCode(VerticalType), code(VerticalUnits)));
        }
        system.keys = normalForm();
        if (system.keys.empty() && m_unread.empty()) {
            return std::nullopt;
        }
        if (system.name.empty() && system.code.empty() && system.horizontalUnit.empty() &&
            system.verticalUnit.empty()) {
            noteUnread(m_unread, "GeoTIFF keys that name neither a system nor a unit");
        }
        system.unread = std::move(m_unread);
        return system;
    }

private:
    // -1: there is no such key.
    int code(std::uint16_t id) const {
        const auto found = m_keys.find(id);
        return found == m_keys.end() ? -1 : found->second.code;
    }
    // Within the numbers that stand for those of the register; 0: none.
    int systemCode(std::uint16_t id) {
        const int value = code(id);
        if (value >= 1024 && value < userDefined) {
            return value;
        }
        if (value > 0 && value != userDefined) {
            noteUnread(m_unread, "the code " + std::to_string(value) + " of " + keyWords(id));
        }
        return 0;
    }
    int modelType() const {
        const int told = code(ModelType);
        if (told >= Projected && told <= Geocentric) {
            return told;
        }
        return code(ProjectedType) > 0 ? Projected : code(GeographicType) > 0 ? Geographic : 0;
    }
    // Nothing where none is told, empty where it can't be understood. sizeKey: tells the factor of
    // a unit without a code; NoKey: nothing does.
    std::optional<std::string> unit(KeyId unitKey, KeyId sizeKey, bool isAngle) {
        const int told = code(unitKey);
        std::string symbol = isAngle ? angleUnitOfCode(told) : lengthUnitOfCode(told);
        const auto size = m_keys.find(sizeKey);
        const bool hasSize = size != m_keys.end() && !size->second.numbers.empty();
        if (symbol.empty() && hasSize) {
            const double factor = size->second.numbers.front();
            symbol = isAngle ? angleUnit(factor, "") : lengthUnit(factor, "");
        }
        if (told <= 0 && !hasSize) {
            return std::nullopt;
        }
        if (symbol.empty()) {
            noteUnread(
                m_unread,
                "the unit " +
                    (hasSize ? "of the size " + numbers::numberText(size->second.numbers.front())
                             : "with the code " + std::to_string(told)) +
                    " (" + keyWords(hasSize ? sizeKey : unitKey) + ")");
        }
        return symbol;
    }
    // The first of the citations that says one. Some writers keep several names in it:
    // "PCS Name = X|Datum = Y|".
    std::string name(std::initializer_list<std::uint16_t> ids) const {
        for (const std::uint16_t id : ids) {
            const auto found = m_keys.find(id);
            if (found == m_keys.end() || tellsNothing(found->second)) {
                continue;
            }
            std::string_view text = found->second.text;
            for (const std::string_view label : {"PCS Name = ", "GCS Name = "}) {
                if (text.starts_with(label)) {
                    text.remove_prefix(label.size());
                }
            }
            return shortText(text.substr(0, text.find('|')), longestKeyName);
        }
        return {};
    }
    void addVertical(core::ReferenceSystem& system, int vertical) const {
        // Below are ellipsoids and datums, which the register has no such systems for.
        const bool isKnown = vertical >= 1024 && !(vertical >= 5001 && vertical <= 5099);
        system.code = isKnown && !system.code.empty() ? system.code + "+" + std::to_string(vertical)
                                                      : std::string();
        system.epsg = 0;
        if (system.verticalUnit.empty() && code(VerticalUnits) <= 0) {
            system.verticalUnit = unitOfSystem(vertical);
        }
        const std::string words = name({VerticalCitation});
        if (!words.empty() && !system.name.empty()) {
            system.name += " + " + words;
        }
    }
    // Empty where none of the keys tells a system.
    std::string normalForm() const {
        std::string result;
        bool tellsAny = false;
        for (const auto& [id, key] : m_keys) {
            if (tellsNothing(key)) {
                continue;
            }
            tellsAny |= id != ModelType && id != RasterType;
            result += (result.empty() ? "" : " ") + std::to_string(id) + "=";
            if (key.code >= 0) {
                result += std::to_string(key.code);
            }
            for (std::size_t i = 0; i < key.numbers.size(); ++i) {
                result += (i == 0 ? "" : ",") + numbers::numberText(key.numbers[i]);
            }
            if (!key.text.empty()) {
                result += "\"" + shortText(key.text, longestKeyName) + "\"";
            }
        }
        return tellsAny ? result : std::string();
    }

    std::map<std::uint16_t, Key> m_keys;
    std::string m_unread;
};

}  // namespace

std::optional<core::ReferenceSystem> systemOfKeys(std::span<const std::uint8_t> directory,
                                                  std::span<const std::uint8_t> doubles,
                                                  std::span<const std::uint8_t> ascii) {
    return KeyReader(readKeys(directory, doubles, ascii)).run();
}

}  // namespace tarvo::exchange::las
