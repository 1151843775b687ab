// Short answers.
#pragma once

#include "cli/json.h"
#include "cli/manner.h"
#include "cli/output.h"

#include <string>

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

}  // namespace tarvo::cli
