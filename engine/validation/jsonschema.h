// Checks JSON texts against JSON schemas (draft 7). Both may be hostile: what takes too long, nests
// too deep or refers to other places is refused.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::engine::validation {

struct Finding {
    std::string pointer;   // JSON pointer (RFC 6901) of the place in the value; empty: the whole
    std::string keyword;   // of the schema that is not satisfied; empty: none
    std::string expected;  // in words, "a string"; empty where the text says more
    std::string found;
    std::string text;  // one line, such as "expected a string, found a number"
};

// "/frame/units: expected a string, found a number"
std::string toLine(const Finding& finding);

// A schema, ready to check values. One thread at a time.
class JsonSchema {
public:
    // Throws Failure(Argument) with the place of the fault. what: names the schema in messages.
    explicit JsonSchema(std::string_view text, std::string_view what = "The JSON schema");
    ~JsonSchema();

    // What is wrong with a JSON text, in the order of the text, each once; of very many faults
    // a thousand, and first that there are more. Throws Failure(Argument) for a text that is no
    // JSON.
    std::vector<Finding> check(std::string_view text, std::string_view what = "The value") const;

    // What the schema asks for and nobody checks, a line each: unknown formats.
    std::vector<std::string> notes() const;

private:
    struct Private;
    std::unique_ptr<Private> m_private;
};

}  // namespace tarvo::engine::validation
