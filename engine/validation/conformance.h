// Compares an open database with a file schema and with the default catalogue.
#pragma once

#include "engine/session/session.h"
#include "engine/validation/fileschema.h"
#include "engine/validation/jsonschema.h"

#include <string>
#include <vector>

namespace tarvo::engine::validation {

struct Deviation {
    std::string attribute;  // that it is about; empty: none
    std::string item;       // the same of metadata items
    Finding finding;
    std::string line;  // all of it in one sentence
};

// All that does not agree, in the order of the schema; reads statistics, no points.
// Attributes and items that the catalogue has are compared with its definitions and JSON schemas,
// others must only be there. strict: what the schema does not name is reported too, but for the
// point id.
std::vector<Deviation> deviations(session::Session& session, const FileSchema& schema, bool strict);

// The metadata items that still hold the example of the catalogue, where that has no neutral value:
// whoever made the file by a schema has not said yet what is true of it. A line each.
std::vector<std::string> placeholders(session::Session& session);

}  // namespace tarvo::engine::validation
