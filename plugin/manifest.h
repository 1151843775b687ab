// What a plugin says of itself in its file plugin.json.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::plugin {

// What a parameter's value is, and so how it is asked for. The words of manifests stand behind.
enum class ParameterType {
    TEXT,         // "text"
    INTEGER,      // "integer": 64 bits, signed
    NUMBER,       // "number": a finite double
    BOOLEAN,      // "boolean"
    CHOICE,       // "choice": one of the values of choices
    ATTRIBUTE,    // "attribute": the name of a point attribute
    ATTRIBUTES,   // "attributes": names of point attributes
    FILTER,       // "filter": a filter expression; empty for all points
    NODES,        // "nodes": ids of index nodes such as "1,4-7"; empty for all
    INPUT_FILE,   // "input file": the name of a file to read
    OUTPUT_FILE,  // "output file": the name of a file to write
};

struct Choice {
    std::string value;
    std::string title;
};

struct Parameter {
    std::string name;  // a letter, then letters, digits and underscores (ASCII)
    std::string title;
    std::string description;
    ParameterType type = ParameterType::TEXT;
    std::string unit;               // INTEGER, NUMBER: shown behind the value
    std::optional<double> minimum;  // INTEGER, NUMBER: the least and the greatest value
    std::optional<double> maximum;
    std::vector<Choice> choices;  // CHOICE
    std::string suffix;           // INPUT_FILE, OUTPUT_FILE: of usual names, without the dot
    // The value where none is told, as JSON; none: it has to be told.
    std::optional<std::string> defaultValue;
};

struct Manifest {
    std::string name;  // small letters, digits and "-", beginning with a letter
    std::string title;
    std::string description;
    std::string version;
    std::string script = "plugin.py";  // a file beside the manifest
    bool writes = false;               // runs within a transaction
    std::vector<Parameter> parameters;
};

// Reads a manifest. Throws core::Failure that names the member that is missing, wrong or unknown.
Manifest readManifest(std::string_view json);

// The word of manifests for a type.
const char* wordOf(ParameterType type);

}  // namespace tarvo::plugin
