// The level-of-detail settings of a point attribute: a method, and members of a JSON object that go
// with it.
#pragma once

#include <span>
#include <string>

namespace tarvo::core {

struct LodMethodEntry {
    const char* name;
    const char* meaning;
};
// The methods that the library knows.
std::span<const LodMethodEntry> lodMethods();

struct LodSettings {
    std::string method = "default";
    std::string members;  // the other members as an indented JSON object; empty: none
    std::string lost;     // what stands behind the JSON value and can't be kept
};

// Throws std::runtime_error for a text that names no method.
LodSettings readLodSettings(const std::string& text);

// A bare name where there are no further members, else a JSON object. Numbers stay as they are
// written. Throws std::runtime_error for members that are no JSON object or name a method.
std::string writeLodSettings(const std::string& method, const std::string& members);

struct LodProblem {
    bool isJson = true;  // false: nobody can read the text
    std::string text;    // empty: there is none
};
// Why the library that comes with the programs would refuse the settings.
LodProblem lodSettingsProblem(const std::string& text);

}  // namespace tarvo::core
