// qrbtool changelog: what was done to a database.

#include "cli/actions.h"
#include "cli/answer.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/key.h"
#include "cli/output.h"
#include "cli/terminal.h"
#include "cli/text.h"
#include "cli/textfile.h"
#include "core/changelogentries.h"
#include "files/identity.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <memory>
#include <optional>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::Changelog;

struct ChangelogOptions {
    std::string text;
    std::string file;
    std::string entry;  // "NUMBER" or "NUMBER/K"
    KeyOptions key;
};

struct EntryName {
    std::uint32_t number = 0;
    std::size_t place = 0;  // from 1 on; 0: the last
};

std::optional<EntryName> entryName(std::string_view text) {
    const auto whole = [](std::string_view digits, auto& number) {
        const char* const end = digits.data() + digits.size();
        const auto [next, error] = std::from_chars(digits.data(), end, number);
        return error == std::errc() && next == end && number > 0;
    };
    EntryName name;
    const std::size_t slash = text.find('/');
    const bool isName =
        whole(text.substr(0, slash), name.number) &&
        (slash == std::string_view::npos || whole(text.substr(slash + 1), name.place));
    return isName ? std::optional(name) : std::nullopt;
}

// "NUMBER": the last entry of that number, which is the database's own where others were imported;
// "NUMBER/K": the Kth of them.
std::string readEntry(const Changelog& changelog, const std::string& which) {
    const EntryName name = *entryName(which);
    const std::uint32_t number = name.number;
    const std::string text = core::readChangelog(changelog);
    std::vector<core::ChangelogEntry> entries = core::changelogEntries(text);
    std::erase_if(entries, [&](const auto& one) { return one.number != number; });
    if (entries.empty()) {
        throw Failure("The changelog has no entry " + std::to_string(number) + ".");
    }
    if (name.place > entries.size()) {
        throw Failure("The changelog has " + std::to_string(entries.size()) + " entries " +
                      std::to_string(number) + " only.");
    }
    if (name.place == 0 && entries.size() > 1) {
        note("The changelog has " + std::to_string(entries.size()) + " entries " +
             std::to_string(number) + ", others being imported; this is the last one. \"--entry " +
             std::to_string(number) + "/1\" names the first.");
    }
    const core::ChangelogEntry& entry = name.place == 0 ? entries.back() : entries[name.place - 1];
    return text.substr(entry.begin, entry.end - entry.begin);
}

std::string entriesJson(const std::string& text) {
    JsonText json;
    json.beginArray();
    for (const core::ChangelogEntry& entry : core::changelogEntries(text)) {
        json.beginObject();
        json.member("number", entry.number);
        json.member("text", text.substr(entry.begin, entry.end - entry.begin));
        json.endObject();
    }
    json.endArray();
    return json.text();
}

void showChangelog(const Database& database, const ChangelogOptions& options) {
    const Changelog& changelog = database.cloud().changelog();
    const std::string text = options.entry.empty() ? core::readChangelog(changelog)
                                                   : readEntry(changelog, options.entry);
    print(manner().json ? entriesJson(text) : printable(text));
}

void appendMessage(Database& database, const ChangelogOptions& options) {
    const std::string text = textOfArgument(options.text);
    database.change({"Append to the changelog"},
                    [&] { database.cloud().changelog().appendMessage(text); });
}

void exportChangelog(const Database& database, const ChangelogOptions& options) {
    const std::string text = core::readChangelog(database.cloud().changelog());
    const bool isAnswer = manner().json && isStandardOutput(options.file);
    writeAnswer(database, options.file, isAnswer ? entriesJson(text) : text);
}

void importChangelog(Database& database, const ChangelogOptions& options) {
    if (files::sameFile(options.file, database.fileName())) {
        throw UsageError("\"" + options.file + "\" is the database itself.",
                         "Name another one, whose changelog shall stand before its own.");
    }
    database.change({"Import a changelog"},
                    [&] { database.cloud().changelog().importFromDatabase(options.file); });
    answer("The changelog of \"" + options.file + "\" stands before this one.",
           [&](JsonText& json) { json.member("imported", options.file); });
}

void verifyEntry(const Database& database, const ChangelogOptions& options) {
    const std::string entry = readEntry(database.cloud().changelog(), options.entry);
    const bool valid = Changelog::verifyLogEntry(entry, KeyOptions::method, options.key.bytes());
    answer(
        valid ? "Signature successfully verified." : "No valid signature found or wrong key given.",
        [&](JsonText& json) { json.member("valid", valid); });
    if (!valid) {
        throw NegativeAnswer();
    }
}

}  // namespace

void addChangelogCommand(CLI::App& app, Invocation& invocation) {
    CLI::App* const command =
        app.add_subcommand("changelog", "Show, extend, export and verify the changelog");
    addDatabaseFile(*command, invocation);
    const Actions<ChangelogOptions> actions(*command, invocation);
    const auto addEntry = [&](CLI::App& target, const char* description) {
        return target.add_option("--entry", actions->entry, description)
            ->type_name("NUMBER[/K]")
            ->check([](const std::string& text) -> std::string {
                return entryName(text) ? ""
                                       : "\"" + text +
                                             "\" is not a whole number from 1 to 4294967295, or "
                                             "two such as 3/1.";
            });
    };
    addEntry(*actions.add("show", "Write it (the default)", showChangelog),
             "Only the entry of this transaction; the Kth where several have the number");
    actions.add("append", "Add a message", appendMessage)
        ->add_option("text", actions->text, "The message, @FILE or - for the standard input")
        ->type_name("TEXT")
        ->required();
    actions.add("export", "Write it into a text file", exportChangelog)
        ->add_option("out", actions->file, "The file to write")
        ->type_name("OUT")
        ->required();
    actions.add("import", "Put the changelog of another database before it", importChangelog)
        ->add_option("other", actions->file, "The other database")
        ->type_name("OTHER")
        ->required();
    CLI::App* const verify =
        actions.add("verify", "Tell whether the signature of an entry is valid", verifyEntry);
    addEntry(*verify, "Number of its transaction; the Kth where several have the number")
        ->required();
    actions->key.add(*verify, true);
    command->footer(
        "Each transaction has an entry. \"transactions run ... --key\" signs one.\n"
        "\n"
        "Examples:\n"
        "  qrbtool changelog scan.qrbx\n"
        "  qrbtool changelog scan.qrbx append \"Checked by the surveyor\"\n"
        "  qrbtool changelog scan.qrbx verify --entry 4 --key-file my.key");
    actions.otherwise(showChangelog);
}

}  // namespace tarvo::cli
