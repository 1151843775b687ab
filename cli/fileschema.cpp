#include "cli/fileschema.h"

#include "catalogue/catalogue.h"
#include "cli/errors.h"
#include "cli/textfile.h"

#include <filesystem>
#include <system_error>

namespace tarvo::cli {

namespace {

char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Whether the text ends with the extension; both are taken off from the end.
bool endsWithExtension(std::string_view text, std::string_view extension) {
    while (!extension.empty()) {
        if (extension.ends_with("{C}") || extension.ends_with("{N}")) {
            std::size_t digits = 0;
            while (!text.empty() && text.back() >= '0' && text.back() <= '9') {
                text.remove_suffix(1);
                ++digits;
            }
            if (digits == 0) {
                return false;
            }
            extension.remove_suffix(3);
            continue;
        }
        if (text.empty() || lowerCase(text.back()) != lowerCase(extension.back())) {
            return false;
        }
        text.remove_suffix(1);
        extension.remove_suffix(1);
    }
    return true;
}

}  // namespace

std::string fileSchemaText(const std::string& argument) {
    if (const auto* const entry = catalogue::findSchema(argument)) {
        return entry->json;
    }
    std::error_code error;
    if (argument != "-" && !std::filesystem::exists(argument, error)) {
        throw Failure("\"" + argument + "\" is neither a file schema nor a file.",
                      "\"qrbtool schema\" lists the file schemas.");
    }
    return readTextFile(argument);
}

std::string guessFileSchema(std::string_view fileName) {
    const catalogue::SchemaEntry* best = nullptr;
    for (const auto& entry : catalogue::schemas()) {
        if (endsWithExtension(fileName, entry.extension) &&
            (best == nullptr || entry.extension.size() > best->extension.size())) {
            best = &entry;
        }
    }
    return best != nullptr ? best->identifier : "";
}

}  // namespace tarvo::cli
