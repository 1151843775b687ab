// The values of a plugin's parameters, as JSON texts: checked, from what was typed and back.
#pragma once

#include "plugin/manifest.h"

#include <map>
#include <string>

namespace tarvo::plugin {

// JSON texts by the parameters' names.
using Values = std::map<std::string, std::string>;

// The value that a text stands for: a number in any of JSON's spellings, "true" or "false", names
// of attributes separated by commas, the text itself for the rest. Throws core::Failure for what
// the parameter does not take, with what it takes.
std::string valueFromText(const Parameter& parameter, const std::string& text);

// The text of a value that the parameter takes; valueFromText gives the value back.
std::string textOfValue(const Parameter& parameter, const std::string& json);

// Throws core::Failure for a value that the parameter does not take.
void checkValue(const Parameter& parameter, const std::string& json);

// The JSON object that the script gets: every parameter, with its default where no value is given;
// nodes as an array of numbers. Throws core::Failure for values that are missing, wrong or belong
// to no parameter.
std::string argumentsOf(const Manifest& manifest, const Values& values);

}  // namespace tarvo::plugin
