// The headers of the schema library, for the sources of this room only: they are slow to compile.
#pragma once

// First, though the library warns of it (-Wno-cpp): else it gives RapidJSON an assertion that
// throws and so differs from that of the other sources. Flattened schemas don't need it.
#include "engine/base/json.h"

// The library's containers take memory with std::nothrow and use it unlooked: in this header the
// word leads to the operator below, which throws.
#include <limits>
#include <new>
inline void* operator new(std::size_t size, const std::nothrow_t&, int) {
    return ::operator new(size);
}
#define nothrow nothrow_t(), 0
#include <valijson/internal/custom_allocator.hpp>
#undef nothrow

#define VALIJSON_USE_EXCEPTIONS 1
#include <valijson/adapters/rapidjson_adapter.hpp>
#include <valijson/adapters/std_string_adapter.hpp>
#include <valijson/constraint_builder.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

// What the library reads checked JSON values through.
namespace tarvo::engine::validation {

using RapidJsonAdapter = valijson::adapters::GenericRapidJsonAdapter<tarvo::rapidjson::Value>;

}  // namespace tarvo::engine::validation

template <>
struct valijson::adapters::AdapterTraits<tarvo::engine::validation::RapidJsonAdapter> {
    using DocumentType = tarvo::rapidjson::Document;
    static std::string adapterName() { return "RapidJsonAdapter"; }
};
