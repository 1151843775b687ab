#include "qrb/findings.h"

#include "catalogue/jsonmemory.h"
#include "qrb/error.h"
#include "qrb/loader.h"

#include <sstream>

namespace tarvo::qrb::pointcloud {

namespace {

constexpr std::uint8_t findingsFormat = 6;

std::string member(const rapidjson::Value& object, const char* name) {
    const auto found = object.FindMember(name);
    return found != object.MemberEnd() && found->value.IsString() ? found->value.GetString() : "";
}

// The findings as a library tells them that has no records: lines of text.
Findings findingsIn(const std::string& details) {
    Findings findings;
    std::istringstream lines(details);
    for (std::string line; std::getline(lines, line);) {
        Finding& finding = findings.list.emplace_back();
        finding.text = finding.line = line;
    }
    return findings;
}

}  // namespace

Findings findingsOf(const PointcloudData& data, std::int32_t status) {
    std::string details;
    rapidjson::Document json;
    try {
        data.check(status);
    } catch (const Error& error) {
        if (error.code() != QRB_ERROR_VALIDATION) {
            throw;
        }
        details = *error.details() != 0 ? error.details() : error.what();
    }
    try {
        const char* report = nullptr;
        data.check(functions().qrb_pointcloud_inspect(data.context.handle(), data.handle,
                                                      findingsFormat, &report));
        json.Parse(copyText(report).c_str());
    } catch (const Error& error) {
        if (error.code() != QRB_ERROR_ARGUMENT) {
            throw;
        }
    }
    const char* const parts[] = {"findings", "notes"};
    for (const char* part : parts) {
        if (!json.IsObject() || !json.HasMember(part) || !json[part].IsArray()) {
            return findingsIn(details);
        }
    }
    Findings findings;
    for (const rapidjson::Value& one : json["findings"].GetArray()) {
        if (one.IsObject()) {
            findings.list.push_back({member(one, "attribute"), member(one, "item"),
                                     member(one, "pointer"), member(one, "keyword"),
                                     member(one, "expected"), member(one, "found"),
                                     member(one, "text"), member(one, "line")});
        }
    }
    for (const rapidjson::Value& note : json["notes"].GetArray()) {
        if (note.IsString()) {
            findings.notes.emplace_back(note.GetString());
        }
    }
    return findings;
}

}  // namespace tarvo::qrb::pointcloud
