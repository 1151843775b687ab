#include "cli/inputs.h"

namespace tarvo::cli {

namespace {

std::vector<std::string> s_inputs;

}  // namespace

void noteInput(const std::string& fileName) {
    s_inputs.push_back(fileName);
}

const std::vector<std::string>& inputs() {
    return s_inputs;
}

}  // namespace tarvo::cli
