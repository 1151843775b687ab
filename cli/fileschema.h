// File schemas that arguments and file names stand for.
#pragma once

#include <string>
#include <string_view>

namespace tarvo::cli {

// The JSON text of the file schema with this identifier, or else in this file. Throws Failure.
std::string fileSchemaText(const std::string& argument);

// The identifier of the default file schema whose extension a file name ends with, in any case of
// letters; "{C}" and "{N}" of an extension stand for digits. Of several the one with the longest
// extension, of these the first; empty if there is none.
std::string guessFileSchema(std::string_view fileName);

}  // namespace tarvo::cli
