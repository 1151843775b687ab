#include "exchange/las/waverecords.h"

#include "catalogue/jsonmemory.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace tarvo::exchange::las {

namespace {

constexpr std::uint16_t internalPackets = 2;  // bits of the global encoding
constexpr std::uint16_t externalPackets = 4;
constexpr unsigned firstDescriptor = 100;
constexpr unsigned lastDescriptor = 354;
constexpr std::size_t longestDescriptor = 65535;

std::optional<std::vector<std::uint8_t>> fromBase64(std::string_view text) {
    static constexpr std::string_view digits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    while (text.ends_with('=')) {
        text.remove_suffix(1);
    }
    std::vector<std::uint8_t> data;
    std::uint32_t group = 0;
    unsigned bits = 0;
    for (const char c : text) {
        const std::size_t digit = digits.find(c);
        if (digit == std::string_view::npos) {
            return std::nullopt;
        }
        group = group << 6 | static_cast<std::uint32_t>(digit);
        bits += 6;
        if (bits >= 8) {
            bits -= 8;
            data.push_back(static_cast<std::uint8_t>(group >> bits));
        }
    }
    return data;
}

std::string_view textOf(const rapidjson::Value& object, const char* key) {
    const auto found = object.FindMember(key);
    return found == object.MemberEnd() || !found->value.IsString()
               ? std::string_view()
               : std::string_view(found->value.GetString(), found->value.GetStringLength());
}

unsigned numberOf(const rapidjson::Value& object, const char* key) {
    const auto found = object.FindMember(key);
    return found == object.MemberEnd() || !found->value.IsUint() ? 0 : found->value.GetUint();
}

std::optional<Record> descriptorOf(const rapidjson::Value& entry) {
    if (!entry.IsObject() || textOf(entry, "user_id") != "LASF_Spec") {
        return std::nullopt;
    }
    const unsigned id = numberOf(entry, "record_id");
    auto data = fromBase64(textOf(entry, "base64"));
    if (id < firstDescriptor || id > lastDescriptor || !data || data->empty() ||
        data->size() > longestDescriptor) {
        return std::nullopt;
    }
    Record record;
    record.userId = "LASF_Spec";
    record.recordId = static_cast<std::uint16_t>(id);
    record.description = textOf(entry, "description").substr(0, 32);
    record.length = data->size();
    record.data = std::move(*data);
    return record;
}

}  // namespace

WaveRecords waveRecords(const std::vector<std::pair<std::string, std::string>>& items) {
    WaveRecords waves;
    unsigned encoding = 0;
    bool differ = false;
    for (const auto& [name, text] : items) {
        rapidjson::Document json;
        if (json.Parse<rapidjson::kParseIterativeFlag>(text.data(), text.size()).HasParseError()) {
            continue;
        }
        if (name.starts_with("las.header") && json.IsObject()) {
            encoding |= numberOf(json, "global_encoding");
        } else if (name.starts_with("las.records") && json.IsArray()) {
            for (const rapidjson::Value& entry : json.GetArray()) {
                const auto record = descriptorOf(entry);
                const auto same = std::ranges::find_if(waves.records, [&](const Record& other) {
                    return record && other.recordId == record->recordId;
                });
                if (same != waves.records.end()) {
                    differ |= same->data != record->data;
                } else if (record) {
                    waves.records.push_back(*record);
                }
            }
        }
    }
    waves.globalEncoding = encoding & externalPackets;
    if ((encoding & externalPackets) != 0) {
        waves.notes.emplace_back(
            "The waveforms stand in the .wdp file of the file that was imported: it has to be "
            "copied to the name of this one.");
    } else if ((encoding & internalPackets) != 0) {
        waves.notes.emplace_back(
            "The waveforms themselves were left out by the import; their fields point to nothing.");
    }
    if (differ) {
        waves.notes.emplace_back(
            "The files that were imported describe wave packets of one number in different ways; "
            "the first description is written.");
    }
    return waves;
}

}  // namespace tarvo::exchange::las
