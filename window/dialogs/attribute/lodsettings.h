// The level-of-detail settings of a point attribute: a method, and members of a JSON object that go
// with it.
#pragma once

#include <QString>
#include <span>
#include <string>

namespace tarvo::window {

struct LodMethodEntry {
    const char* name;
    const char* meaning;
};
// The methods that the library knows.
std::span<const LodMethodEntry> lodMethods();

struct LodSettings {
    QString method = "default";
    QString members;  // the other members as an indented JSON object; empty: none
    QString lost;     // what stands behind the JSON value and can't be kept
};

// Throws std::runtime_error for a text that names no method.
LodSettings readLodSettings(const std::string& text);

// A bare name where there are no further members, else a JSON object. Numbers stay as they are
// written. Throws std::runtime_error for members that are no JSON object or name a method.
std::string writeLodSettings(const QString& method, const QString& members);

// Why the library would refuse the settings; empty: it takes them.
QString lodSettingsProblem(const std::string& text);

}  // namespace tarvo::window
