#include "exchange/las/metadata.h"

#include "catalogue/jsonmemory.h"
#include "exchange/bytes.h"
#include "exchange/las/crs.h"
#include "exchange/las/texts.h"
#include "exchange/table/names.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <string_view>

namespace tarvo::exchange::las {

namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

std::string jsonText(const std::function<void(Writer&)>& write) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.SetIndent(' ', 4);
    writer.SetFormatOptions(rapidjson::kFormatSingleLineArray);
    write(writer);
    return {buffer.GetString(), buffer.GetSize()};
}

void putText(Writer& writer, const char* key, const std::string& text) {
    const std::string valid = validUtf8(text);
    writer.Key(key);
    writer.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

void putNumber(Writer& writer, double value) {
    // JSON has no words for the others.
    if (std::isfinite(value)) {
        writer.Double(value);
    } else {
        writer.Null();
    }
}

void putAxes(Writer& writer, const char* key, const std::array<double, 3>& values) {
    writer.Key(key);
    writer.StartArray();
    for (const double value : values) {
        putNumber(writer, value);
    }
    writer.EndArray();
}

std::string base64(const std::vector<std::uint8_t>& data) {
    static const char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < data.size(); i += 3) {
        std::uint32_t group = static_cast<std::uint32_t>(data[i]) << 16;
        group |= i + 1 < data.size() ? static_cast<std::uint32_t>(data[i + 1]) << 8 : 0;
        group |= i + 2 < data.size() ? data[i + 2] : 0;
        text += digits[group >> 18];
        text += digits[(group >> 12) & 63];
        text += i + 1 < data.size() ? digits[(group >> 6) & 63] : '=';
        text += i + 2 < data.size() ? digits[group & 63] : '=';
    }
    return text;
}

std::string headerJson(const std::string& fileName, const Header& header) {
    return jsonText([&](Writer& writer) {
        writer.StartObject();
        putText(writer, "file_name", std::filesystem::path(fileName).filename().string());
        putText(writer, "version", "1." + std::to_string(header.versionMinor));
        writer.Key("file_source_id");
        writer.Uint(header.fileSourceId);
        writer.Key("global_encoding");
        writer.Uint(header.globalEncoding);
        putText(writer, "guid", header.guid);
        putText(writer, "system_identifier", header.systemIdentifier);
        putText(writer, "generating_software", header.generatingSoftware);
        writer.Key("creation_day_of_year");
        writer.Uint(header.creationDay);
        writer.Key("creation_year");
        writer.Uint(header.creationYear);
        writer.Key("point_format");
        writer.Int(header.pointFormat);
        writer.Key("point_record_length");
        writer.Uint(header.recordLength);
        writer.Key("point_count");
        writer.Uint64(header.pointCount);
        putAxes(writer, "scale", header.scale);
        putAxes(writer, "offset", header.offset);
        putAxes(writer, "minimum", header.minimum);
        putAxes(writer, "maximum", header.maximum);
        writer.EndObject();
    });
}

// The keys of GeoTIFF: a directory of 16-bit numbers and the numbers and texts it points to.
std::string geotiffJson(const std::vector<const Record*>& records) {
    return jsonText([&](Writer& writer) {
        writer.StartObject();
        for (const Record* record : records) {
            const std::vector<std::uint8_t>& data = record->data;
            if (record->recordId == 34735 && data.size() % 2 == 0) {
                writer.Key("directory");
                writer.StartArray();
                for (std::size_t i = 0; i < data.size(); i += 2) {
                    writer.Uint(get<std::uint16_t>(data.data() + i));
                }
                writer.EndArray();
            } else if (record->recordId == 34736 && data.size() % 8 == 0) {
                writer.Key("doubles");
                writer.StartArray();
                for (std::size_t i = 0; i < data.size(); i += 8) {
                    putNumber(writer, get<double>(data.data() + i));
                }
                writer.EndArray();
            } else if (record->recordId == 34737) {
                putText(writer, "ascii", getText(data.data(), data.size()));
            } else {
                putText(writer, ("base64_" + std::to_string(record->recordId)).c_str(),
                        base64(data));
            }
        }
        writer.EndObject();
    });
}

std::string recordsJson(const std::vector<const Record*>& records) {
    return jsonText([&](Writer& writer) {
        writer.StartArray();
        for (const Record* record : records) {
            writer.StartObject();
            putText(writer, "user_id", record->userId);
            writer.Key("record_id");
            writer.Uint(record->recordId);
            putText(writer, "description", record->description);
            writer.Key("length");
            writer.Uint64(record->length);
            if (record->data.size() == record->length) {
                putText(writer, "base64", base64(record->data));
            }
            writer.EndObject();
        }
        writer.EndArray();
    });
}

}  // namespace

std::vector<std::pair<std::string, std::string>> metaDataItems(const std::string& fileName,
                                                               const Header& header,
                                                               const std::vector<Record>& records) {
    std::vector<std::pair<std::string, std::string>> items;
    std::vector<const Record*> geotiff;
    std::vector<const Record*> others;
    items.emplace_back("las.header", headerJson(fileName, header));
    for (const Record& record : records) {
        if (isCrs(record) && (record.recordId == 2112 || record.recordId == 2111)) {
            const std::string raw = getText(record.data.data(), record.data.size());
            items.emplace_back(record.recordId == 2112 ? "las.crs.wkt" : "las.crs.math_transform",
                               jsonText([&](Writer& writer) {
                                   const std::string text = validUtf8(raw);
                                   writer.String(text.data(),
                                                 static_cast<rapidjson::SizeType>(text.size()));
                               }));
            // What a string of JSON can't hold byte for byte.
            const bool endsThere =
                std::all_of(record.data.begin() + static_cast<std::ptrdiff_t>(raw.size()),
                            record.data.end(), [](std::uint8_t byte) { return byte == 0; });
            if (!isUtf8(raw) || !endsThere || record.data.size() != record.length) {
                others.push_back(&record);
            }
        } else if (isCrs(record) && record.recordId >= 34735 && record.recordId <= 34737) {
            geotiff.push_back(&record);
        } else {
            others.push_back(&record);
        }
    }
    if (!geotiff.empty()) {
        items.emplace_back("las.crs.geotiff", geotiffJson(geotiff));
    }
    if (!others.empty()) {
        items.emplace_back("las.records", recordsJson(others));
    }
    return items;
}

}  // namespace tarvo::exchange::las
