#include "plugin/trust.h"

#include "core/error.h"
#include "core/jsonvalues.h"
#include "files/path.h"
#include "files/wholefile.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace tarvo::plugin {

namespace {

namespace fs = std::filesystem;

// Where the programs' other settings are.
fs::path settingsFolder() {
    const auto variable = [](const char* name) {
        const char* const value = std::getenv(name);
        return files::pathOf(value == nullptr ? "" : value);
    };
#if defined(_WIN32)
    const fs::path base = variable("APPDATA");
#else
    fs::path base = variable("XDG_CONFIG_HOME");
    if (!base.is_absolute() && !variable("HOME").empty())
        base = variable("HOME") / ".config";
#endif
    if (base.empty())
        throw core::Failure("There is no folder for settings.",
                            "Neither XDG_CONFIG_HOME nor HOME is set.");
    return base / "TARVO LMS";
}

// An object of fingerprints by places; an empty one where the file is none.
rapidjson::Document read(const std::string& fileName) {
    const fs::path path = files::pathOf(fileName);
    std::error_code error;
    rapidjson::Document document;
    document.SetObject();
    if (!fs::is_regular_file(path, error))
        return document;
    std::ifstream stream(path, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    rapidjson::Document all;
    all.Parse<rapidjson::kParseIterativeFlag>(text.data(), text.size());
    if (all.HasParseError() || !all.IsObject())
        return document;
    auto& allocator = document.GetAllocator();
    for (const auto& member : all.GetObject())
        if (member.value.IsString())
            document.AddMember(rapidjson::Value(member.name, allocator),
                               rapidjson::Value(member.value, allocator), allocator);
    return document;
}

}  // namespace

TrustedPlugins::TrustedPlugins()
    : m_fileName(files::nameOf(settingsFolder() / "trusted-plugins.json")) {}

Trust TrustedPlugins::trustIn(const Package& package) const {
    const rapidjson::Document document = read(m_fileName);
    const auto entry = document.FindMember(package.place.c_str());
    if (entry == document.MemberEnd() || !entry->value.IsString())
        return Trust::NEVER_ASKED;
    return core::jsonStringValue(entry->value) == package.fingerprint ? Trust::GIVEN
                                                                      : Trust::CHANGED;
}

void TrustedPlugins::give(const Package& package) {
    rapidjson::Document document = read(m_fileName);
    const auto text = [&document](const std::string& value) {
        return rapidjson::Value(value.c_str(), document.GetAllocator());
    };
    document.RemoveMember(package.place.c_str());
    document.AddMember(text(package.place), text(package.fingerprint), document.GetAllocator());
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
    document.Accept(writer);
    std::error_code error;
    fs::create_directories(files::pathOf(m_fileName).parent_path(), error);
    files::WholeFile file(m_fileName);
    file.write({buffer.GetString(), buffer.GetSize()});
    file.write("\n");
    file.publish();
}

}  // namespace tarvo::plugin
