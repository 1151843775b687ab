// Loads a database library by file name and keeps its entry points in one process-wide table,
// through which the rest of the layer calls it. Load and free on one thread, while no object of
// the layer is alive; afterwards the table is only read.
#pragma once

#include "qrb/qrb.h"

#include <string>

namespace tarvo::qrb {

// The entry points, in the order of functions.def; every slot is null while nothing is loaded.
struct FunctionTable {
#define QRB_FUNCTION(result, name, parameters) result(*name) parameters;
#include "qrb/functions.def"
};

// Those that a library may lack; a slot is null then.
struct OptionalFunctionTable {
#define QRB_OPTIONAL_FUNCTION(result, name, parameters) result(*name) parameters;
#include "qrb/optional.def"
};

// The tables of the loaded library.
const FunctionTable& functions();
const OptionalFunctionTable& optionalFunctions();

// "qrblib" with the platform's suffix of shared libraries.
extern const char* const defaultLibraryName;

// The pattern of library files in file dialogs, for example "*.dll".
extern const char* const libraryFilePattern;

// Loads the library of this file name (UTF-8); null or empty stands for the default, which is
// looked for beside the program first, then in the folder of libraries that it was installed with
// (../lib), then where the platform looks. Does nothing while a library is loaded. Returns null, or
// a message that lives until the next call.
const char* load(const char* fileName);

// Unloads the library and clears the table. Returns null, or a constant message.
const char* free();

// The same with exceptions (std::runtime_error); an empty name stands for the default.
void loadLibrary(const std::string& fileName);
void freeLibrary();

}  // namespace tarvo::qrb
