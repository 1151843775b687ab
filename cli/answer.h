// Short answers.
#pragma once

#include "cli/json.h"
#include "cli/manner.h"
#include "cli/output.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace tarvo::cli {

// Writes a sentence for people, or an object for programs. addMembers(JsonText&): adds to it what
// the sentence tells. Throws Failure.
template <typename AddMembers>
void answer(const std::string& sentence, const AddMembers& addMembers) {
    if (!manner().json) {
        print(sentence + "\n");
        return;
    }
    JsonText json;
    json.beginObject();
    addMembers(json);
    json.endObject();
    print(json.text());
}

// Tells by a note how many points came into a database and how long that took, as in "1 point
// imported into "a.qrbx" in 0.1 s.", and with --json in an object.
void tellMade(std::uint64_t points, std::string_view how, const std::string& database,
              std::chrono::steady_clock::time_point begin);

}  // namespace tarvo::cli
