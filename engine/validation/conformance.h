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

}  // namespace tarvo::engine::validation
