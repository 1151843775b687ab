#include "cli/origins.h"

#include "catalogue/catalogue.h"
#include "cli/json.h"
#include "cli/terminal.h"
#include "cli/text.h"

#include <filesystem>
#include <map>
#include <sstream>
#include <utility>

namespace tarvo::cli {

namespace {

using core::ReferenceSystem;
using exchange::Origin;
using qrb::pointcloud::PointAttribute;

std::string quoted(const std::string& text) {
    return "\"" + text + "\"";
}

std::string shortName(const PointSource& source) {
    return quoted(std::filesystem::path(source.fileName()).filename().string());
}

// A list of files for one line of a message.
class FileList {
public:
    void add(const std::string& text) {
        constexpr int shown = 5;
        if (++m_count <= shown) {
            m_text += (m_text.empty() ? "" : ", ") + text;
        }
        m_more = m_count > shown ? " and " + std::to_string(m_count - shown) + " more" : "";
    }
    bool isEmpty() const { return m_count == 0; }
    std::string text() const { return m_text + m_more; }

private:
    std::string m_text;
    std::string m_more;
    int m_count = 0;
};

// Both in quotes, with their units where the rest doesn't tell them apart.
std::string describeBoth(const ReferenceSystem& a, const ReferenceSystem& b) {
    const bool needUnits = core::describe(a) == core::describe(b);
    const auto text = [&](const ReferenceSystem& system) {
        return quoted(core::describe(system)) +
               (needUnits ? " " + core::describeUnits(system) : "");
    };
    return text(a) + " and " + text(b);
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
    qrb::pointcloud::IndexNode root;
    cloud.stat().index(root);
    return root.pointCountTotal > 0;
}

// Returns whether the database tells the system now and did not before.
bool setSystem(const qrb::Pointcloud& cloud, const CommonOrigin& common) {
    const std::optional<ReferenceSystem>& system = common.origin.system;
    if (!common.foreign.empty()) {
        cloud.changelog().appendMessage(common.foreign);
    }
    if (!system || core::referenceSystem(cloud.metaData())) {
        return false;
    }
    const bool isSet = core::setReferenceSystem(cloud.metaData(), *system);
    if (!isSet) {
        note("The item tarvo.geo_tag stays as it is, without the coordinate reference system.");
    }
    return isSet;
}

void setIfMissing(qrb::pointcloud::MetaData& metaData, const char* name, const JsonText& value) {
    if (!metaData.exists(name)) {
        std::string text = value.text();
        text.pop_back();  // the line break
        metaData.set(name, text);
    }
}

}  // namespace

CommonOrigin commonOrigin(const PointSources& sources, const qrb::Pointcloud* database,
                          bool asTheyAre) {
    CommonOrigin common;
    std::string holder = "the database";
    if (database != nullptr) {
        common.origin.system = core::referenceSystem(database->metaData());
    }
    FileList foreign;
    FileList silent;
    std::map<std::string, FileList> unread;  // by what could not be read
    for (const auto& source : sources) {
        const bool isFirst = source == sources.front();
        const Origin own = source->origin();
        agree(common.origin.project, own.project, isFirst);
        agree(common.origin.comments, own.comments, isFirst);
        agree(common.origin.epoch, own.epoch, isFirst);
        agree(common.origin.timescale, own.timescale, isFirst);
        if (!own.system) {
            silent.add(shortName(*source));
        } else if (!common.origin.system) {
            common.origin.system = own.system;
            holder = shortName(*source);
            if (database != nullptr && hasPoints(*database)) {
                silent.add("the database");
            }
        } else if (!core::isSame(*common.origin.system, *own.system)) {
            if (!asTheyAre) {
                throw Failure(
                    "The coordinate reference systems of " + holder + " and " + shortName(*source) +
                        " differ: " + describeBoth(*common.origin.system, *own.system) + ".",
                    "Transform the points into one system first, or give --crs-as-is to take the "
                    "coordinates as they are.");
            }
            foreign.add(shortName(*source) + " (" + core::describe(*own.system) + ")");
        }
        if (own.system && !own.system->isUnderstood()) {
            unread[own.system->unread].add(shortName(*source));
        }
    }
    for (const auto& [words, files] : unread) {
        note(printable("The coordinate reference system of " + files.text() +
                       " is not understood in full: " + words +
                       ". It is kept as it is told, and units that are not known stay empty."));
    }
    if (common.origin.system && !silent.isEmpty()) {
        note(printable("No coordinate reference system is told by " + silent.text() +
                       ": taken as \"" + core::describe(*common.origin.system) + "\"."));
    }
    if (!foreign.isEmpty()) {
        common.foreign =
            "Coordinates were taken as they are into \"" + core::describe(*common.origin.system) +
            "\" from files in other coordinate reference systems: " + foreign.text() + ".";
    }
    return common;
}

void nameUnits(PointAttribute& definition, const std::optional<ReferenceSystem>& system) {
    if (!system || definition.name != "tarvo.xyz") {
        return;
    }
    definition.unitSymbol = system->horizontalUnit;
    if (core::hasOwnHeights(*system)) {
        definition.description += "; " + core::describeUnits(*system);
    }
}

void setOrigin(const qrb::Pointcloud& cloud, const CommonOrigin& common) {
    qrb::pointcloud::MetaData& metaData = cloud.metaData();
    const Origin& origin = common.origin;
    setSystem(cloud, common);
    if (!origin.project.empty() || !origin.comments.empty()) {
        JsonText info;
        info.beginObject();
        for (const auto& [name, text] :
             {std::pair{"project", origin.project}, {"comments", origin.comments}}) {
            if (!text.empty()) {
                info.member(name, text);
            }
        }
        info.member("field_of_application", "unknown");
        info.endObject();
        setIfMissing(metaData, "tarvo.pointcloud_info", info);
    }
    if (!origin.epoch.empty() && !origin.timescale.empty()) {
        JsonText base;
        base.beginObject();
        base.member("epoch", origin.epoch);
        base.member("timescale", origin.timescale);
        base.member("source", "unknown");
        base.endObject();
        setIfMissing(metaData, "tarvo.time_base", base);
    }
}

void addOrigin(const qrb::Pointcloud& cloud, const CommonOrigin& common) {
    if (!setSystem(cloud, common) || !cloud.pointAttributes().exists("tarvo.xyz")) {
        return;
    }
    PointAttribute definition = cloud.pointAttributes().get("tarvo.xyz");
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

}  // namespace tarvo::cli
