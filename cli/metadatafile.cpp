#include "cli/metadatafile.h"

#include "cli/database.h"
#include "cli/errors.h"
#include "cli/json.h"
#include "cli/output.h"
#include "cli/table/names.h"
#include "cli/textfile.h"

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>

#include <cstdio>
#include <filesystem>
#include <utility>

namespace tarvo::cli {

namespace {

using rapidjson::SizeType;

// Takes the events of a JSON object apart into the texts of its members.
class MemberSplitter {
public:
    using Member = std::pair<std::string, std::string>;
    std::vector<Member> members;
    bool isObject = false;

    bool Null() {
        return scalar([&] { m_writer.Null(); });
    }
    bool Bool(bool value) {
        return scalar([&] { m_writer.Bool(value); });
    }
    bool RawNumber(const char* text, SizeType length, bool) {
        return scalar([&] { m_writer.RawValue(text, length, rapidjson::kNumberType); });
    }
    bool String(const char* text, SizeType length, bool) {
        return scalar([&] { m_writer.String(text, length); });
    }
    bool Key(const char* text, SizeType length, bool) {
        if (m_depth == 1) {
            members.emplace_back(std::string(text, length), "");
        } else {
            m_writer.Key(text, length);
        }
        return true;
    }
    bool StartObject() {
        isObject = isObject || m_depth == 0;
        if (m_depth++ > 0) {
            m_writer.StartObject();
        }
        return true;
    }
    bool EndObject(SizeType) {
        if (--m_depth > 0) {
            m_writer.EndObject();
            endValue();
        }
        return true;
    }
    bool StartArray() {
        if (m_depth++ > 0) {
            m_writer.StartArray();
        }
        return isObject;  // else it is the top-level element
    }
    bool EndArray(SizeType) {
        if (--m_depth > 0) {
            m_writer.EndArray();
            endValue();
        }
        return true;
    }
    // Not called: numbers come as they are written.
    bool Int(int) { return false; }
    bool Uint(unsigned) { return false; }
    bool Int64(std::int64_t) { return false; }
    bool Uint64(std::uint64_t) { return false; }
    bool Double(double) { return false; }

private:
    template <typename Write>
    bool scalar(Write write) {
        if (m_depth > 0) {
            write();
            endValue();
        }
        return true;
    }
    void endValue() {
        if (m_depth == 1 && isObject) {
            members.back().second.assign(m_buffer.GetString(), m_buffer.GetSize());
            m_buffer.Clear();
            m_writer.Reset(m_buffer);
        }
    }

    std::size_t m_depth = 0;
    rapidjson::StringBuffer m_buffer;
    rapidjson::Writer<rapidjson::StringBuffer> m_writer{m_buffer};
};

// A JSON object with these items.
std::string itemsAsJson(const qrb::pointcloud::MetaData& metaData,
                        const std::vector<std::string>& names) {
    rapidjson::StringBuffer buffer;
    ExactWriter<rapidjson::PrettyWriter<rapidjson::StringBuffer>> writer(buffer);
    writer.StartObject();
    for (const std::string& name : names) {
        if (!metaData.exists(name)) {
            throw Failure("The database has no metadata item \"" + name + "\".",
                          "\"qrbtool metadata FILE\" lists the items.");
        }
        const std::string value = metaData.get(name);
        const std::string key = validUtf8(name);
        writer.Key(key.data(), static_cast<SizeType>(key.size()));
        rapidjson::MemoryStream check(value.data(), value.size());
        rapidjson::BaseReaderHandler<> nothing;
        rapidjson::Reader reader;
        if (reader.Parse<exactParseFlags>(check, nothing).IsError()) {
            const std::string text = validUtf8(value);
            writer.String(text.data(), static_cast<SizeType>(text.size()));
        } else {
            rapidjson::MemoryStream stream(value.data(), value.size());
            reader.Parse<exactParseFlags>(stream, writer);
        }
    }
    writer.EndObject();
    return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

// An item may have any name, so it must not lead out of the folder.
std::string fileNameOf(const std::string& item) {
    std::string name;
    for (const char c : item) {
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                           (c >= '0' && c <= '9') || c == '_' || c == '-' || c == ' ' ||
                           (c == '.' && !name.empty());
        if (plain) {
            name += c;
        } else {
            char code[8];
            std::snprintf(code, sizeof code, "%%%02X",
                          static_cast<unsigned>(static_cast<unsigned char>(c)));
            name += code;
        }
    }
    return name + ".meta.json";
}

}  // namespace

void exportMetaData(const Database& database, const std::string& target,
                    std::vector<std::string> names) {
    const qrb::pointcloud::MetaData& metaData = database.cloud().metaData();
    if (names.empty()) {
        names = metaData.list();
    }
    std::error_code error;
    const auto write = [&](const std::string& fileName, const std::vector<std::string>& items) {
        if (items.empty() && std::filesystem::is_regular_file(fileName, error)) {
            throw Failure("The database has no metadata items; \"" + fileName +
                          "\" was left as it was.");
        }
        writeAnswer(database, fileName, itemsAsJson(metaData, items));
    };
    if (!std::filesystem::is_directory(target, error)) {
        write(target, names);
        return;
    }
    for (const std::string& name : names) {
        write((std::filesystem::path(target) / fileNameOf(name)).string(), {name});
    }
}

void importMetaDataFile(qrb::pointcloud::MetaData& metaData, const std::string& fileName,
                        MetaDataImport& result) {
    const std::string text = readTextFile(fileName);
    MemberSplitter splitter;
    rapidjson::MemoryStream stream(text.data(), text.size());
    rapidjson::Reader reader;
    const rapidjson::ParseResult parsed = reader.Parse<exactParseFlags>(stream, splitter);
    if (parsed.IsError() && parsed.Code() != rapidjson::kParseErrorTermination) {
        throw Failure("Failed to parse \"" + fileName +
                      "\": " + rapidjson::GetParseError_En(parsed.Code()) +
                      " Position: " + std::to_string(parsed.Offset()));
    }
    if (!splitter.isObject) {
        throw Failure("The top-level element of \"" + fileName + "\" is expected to be an object.",
                      "It has a member for each metadata item.");
    }
    for (const auto& [name, value] : splitter.members) {
        (metaData.exists(name) ? result.updated : result.added).push_back(name);
        metaData.set(name, value);
    }
}

}  // namespace tarvo::cli
