// The schema of a file type: which attributes and metadata items its files have.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvo::engine::validation {

struct FileSchema {
    struct Item {
        std::string name;
        bool optional = false;  // "NAME?"
        bool primary = false;   // "NAME*", attributes only, at most one
    };
    std::string identifier;
    std::string extension;
    std::vector<Item> attributes;
    std::vector<Item> metaData;

    // Null: any attribute may be the primary one.
    const Item* primary() const;
};

// Reads {"identifier", "extension", "attributes", "metadata"}. Throws Failure(Argument) that says
// what is wrong.
FileSchema readFileSchema(std::string_view json);

}  // namespace tarvo::engine::validation
