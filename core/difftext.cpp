#include "core/difftext.h"

#include "numbers/numbertext.h"

#include <algorithm>

namespace tarvo::core {

namespace {

std::string oneLine(std::string text) {
    for (char& c : text)
        c = c == '\n' || c == '\r' ? ' ' : c;
    return text;
}

std::string counted(std::uint64_t count, const char* noun) {
    return numbers::groupedText(count) + " " + noun + (count == 1 ? "" : "s");
}

std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : " ") + text;
    return all;
}

// Texts that are empty would be missed.
std::string quotedIfEmpty(const std::string& text) {
    return text.empty() ? "\"\"" : oneLine(text);
}

void addNames(std::string& text, const char* mark, const std::vector<std::string>& names,
              const char* behind = "") {
    for (const std::string& name : names)
        text += std::string("  ") + mark + " " + oneLine(name) + behind + "\n";
}

void addFields(std::string& text, const std::string& indent, const std::vector<FieldDiff>& fields) {
    for (const FieldDiff& field : fields)
        text += indent + field.field + ": " + quotedIfEmpty(field.before) + " -> " +
                quotedIfEmpty(field.after) + "\n";
}

std::string textOf(const DefinitionsDiff& diff) {
    std::string text;
    if (!diff.settings.empty()) {
        text += "Settings\n";
        addFields(text, "  * ", diff.settings);
    }
    if (diff.added.empty() && diff.removed.empty() && diff.changed.empty())
        return text;
    text += "Point attributes\n";
    addNames(text, "+", diff.added);
    addNames(text, "-", diff.removed);
    for (const DefinitionDiff& one : diff.changed) {
        addNames(text, "*", {one.attribute});
        addFields(text, "      ", one.fields);
    }
    return text;
}

std::string textOf(const MetaDataDiff& diff) {
    if (diff.none())
        return {};
    std::string text = "Metadata items\n";
    addNames(text, "+", diff.added);
    addNames(text, "-", diff.removed);
    addNames(text, "*", diff.changed, ": another value");
    addNames(text, "*", diff.nowSigned, ": now signed");
    addNames(text, "*", diff.noLongerSigned, ": no longer signed");
    return text;
}

void addPlaces(std::string& text, const std::vector<PointExample>& examples) {
    for (const PointExample& one : examples)
        text += "      id " + std::to_string(one.id) + ": " + joined(one.place) + "\n";
}

std::string textOf(const PointsDiff& diff) {
    std::string text = "Points (" + numbers::groupedText(diff.before) + " -> " +
                       numbers::groupedText(diff.after) + ")\n";
    if (diff.added > 0)
        text += "  + " + counted(diff.added, "point") + " added\n";
    addPlaces(text, diff.firstAdded);
    if (diff.removed > 0)
        text += "  - " + counted(diff.removed, "point") + " removed\n";
    addPlaces(text, diff.firstRemoved);
    if (diff.changed > 0)
        text += "  * " + counted(diff.changed, "point") + " changed\n";
    for (const ValuesDiff& one : diff.values) {
        if (one.points == 0)
            continue;
        text += "    " + one.attribute + ": " + counted(one.points, "point") +
                (one.asNumbers ? ", compared as numbers" : "") + "\n";
        for (const ValueExample& example : one.first)
            text += "      id " + std::to_string(example.id) + ": " + joined(example.before) +
                    " -> " + joined(example.after) + "\n";
    }
    for (const std::string& name : diff.notCompared)
        text += "    " + name + ": not compared, because the lengths differ\n";
    return text;
}

}  // namespace

std::string diffText(const DatabaseDiff& diff) {
    if (diff.none()) {
        if (!diff.points)
            return "No differences. Points were not compared.\n";
        return "No differences: " + counted(diff.points->after, "point") + " compared.\n";
    }
    std::string text = textOf(diff.definitions) + textOf(diff.metaData);
    if (!diff.points)
        text += "Points were not compared.\n";
    else if (diff.points->none() && diff.points->notCompared.empty())
        text += "Points: no differences (" + numbers::groupedText(diff.points->after) + ").\n";
    else
        text += textOf(*diff.points);
    return text;
}

}  // namespace tarvo::core
