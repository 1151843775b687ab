#include "core/definitiondiff.h"

#include "numbers/numbertext.h"

#include <cmath>

namespace tarvo::core {

namespace {

using qrb::pointcloud::PointAttribute;

std::string textOf(double number) {
    return std::isnan(number) ? "none" : numbers::numberText(number);
}

struct Field {
    const char* name;
    std::string (*text)(const PointAttribute& attribute);
};

// In which no two different values read alike.
constexpr Field fields[] = {
    {"title", [](const PointAttribute& a) { return a.title; }},
    {"tags", [](const PointAttribute& a) { return a.tags; }},
    {"description", [](const PointAttribute& a) { return a.description; }},
    {"unit_symbol", [](const PointAttribute& a) { return a.unitSymbol; }},
    {"length", [](const PointAttribute& a) { return std::to_string(a.length); }},
    {"resolution", [](const PointAttribute& a) { return textOf(a.resolution); }},
    {"minimum_value", [](const PointAttribute& a) { return textOf(a.minimumValue); }},
    {"maximum_value", [](const PointAttribute& a) { return textOf(a.maximumValue); }},
    {"default_value", [](const PointAttribute& a) { return textOf(a.defaultValue); }},
    {"invalid_value", [](const PointAttribute& a) { return textOf(a.invalidValue); }},
    {"named_values", [](const PointAttribute& a) { return a.namedValues; }},
    {"storage_class",
     [](const PointAttribute& a) {
         return std::string(PointAttribute::storageClassName(a.storageClass));
     }},
    {"compression_options",
     [](const PointAttribute& a) {
         return std::string(PointAttribute::compressionOptionsName(a.compressionOptions));
     }},
    {"lod_settings", [](const PointAttribute& a) { return a.lodSettings; }},
    {"scale_factor", [](const PointAttribute& a) { return textOf(a.scaleFactor); }},
};

void addIfDifferent(std::vector<FieldDiff>& all, const char* field, std::string before,
                    std::string after) {
    if (before != after)
        all.push_back({field, std::move(before), std::move(after)});
}

std::string lodModeName(std::uint32_t mode) {
    return mode == 1 ? "thinout" : mode == 2 ? "combine" : std::to_string(mode);
}

}  // namespace

std::vector<FieldDiff> compareFields(const PointAttribute& before, const PointAttribute& after) {
    std::vector<FieldDiff> all;
    for (const Field& field : fields)
        addIfDifferent(all, field.name, field.text(before), field.text(after));
    return all;
}

DefinitionsDiff compareDefinitions(const qrb::Pointcloud& before, const qrb::Pointcloud& after) {
    const auto& old = before.pointAttributes();
    const auto& now = after.pointAttributes();
    DefinitionsDiff diff;
    addIfDifferent(diff.settings, "primary_attribute", old.primaryAttributeName(),
                   now.primaryAttributeName());
    addIfDifferent(diff.settings, "lod_mode", lodModeName(before.management().getLodMode()),
                   lodModeName(after.management().getLodMode()));
    addIfDifferent(diff.settings, "chunk_size_lod",
                   std::to_string(before.management().getChunkSizeLOD()),
                   std::to_string(after.management().getChunkSizeLOD()));
    for (const std::string& name : old.list()) {
        if (!now.exists(name)) {
            diff.removed.push_back(name);
            continue;
        }
        std::vector<FieldDiff> changes = compareFields(old.get(name), now.get(name));
        if (!changes.empty())
            diff.changed.push_back({name, std::move(changes)});
    }
    for (const std::string& name : now.list())
        if (!old.exists(name))
            diff.added.push_back(name);
    return diff;
}

}  // namespace tarvo::core
