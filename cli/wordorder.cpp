#include "cli/wordorder.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>

namespace tarvo::cli {

namespace {

// Whether the word behind this one, an option, is its value.
bool takesNextWord(const CLI::App& command, const std::string& word) {
    if (word.find('=') != std::string::npos || (!word.starts_with("--") && word.size() > 2)) {
        return false;
    }
    for (const CLI::App* app = &command; app != nullptr; app = app->get_parent()) {
        if (const CLI::Option* const option = app->get_option_no_throw(word)) {
            return option->get_items_expected_max() > 0;
        }
    }
    return false;
}

}  // namespace

std::vector<std::string> inParserOrder(const CLI::App& app, std::vector<std::string> words) {
    const CLI::App* command = &app;
    std::size_t named = 0;  // where the name of the last command stands
    for (std::size_t i = 0; i < words.size() && words[i] != "--"; ++i) {
        if (words[i].size() > 1 && words[i].front() == '-') {
            i += takesNextWord(*command, words[i]) ? 1 : 0;
            continue;
        }
        const auto next = command->get_subcommands(
            [&](const CLI::App* one) { return !words[i].empty() && one->get_name() == words[i]; });
        if (!next.empty()) {
            command = next.front();
            named = i;
            continue;
        }
        const CLI::App* const parent = command->get_parent();
        if (parent != nullptr && parent->get_option_no_throw("file") != nullptr &&
            command->get_option_no_throw("file") == nullptr) {
            const auto at = words.begin() + static_cast<std::ptrdiff_t>(i);
            std::rotate(words.begin() + static_cast<std::ptrdiff_t>(named), at, at + 1);
        }
        break;
    }
    return words;
}

bool isNoFileName(const std::string& word) {
    std::error_code ignored;
    return word.find_first_of("./\\") == std::string::npos &&
           !std::filesystem::exists(word, ignored);
}

}  // namespace tarvo::cli
