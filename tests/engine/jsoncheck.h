// What the check of a value against a JSON schema finds, and why one is refused, as texts.
#pragma once

#include "engine/base/error.h"
#include "engine/validation/jsonschema.h"

#include <gtest/gtest.h>

#include <string>

namespace tarvo::engine::validation {

// The findings, a line each.
inline std::string check(const std::string& schema, const std::string& value) {
    std::string lines;
    for (const Finding& finding : JsonSchema(schema).check(value))
        lines += toLine(finding) + "\n";
    return lines;
}

inline std::string refusal(const std::string& schema, const std::string& value = "1") {
    try {
        return "not refused: " + check(schema, value);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::Argument);
        return std::string(failure.what()) + " " + failure.details();
    }
}

}  // namespace tarvo::engine::validation
