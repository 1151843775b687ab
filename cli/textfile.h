// Texts that arguments name.
#pragma once

#include <string>

namespace tarvo::cli {

// The whole contents of a file; "-" is standard input. Throws Failure.
std::string readTextFile(const std::string& fileName);

// What an argument stands for: "@FILE" the contents of a file, "-" standard input, else itself.
std::string textOfArgument(const std::string& argument);

}  // namespace tarvo::cli
