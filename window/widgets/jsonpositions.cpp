#include "window/widgets/jsonpositions.h"

#include "window/common/messages.h"

#include "catalogue/jsonmemory.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>

#include <algorithm>
#include <map>
#include <memory>
#include <numeric>
#include <string>

namespace tarvo::window {

namespace {

constexpr unsigned readFlags =
    rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseIterativeFlag;

// The names and indices that the wanted pointers lead through.
struct Wanted {
    std::map<std::string, std::unique_ptr<Wanted>> below;
    Wanted* above = nullptr;
    bool found = false;
    std::size_t begin = 0;
    std::size_t end = 0;

    Wanted* child(const std::string& token) {
        auto& slot = below[token];
        if (!slot) {
            slot = std::make_unique<Wanted>();
            slot->above = this;
        }
        return slot.get();
    }
    Wanted* find(const std::string& token) const {
        const auto it = below.find(token);
        return it == below.end() ? nullptr : it->second.get();
    }
};

Wanted* leadTo(Wanted& root, const QString& pointer) {
    Wanted* place = &root;
    const QStringList tokens = pointer.split('/');
    for (qsizetype i = 1; i < tokens.size(); ++i)
        place =
            place->child(QString(tokens[i]).replace("~1", "/").replace("~0", "~").toStdString());
    return place;
}

// Notes where the wanted values stand while a reader goes through the text.
class PlaceFinder {
public:
    PlaceFinder(const std::string& text, const rapidjson::MemoryStream& stream, Wanted& root)
        : m_text(text), m_stream(stream), m_root(root) {}

    bool Null() { return scalar(); }
    bool Bool(bool) { return scalar(); }
    bool RawNumber(const char*, rapidjson::SizeType, bool) { return scalar(); }
    bool String(const char*, rapidjson::SizeType, bool) { return scalar(); }
    // Numbers come as they are written.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }
    bool Key(const char* name, rapidjson::SizeType length, bool) {
        Level& level = m_levels.back();
        level.member = level.place ? level.place->find(std::string(name, length)) : nullptr;
        m_last = m_stream.Tell();
        return true;
    }
    bool StartObject() { return start(false); }
    bool StartArray() { return start(true); }
    bool EndObject(rapidjson::SizeType) { return end(); }
    bool EndArray(rapidjson::SizeType) { return end(); }

private:
    struct Level {
        Wanted* place = nullptr;   // of the object or array; null: nobody asked for what is in it
        Wanted* member = nullptr;  // of the member whose value comes next
        bool isArray = false;
        std::size_t index = 0;
    };

    // The place of the value that begins, if it is wanted.
    Wanted* next() {
        if (m_levels.empty())
            return &m_root;
        Level& level = m_levels.back();
        if (!level.isArray)
            return level.member;
        const std::size_t index = level.index++;
        return level.place ? level.place->find(std::to_string(index)) : nullptr;
    }
    // Only blanks, commas and colons stand between the last token and the next.
    std::size_t beginOfToken() const {
        return std::min(m_text.find_first_not_of(" \t\r\n,:", m_last), m_text.size());
    }
    bool scalar() {
        if (Wanted* place = next())
            note(*place, beginOfToken(), m_stream.Tell());
        m_last = m_stream.Tell();
        return true;
    }
    // The reader tells brackets before it takes them.
    bool start(bool isArray) {
        Wanted* place = next();
        m_last = m_stream.Tell() + 1;
        if (place)
            note(*place, m_stream.Tell(), m_last);
        m_levels.push_back({place, nullptr, isArray, 0});
        return true;
    }
    bool end() {
        m_last = m_stream.Tell() + 1;
        if (Wanted* place = m_levels.back().place)
            place->end = m_last;
        m_levels.pop_back();
        return true;
    }
    // Of members with the same name the last one counts.
    static void note(Wanted& place, std::size_t begin, std::size_t end) {
        place.found = true;
        place.begin = begin;
        place.end = end;
    }

    const std::string& m_text;
    const rapidjson::MemoryStream& m_stream;
    Wanted& m_root;
    std::vector<Level> m_levels;
    std::size_t m_last = 0;  // end of the token read last
};

// Turns offsets of UTF-8 into indices of UTF-16; going upwards it reads the text once.
class Indices {
public:
    explicit Indices(const std::string& text) : m_text(text) {}
    qsizetype of(std::size_t offset) {
        if (offset < m_offset) {
            m_offset = 0;
            m_index = 0;
        }
        for (; m_offset < std::min(offset, m_text.size()); ++m_offset) {
            const auto byte = static_cast<unsigned char>(m_text[m_offset]);
            if ((byte & 0xc0) != 0x80)
                m_index += byte >= 0xf0 ? 2 : 1;
        }
        return m_index;
    }

private:
    const std::string& m_text;
    std::size_t m_offset = 0;
    qsizetype m_index = 0;
};

}  // namespace

std::vector<std::optional<TextSpan>> placesOf(const QString& json, const QStringList& pointers) {
    const std::string text = json.toStdString();
    Wanted root;
    std::vector<Wanted*> wanted;
    for (const QString& pointer : pointers)
        wanted.push_back(leadTo(root, pointer));
    rapidjson::MemoryStream stream(text.data(), text.size());
    PlaceFinder finder(text, stream, root);
    rapidjson::Reader().Parse<readFlags>(stream, finder);

    std::vector<std::size_t> offsets;
    for (Wanted*& place : wanted) {
        while (place && !place->found)
            place = place->above;
        if (place)
            offsets.insert(offsets.end(), {place->begin, place->end});
    }
    std::sort(offsets.begin(), offsets.end());
    std::map<std::size_t, qsizetype> indices;
    Indices converter(text);
    for (const std::size_t offset : offsets)
        indices[offset] = converter.of(offset);
    std::vector<std::optional<TextSpan>> result;
    for (const Wanted* place : wanted)
        result.push_back(place ? std::optional(TextSpan{indices[place->begin], indices[place->end]})
                               : std::nullopt);
    return result;
}

std::optional<JsonFault> jsonFaultOf(const QString& text) {
    const std::string bytes = text.toStdString();
    rapidjson::MemoryStream stream(bytes.data(), bytes.size());
    rapidjson::BaseReaderHandler<> ignored;
    rapidjson::Reader reader;
    const auto result = reader.Parse<readFlags>(stream, ignored);
    if (!result.IsError())
        return std::nullopt;
    return JsonFault{translatedMessage(rapidjson::GetParseError_En(result.Code())),
                     Indices(bytes).of(result.Offset())};
}

LineAndColumn lineAndColumn(const QString& text, qsizetype position) {
    return linesAndColumns(text, {position}).front();
}

std::vector<LineAndColumn> linesAndColumns(const QString& text,
                                           const std::vector<qsizetype>& positions) {
    std::vector<std::size_t> order(positions.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::sort(order.begin(), order.end(),
              [&](std::size_t a, std::size_t b) { return positions[a] < positions[b]; });
    std::vector<LineAndColumn> result(positions.size());
    LineAndColumn at;
    qsizetype index = 0;
    for (const std::size_t i : order) {
        for (; index < std::min(positions[i], text.size()); ++index) {
            if (text[index] == '\n')
                at = {at.line + 1, 1};
            else if (!text[index].isLowSurrogate())
                ++at.column;
        }
        result[i] = at;
    }
    return result;
}

}  // namespace tarvo::window
