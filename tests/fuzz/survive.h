// What a fuzzer takes for an answer: success, or a failure with a text that is not the library's
// own fault. Anything else ends the program, which the fuzzer reports.
#pragma once

#include "engine/base/error.h"

#include <cstdio>
#include <cstdlib>
#include <functional>

namespace tarvo::fuzz {

// Whether the function came to its end.
inline bool survive(const std::function<void()>& function) {
    try {
        function();
        return true;
    } catch (const engine::Failure& failure) {
        if (failure.code() == engine::ErrorCode::Internal || !*failure.what()) {
            std::fprintf(stderr, "A failure without a cause: %s (%s)\n", failure.what(),
                         failure.details().c_str());
            std::abort();
        }
        // What stands in an input's way, for who makes seeds.
        static const bool tells = std::getenv("QRB_TELL") != nullptr;
        if (tells)
            std::fprintf(stderr, "%s (%s)\n", failure.what(), failure.details().c_str());
        return false;
    }
}

inline void require(bool isTrue, const char* promise) {
    if (isTrue)
        return;
    std::fprintf(stderr, "Broken: %s\n", promise);
    std::abort();
}

}  // namespace tarvo::fuzz
