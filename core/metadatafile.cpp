#include "core/metadatafile.h"

#include "core/error.h"
#include "core/json.h"
#include "core/utf8.h"

#include <rapidjson/error/en.h>

namespace tarvo::core {

namespace {

using rapidjson::SizeType;

// Takes the members of the top-level object apart while they are read: strings as they are, objects
// written anew.
class MemberCollector {
public:
    MetaDataFile file;
    bool isObject = true;

    bool Null() {
        return scalar("null", [](auto& writer) { return writer.Null(); });
    }
    bool Bool(bool value) {
        return scalar("boolean", [=](auto& writer) { return writer.Bool(value); });
    }
    bool RawNumber(const char* digits, SizeType length, bool copy) {
        return scalar("number",
                      [=](auto& writer) { return writer.RawNumber(digits, length, copy); });
    }
    bool String(const char* text, SizeType length, bool) {
        if (m_depth == 1) {
            file.items.push_back({m_name, std::string(text, length)});
            return true;
        }
        return scalar("", [=](auto& writer) { return writer.String(text, length); });
    }
    bool Key(const char* text, SizeType length, bool) {
        if (m_depth == 1) {
            m_name.assign(text, length);
            return true;
        }
        return m_writer.Key(text, length);
    }
    bool StartObject() {
        return start(true, [](auto& writer) { return writer.StartObject(); });
    }
    bool StartArray() {
        return start(false, [](auto& writer) { return writer.StartArray(); });
    }
    bool EndObject(SizeType) {
        return end([](auto& writer) { return writer.EndObject(); });
    }
    bool EndArray(SizeType) {
        return end([](auto& writer) { return writer.EndArray(); });
    }
    // Not called: numbers come as they are written.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

private:
    void skip(const char* kind) { file.skipped.push_back(m_name + " (" + kind + ")"); }

    template <typename Write>
    bool scalar(const char* kind, Write write) {
        if (m_depth > 1)
            return write(m_writer);
        if (m_depth == 1)
            skip(kind);
        else
            isObject = false;
        return m_depth == 1;
    }
    template <typename Write>
    bool start(bool object, Write write) {
        if (m_depth++ == 0)
            return isObject = object;
        if (m_depth == 2) {
            m_buffer.Clear();
            m_writer.Reset(m_buffer);
            m_memberIsObject = object;
        }
        return write(m_writer);
    }
    template <typename Write>
    bool end(Write write) {
        if (--m_depth == 0)
            return true;
        if (!write(m_writer))
            return false;
        if (m_depth == 1 && m_memberIsObject)
            file.items.push_back({m_name, std::string(m_buffer.GetString(), m_buffer.GetSize())});
        else if (m_depth == 1)
            skip("array");
        return true;
    }

    std::size_t m_depth = 0;
    std::string m_name;
    bool m_memberIsObject = false;
    rapidjson::StringBuffer m_buffer;
    ExactWriter<rapidjson::Writer<rapidjson::StringBuffer>> m_writer{m_buffer};
};

bool isJsonObject(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && text[first] == '{' && isJson(text);
}

std::string compact(const std::string& jsonObject) {
    rapidjson::StringBuffer buffer;
    ExactWriter<rapidjson::Writer<rapidjson::StringBuffer>> writer(buffer);
    readJson(jsonObject, writer);
    return {buffer.GetString(), buffer.GetSize()};
}

// Blanks and spellings of characters in an object are no part of its value.
bool isSameValue(const std::string& before, const std::string& now) {
    return before == now ||
           (isJsonObject(before) && isJsonObject(now) && compact(before) == compact(now));
}

}  // namespace

std::string writeMetaDataFile(const std::vector<MetaDataItem>& items) {
    rapidjson::StringBuffer buffer;
    ExactWriter<rapidjson::PrettyWriter<rapidjson::StringBuffer>> writer(buffer);
    writer.StartObject();
    for (const MetaDataItem& item : items) {
        const std::string name = validUtf8(item.name);
        const std::string text = validUtf8(item.text);
        writer.Key(name.data(), static_cast<SizeType>(name.size()));
        if (isJsonObject(text))
            readJson(text, writer);
        else
            writer.String(text.data(), static_cast<SizeType>(text.size()));
    }
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

MetaDataFile readMetaDataFile(std::string_view text) {
    rapidjson::MemoryStream stream(text.data(), text.size());
    MemberCollector collector;
    rapidjson::Reader reader;
    const rapidjson::ParseResult parsed =
        reader.Parse<exactParseFlags | rapidjson::kParseValidateEncodingFlag>(stream, collector);
    if (parsed.IsError() && collector.isObject)
        throw Failure(std::string("Failed to parse JSON string: ") +
                      rapidjson::GetParseError_En(parsed.Code()) +
                      " Position: " + std::to_string(parsed.Offset()));
    if (!collector.isObject)
        throw Failure("The top-level element is expected to be an object.");
    return std::move(collector.file);
}

void MetaDataImport::set(const MetaDataItem& item) {
    const bool exists = m_metaData.exists(item.name);
    const std::string before = exists ? m_metaData.get(item.name) : std::string();
    if (exists && isSameValue(before, item.text)) {
        unchanged.push_back(item.name);
        return;
    }
    const bool wasSigned = exists && m_metaData.verifySignature(item.name, 0, {});
    m_before.push_back({item.name, exists, before});
    m_metaData.set(item.name, item.text);
    (exists ? updated : added).push_back(item.name);
    if (wasSigned)
        unsignedNow.push_back(item.name);
}

bool MetaDataImport::losesSignature(const MetaDataItem& item) const {
    return m_metaData.exists(item.name) && m_metaData.verifySignature(item.name, 0, {}) &&
           !isSameValue(m_metaData.get(item.name), item.text);
}

void MetaDataImport::takeBack() {
    for (auto old = m_before.rbegin(); old != m_before.rend(); ++old)
        old->exists ? m_metaData.set(old->name, old->text) : m_metaData.remove(old->name);
}

}  // namespace tarvo::core
