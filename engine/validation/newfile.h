// Makes files of a file type.
#pragma once

#include "engine/session/session.h"
#include "engine/validation/fileschema.h"

#include <string>

namespace tarvo::engine::validation {

// Makes a file with the attributes of the schema, as the default catalogue defines them, and its
// metadata items with the catalogue's neutral values, or the examples where there is none;
// optionals: the optional ones too, except items without a neutral value. The schema's primary
// attribute is that of the file; the settings' definition is used where it has that name, or where
// the schema has none. Throws Failure(NotFound) for a name that the catalogue lacks; a failure
// leaves no file.
void createFile(const std::string& fileName, const session::CreateSettings& settings,
                const std::string& api, const FileSchema& schema, bool optionals);

}  // namespace tarvo::engine::validation
