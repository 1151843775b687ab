// The headers of the schema library, for the sources of this room only: they are slow to compile.
#pragma once

// First, though the library warns of it (-Wno-cpp): else it gives RapidJSON an assertion that
// throws and so differs from that of the other sources. Flattened schemas don't need it.
#include <rapidjson/document.h>

#define VALIJSON_USE_EXCEPTIONS 1
#include <valijson/adapters/rapidjson_adapter.hpp>
#include <valijson/adapters/std_string_adapter.hpp>
#include <valijson/constraint_builder.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>
