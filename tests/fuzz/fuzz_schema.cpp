// JSON schemas with values to check, with a zero byte between them; without one a file schema.
#include "engine/validation/fileschema.h"
#include "engine/validation/jsonschema.h"
#include "tests/fuzz/survive.h"

#include <cstdint>
#include <string_view>

using namespace tarvo;
using namespace tarvo::engine;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t end = text.find('\0');
    if (end == std::string_view::npos) {
        fuzz::survive([&] { validation::readFileSchema(text); });
        return 0;
    }
    fuzz::survive([&] {
        validation::JsonSchema schema(text.substr(0, end));
        const auto once = schema.check(text.substr(end + 1));
        fuzz::require(schema.check(text.substr(end + 1)).size() == once.size(),
                      "a schema finds the same twice");
        for (const validation::Finding& finding : once)
            fuzz::require(!finding.text.empty(), "findings have words");
    });
    return 0;
}
