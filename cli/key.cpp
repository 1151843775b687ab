#include "cli/key.h"

#include "cli/errors.h"
#include "cli/textfile.h"
#include "cli/words.h"
#include "core/key.h"

#include <CLI/CLI.hpp>

#include <utility>

namespace tarvo::cli {

namespace {

void hide(std::string& text, const std::string& key) {
    constexpr const char* mask = "***";
    for (std::size_t at = 0; !key.empty() && (at = text.find(key, at)) != std::string::npos;) {
        text.replace(at, key.size(), mask);
        at += std::char_traits<char>::length(mask);
    }
}

}  // namespace

std::string withoutKeys(std::string text, const std::vector<std::string>& words) {
    constexpr std::string_view joined = "--key=";
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i].rfind(joined, 0) == 0) {
            hide(text, words[i].substr(joined.size()));
        } else if (i > 0 && words[i - 1] == "--key") {
            hide(text, words[i]);
        } else if (words[i].find("--key") != std::string::npos && words[i].size() > joined.size()) {
            try {
                if (const auto inner = splitWords(words[i]); inner.size() > 1) {
                    text = withoutKeys(std::move(text), inner);
                }
            } catch (const UsageError&) {  // no command line
            }
        }
    }
    return text;
}

void KeyOptions::add(CLI::App& command, bool required) {
    CLI::Option_group* const group = command.add_option_group("Key");
    const auto given = [this](const std::string&) { m_isGiven = true; };
    group->add_option("--key", m_text, "Key of the signature, pairs of hexadecimal digits")
        ->type_name("HEX")
        ->each(given);
    group
        ->add_option(
            "--key-file", m_file,
            "File with such digits, or with the bytes of the key themselves; keeps it out of "
            "the list of processes")
        ->type_name("FILE")
        ->each(given);
    group->require_option(required ? 1 : 0, 1);
}

std::vector<std::uint8_t> KeyOptions::bytes() const {
    std::vector<std::uint8_t> key;
    if (!m_file.empty()) {
        key = core::keyOfFile(readTextFile(m_file));
    } else {
        try {
            key = core::keyOfText(m_text);
        } catch (const Failure& failure) {
            throw UsageError(failure.what(), failure.details());
        }
    }
    if (key.empty()) {
        throw UsageError("The key is empty.", "It is written as pairs of hexadecimal digits.");
    }
    return key;
}

qrb::pointcloud::Signature KeyOptions::signature() const {
    return m_isGiven ? qrb::pointcloud::Signature{method, bytes()} : qrb::pointcloud::Signature{};
}

}  // namespace tarvo::cli
