#include "exchange/import/commonorigin.h"

#include "catalogue/catalogue.h"
#include "catalogue/jsonmemory.h"
#include "exchange/import/agreement.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>
#include <utility>

namespace tarvo::exchange {

namespace {

using core::ReferenceSystem;
using core::TimeBase;
using qrb::pointcloud::PointAttribute;

constexpr const char* coordinates = "tarvo.xyz";
constexpr const char* timeAttribute = "tarvo.timestamp";

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

std::string shortName(const PointSource& source) {
    return quoted(std::filesystem::path(source.fileName()).filename().string());
}

constexpr const char* transform = "Transform the points into one system first.";

AgreementWords systemWords() {
    return {"coordinate reference system", "Coordinates", transform};
}

AgreementWords timeWords() {
    return {"time base", "Times", advice().leaveOut(timeAttribute)};
}

// Keeps the lines that all files have.
void agree(std::string& common, const std::string& one, bool isFirst) {
    if (isFirst) {
        common = one;
        return;
    }
    const std::string lines = "\n" + one + "\n";
    std::istringstream old(std::exchange(common, {}));
    for (std::string line; std::getline(old, line);) {
        if (lines.find("\n" + line + "\n") != std::string::npos) {
            common += (common.empty() ? "" : "\n") + line;
        }
    }
}

bool hasPoints(const qrb::Pointcloud& cloud) {
    const qrb::pointcloud::IndexNode root = cloud.stat().root();
    return root.pointCountTotal > 0;
}

bool hasTimes(const PointSource& source, const std::set<std::string>& leftOut) {
    return !leftOut.contains(timeAttribute) &&
           std::ranges::any_of(source.columns(), [](const Column& column) {
               return column.attribute == timeAttribute;
           });
}

Agreement<TimeBase> timesOf(const qrb::Pointcloud* database, bool asTheyAre) {
    if (database == nullptr) {
        return {timeWords(), std::nullopt, false, asTheyAre};
    }
    const bool hasSome = database->pointAttributes().exists(timeAttribute) && hasPoints(*database);
    return {timeWords(), core::timeBase(database->metaData()), hasSome, asTheyAre};
}

Agreement<ReferenceSystem> systemsOf(const qrb::Pointcloud* database, bool asTheyAre) {
    if (database == nullptr) {
        return {systemWords(), std::nullopt, false, asTheyAre};
    }
    return {systemWords(), core::referenceSystem(database->metaData()), hasPoints(*database),
            asTheyAre};
}

// A database without a system may still tell the unit of its coordinates.
void requireUnitOf(const qrb::Pointcloud& database, CommonOrigin& common, bool asTheyAre) {
    const std::optional<ReferenceSystem>& system = common.origin.system;
    if (!system || core::referenceSystem(database.metaData()) || !hasPoints(database) ||
        !database.pointAttributes().exists(coordinates)) {
        return;
    }
    const std::string own = database.pointAttributes().get(coordinates).unitSymbol;
    // What the catalogue says nobody has told.
    if (own.empty() || own == catalogue::findAttribute(coordinates)->unitSymbol ||
        own == system->horizontalUnit) {
        return;
    }
    const std::string words = "The coordinates of the database are in " + own + ", those of \"" +
                              describe(*system) + "\" are " + core::describeUnits(*system);
    if (!asTheyAre) {
        throw core::Failure(words + ".", std::string(transform) + "\n" + advice().takeAsTheyAre);
    }
    common.foreign.push_back(words + ": they were taken as they are.");
    common.origin.system.reset();
}

// Returns whether the database tells the system now and did not before.
bool setSystem(const qrb::Pointcloud& cloud, CommonOrigin& common) {
    const std::optional<ReferenceSystem>& system = common.origin.system;
    if (!system || core::referenceSystem(cloud.metaData())) {
        return false;
    }
    const bool isSet = core::setReferenceSystem(cloud.metaData(), *system);
    if (!isSet) {
        common.notes.push_back(
            "The item tarvo.geo_tag stays as it is, without the coordinate reference system.");
    }
    return isSet;
}

void setTimeBase(const qrb::Pointcloud& cloud, CommonOrigin& common) {
    const std::optional<TimeBase>& base = common.origin.timeBase;
    if (base && !core::timeBase(cloud.metaData()) && !core::setTimeBase(cloud.metaData(), *base)) {
        common.notes.push_back("The item tarvo.time_base stays as it is, without the time base.");
    }
}

void tellForeign(const qrb::Pointcloud& cloud, const CommonOrigin& common) {
    for (const std::string& words : common.foreign) {
        cloud.changelog().appendMessage(words);
    }
}

void setInfo(qrb::pointcloud::MetaData& metaData, const Origin& origin) {
    constexpr const char* name = "tarvo.pointcloud_info";
    if ((origin.project.empty() && origin.comments.empty()) || metaData.exists(name)) {
        return;
    }
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
    writer.StartObject();
    for (const auto& [key, text] : {std::pair<const char*, std::string>{"project", origin.project},
                                    {"comments", origin.comments},
                                    {"field_of_application", "unknown"}}) {
        if (!text.empty()) {
            writer.Key(key);
            writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
        }
    }
    writer.EndObject();
    metaData.set(name, {buffer.GetString(), buffer.GetSize()});
}

}  // namespace

CommonOrigin commonOrigin(const PointSources& sources, const qrb::Pointcloud* database,
                          const std::set<std::string>& leftOut, bool asTheyAre) {
    CommonOrigin common;
    Agreement<ReferenceSystem> systems = systemsOf(database, asTheyAre);
    Agreement<TimeBase> times = timesOf(database, asTheyAre);
    std::map<std::string, FileList> unread;  // by what could not be read
    for (const auto& source : sources) {
        const bool isFirst = source == sources.front();
        const std::string name = shortName(*source);
        const Origin own = source->origin();
        agree(common.origin.project, own.project, isFirst);
        agree(common.origin.comments, own.comments, isFirst);
        systems.add(name, own.system);
        if (hasTimes(*source, leftOut)) {
            times.add(name, own.timeBase);
        }
        if (own.system && !own.system->isUnderstood()) {
            unread[own.system->unread].add(name);
        }
    }
    for (const auto& [words, files] : unread) {
        common.notes.push_back("The coordinate reference system of " + files.text() +
                               " is not understood in full: " + words +
                               ". It is kept as it is told, and units that are not known stay "
                               "empty.");
    }
    systems.addNote(common.notes);
    times.addNote(common.notes);
    common.origin.system = systems.common();
    common.origin.timeBase = times.common();
    for (const std::string& words : {systems.foreign(), times.foreign()}) {
        if (!words.empty()) {
            common.foreign.push_back(words);
        }
    }
    if (database != nullptr) {
        requireUnitOf(*database, common, asTheyAre);
    }
    return common;
}

void nameUnits(PointAttribute& definition, const std::optional<ReferenceSystem>& system) {
    if (!system || definition.name != coordinates) {
        return;
    }
    definition.unitSymbol = system->horizontalUnit;
    if (core::hasOwnHeights(*system)) {
        definition.description += "; " + core::describeUnits(*system);
    }
}

void setOrigin(const qrb::Pointcloud& cloud, CommonOrigin& common) {
    tellForeign(cloud, common);
    setSystem(cloud, common);
    setTimeBase(cloud, common);
    setInfo(cloud.metaData(), common.origin);
}

void addOrigin(const qrb::Pointcloud& cloud, CommonOrigin& common) {
    tellForeign(cloud, common);
    setTimeBase(cloud, common);
    if (!setSystem(cloud, common) || !cloud.pointAttributes().exists(coordinates)) {
        return;
    }
    PointAttribute definition = cloud.pointAttributes().get(coordinates);
    const PointAttribute before = definition;
    nameUnits(definition, common.origin.system);
    // What somebody wrote there is left alone.
    const auto* const entry = catalogue::findAttribute(definition.name);
    if (before.unitSymbol == entry->unitSymbol && before.description == entry->description &&
        (definition.unitSymbol != before.unitSymbol ||
         definition.description != before.description)) {
        cloud.pointAttributes().put(definition);
    }
}

}  // namespace tarvo::exchange
