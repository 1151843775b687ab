// The headers of the schema library, for the sources of this room only: they are slow to compile.
#pragma once

// First, though the library warns of it (-Wno-cpp): else it gives RapidJSON an assertion that
// throws and so differs from that of the other sources. Flattened schemas don't need it.
#include "qrb/jsonmemory.h"

#define VALIJSON_USE_EXCEPTIONS 1
#include <valijson/adapters/rapidjson_adapter.hpp>
#include <valijson/adapters/std_string_adapter.hpp>
#include <valijson/constraint_builder.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

// What the library reads JSON values of qrb/jsonmemory.h through.
namespace tarvo::engine::validation {

using RapidJsonAdapter = valijson::adapters::GenericRapidJsonAdapter<tarvo::rapidjson::Value>;

}  // namespace tarvo::engine::validation

template <>
struct valijson::adapters::AdapterTraits<tarvo::engine::validation::RapidJsonAdapter> {
    using DocumentType = tarvo::rapidjson::Document;
    static std::string adapterName() { return "RapidJsonAdapter"; }
};
