#include "core/areatext.h"

#include "catalogue/jsonmemory.h"
#include "core/error.h"

#include <rapidjson/error/en.h>

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

namespace tarvo::core {

namespace {

constexpr const char* forms =
    "An area is a POLYGON or MULTIPOLYGON in well-known text, such as POLYGON ((0 0, 9 0, 9 9, 0 "
    "0)), or a Polygon, MultiPolygon, Feature or FeatureCollection in GeoJSON.";
constexpr std::size_t mostCorners = 1'000'000;
constexpr std::size_t mostBytes = 64 << 20;
// Of what stands at a fault.
constexpr std::size_t shownBytes = 20;

// Where a text is wrong, to be told with its name.
class AreaFault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The polygons as they are read.
class Collected {
public:
    void beginPolygon() { m_polygons.emplace_back(); }
    void beginRing() { m_polygons.back().emplace_back(); }
    void add(double x, double y) {
        // Products of two coordinates must stay numbers.
        if (!(std::abs(x) <= 1e150 && std::abs(y) <= 1e150))
            throw AreaFault("a corner lies farther than 1e150 from 0");
        if (++m_corners > mostCorners)
            throw AreaFault("there are more than " + std::to_string(mostCorners) + " corners");
        m_polygons.back().back().push_back({x, y});
    }
    void endRing() {
        Ring& ring = m_polygons.back().back();
        if (ring.size() > 1 && ring.front().x == ring.back().x && ring.front().y == ring.back().y)
            ring.pop_back();
        if (ring.size() < 3)
            throw AreaFault("ring " + std::to_string(m_polygons.back().size()) + " of polygon " +
                            std::to_string(m_polygons.size()) + " has fewer than 3 corners");
    }
    Area area() const {
        if (m_corners == 0)
            throw AreaFault("there is no polygon in it");
        return Area(m_polygons);
    }

private:
    std::vector<Polygon> m_polygons;
    std::size_t m_corners = 0;
};

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

class WktReader {
public:
    explicit WktReader(std::string_view text) : m_text(text) {}

    Area read() {
        std::string name = word();
        // "POLYGONZ" is written, too.
        for (const char* const plain : {"POLYGON", "MULTIPOLYGON"})
            for (const char* const kind : {"Z", "M", "ZM"})
                if (name == std::string(plain) + kind)
                    name = plain;
        if (name != "POLYGON" && name != "MULTIPOLYGON")
            throw AreaFault(name.empty() ? "it begins with neither POLYGON nor MULTIPOLYGON"
                                         : "it is a " + name + ", not a polygon");
        const std::string kind = word();
        if (!kind.empty() && kind != "Z" && kind != "M" && kind != "ZM")
            throw AreaFault(kind == "EMPTY" ? "there is no polygon in it"
                                            : "\"" + kind + "\" stands behind " + name);
        if (name == "POLYGON")
            polygon();
        else
            list([this] { polygon(); });
        if (m_at < m_text.size())
            expect("the end");
        return m_collected.area();
    }

private:
    void skipBlanks() {
        while (m_at < m_text.size() && isBlank(m_text[m_at]))
            ++m_at;
    }
    std::string word() {
        skipBlanks();
        std::string found;
        for (; m_at < m_text.size(); ++m_at) {
            const char c = m_text[m_at];
            if (c >= 'a' && c <= 'z')
                found += static_cast<char>(c - 'a' + 'A');
            else if (c >= 'A' && c <= 'Z')
                found += c;
            else
                break;
        }
        skipBlanks();
        return found;
    }
    [[noreturn]] void expect(const std::string& what) const {
        throw AreaFault(what + " is expected at byte " + std::to_string(m_at + 1) +
                        (m_at < m_text.size()
                             ? ", not \"" + std::string(m_text.substr(m_at, shownBytes)) + "\""
                             : ", where the text ends"));
    }
    bool take(char c) {
        skipBlanks();
        if (m_at == m_text.size() || m_text[m_at] != c)
            return false;
        ++m_at;
        skipBlanks();
        return true;
    }
    template <typename Item>
    void list(const Item& item) {
        if (!take('('))
            expect("\"(\"");
        do
            item();
        while (take(','));
        if (!take(')'))
            expect("\",\" or \")\"");
    }
    bool number(double& value) {
        skipBlanks();
        const char* const begin = m_text.data() + m_at;
        const char* const end = m_text.data() + m_text.size();
        const bool hasPlus = begin != end && *begin == '+';
        const auto read = std::from_chars(begin + (hasPlus ? 1 : 0), end, value);
        if (read.ec != std::errc())
            return false;
        m_at = static_cast<std::size_t>(read.ptr - m_text.data());
        return true;
    }
    void corner() {
        double xy[2] = {};
        for (double& value : xy)
            if (!number(value))
                expect("a number");
        double other = 0;  // z and m
        for (int i = 0; i < 2 && number(other); ++i) {
        }
        m_collected.add(xy[0], xy[1]);
    }
    void polygon() {
        m_collected.beginPolygon();
        list([this] {
            m_collected.beginRing();
            list([this] { corner(); });
            m_collected.endRing();
        });
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    Collected m_collected;
};

const rapidjson::Value& member(const rapidjson::Value& object, const char* name) {
    static const rapidjson::Value null;
    const auto found = object.FindMember(name);
    return found == object.MemberEnd() ? null : found->value;
}

class GeoJsonReader {
public:
    Area read(const std::string& text) {
        rapidjson::Document document;
        document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag>(
            text.data(), text.size());
        if (document.HasParseError())
            throw AreaFault(std::string("it is no JSON: ") +
                            rapidjson::GetParseError_En(document.GetParseError()) + " At byte " +
                            std::to_string(document.GetErrorOffset() + 1));
        const std::string type = typeOf(document);
        if (type == "FeatureCollection") {
            for (const auto& each : array(member(document, "features"), "\"features\"")) {
                if (typeOf(each) != "Feature")
                    throw AreaFault("one of its \"features\" is none");
                feature(each);
            }
        } else if (type == "Feature") {
            feature(document);
        } else {
            geometry(document);
        }
        return m_collected.area();
    }

private:
    static std::string typeOf(const rapidjson::Value& value) {
        if (!value.IsObject() || !member(value, "type").IsString())
            throw AreaFault("an object lacks its \"type\"");
        return member(value, "type").GetString();
    }
    static rapidjson::Value::ConstArray array(const rapidjson::Value& value,
                                              const std::string& what) {
        if (!value.IsArray())
            throw AreaFault(what + " is no array");
        return value.GetArray();
    }
    void feature(const rapidjson::Value& value) {
        // A feature without a place has null there.
        if (const auto& own = member(value, "geometry"); !own.IsNull())
            geometry(own);
    }
    void geometry(const rapidjson::Value& value) {
        const std::string type = typeOf(value);
        const auto& coordinates = member(value, "coordinates");
        if (type == "Polygon") {
            polygon(coordinates);
        } else if (type == "MultiPolygon") {
            for (const auto& each : array(coordinates, "\"coordinates\""))
                polygon(each);
        } else {
            throw AreaFault("it holds a \"" + type.substr(0, shownBytes) + "\", not a polygon");
        }
    }
    void polygon(const rapidjson::Value& value) {
        m_collected.beginPolygon();
        for (const auto& ring : array(value, "a polygon of \"coordinates\"")) {
            m_collected.beginRing();
            for (const auto& corner : array(ring, "a ring")) {
                const auto numbers = array(corner, "a corner");
                if (numbers.Size() < 2 || !numbers[0].IsNumber() || !numbers[1].IsNumber())
                    throw AreaFault("a corner has no two numbers");
                m_collected.add(numbers[0].GetDouble(), numbers[1].GetDouble());
            }
            m_collected.endRing();
        }
    }

    Collected m_collected;
};

char firstOf(const std::string& text) {
    const std::size_t at = text.find_first_not_of(" \t\r\n");
    return at == std::string::npos ? '\0' : text[at];
}

}  // namespace

bool looksLikeArea(const std::string& text) {
    return firstOf(text) == '{' || text.find('(') != std::string::npos;
}

Area areaFromText(const std::string& text, const std::string& shown) {
    if (text.size() > mostBytes)
        throw Failure("The area in " + shown + " is too large.",
                      "At most " + std::to_string(mostBytes) + " bytes are read.");
    try {
        return firstOf(text) == '{' ? GeoJsonReader().read(text) : WktReader(text).read();
    } catch (const AreaFault& fault) {
        throw Failure("The area in " + shown + " can't be read: " + fault.what() + ".", forms);
    }
}

}  // namespace tarvo::core
