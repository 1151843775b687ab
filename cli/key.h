// Keys of signatures on the command line. They are never written anywhere.
#pragma once

#include "qrb/transactions.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace tarvo::cli {

// A text without the keys that stand behind --key among the words, nor within words that are
// command lines themselves; for messages that repeat what was given.
std::string withoutKeys(std::string text, const std::vector<std::string>& words);

// The options --key and --key-file of a command.
class KeyOptions {
public:
    // The object must outlive the command.
    void add(CLI::App& command, bool required);

    // Throws UsageError for a text that is no key and for a key of no bytes, Failure for a file that
    // can't be read.
    std::vector<std::uint8_t> bytes() const;
    // To commit with: signed if a key is given. Throws as bytes().
    qrb::pointcloud::Signature signature() const;

    // How transactions are signed with a key.
    static constexpr std::uint32_t method = 1;

private:
    bool m_isGiven = false;  // be it empty
    std::string m_text;
    std::string m_file;
};

}  // namespace tarvo::cli
