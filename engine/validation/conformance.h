// Compares an open database with a file schema and with the default catalogue.
#pragma once

#include "engine/session/session.h"
#include "engine/validation/fileschema.h"

#include <string>
#include <vector>

namespace tarvo::engine::validation {

// All that does not agree, a line each, in the order of the schema; reads statistics, no points.
// Attributes and items that the catalogue has are compared with its definitions and JSON schemas,
// others must only be there. strict: what the schema does not name is reported too, but for the
// point id.
std::vector<std::string> deviations(session::Session& session, const FileSchema& schema,
                                    bool strict);

}  // namespace tarvo::engine::validation
