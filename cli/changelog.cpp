// qrbtool changelog: what was done to a database.

#include "cli/changelogentries.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/key.h"
#include "cli/number.h"
#include "cli/output.h"
#include "cli/temporaryfolder.h"
#include "cli/text.h"
#include "cli/textfile.h"
#include "files/identity.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::Changelog;

struct ChangelogOptions {
    std::string text;
    std::string file;
    std::uint32_t entry = 0;
    bool hasEntry = false;
    KeyOptions key;
};

// The library writes the changelog into files only.
std::string readChangelog(const Changelog& changelog) {
    const TemporaryFolder folder;
    const std::string file = folder.file("changelog.txt");
    changelog.exportToTextfile(file);
    return readTextFile(file);
}

std::string readEntry(const Changelog& changelog, std::uint32_t number) {
    const std::string entry = changelogEntryOf(readChangelog(changelog), number);
    if (entry.empty()) {
        throw Failure("The changelog has no entry " + std::to_string(number) + ".");
    }
    return entry;
}

void showChangelog(const Database& database, const ChangelogOptions& options) {
    const Changelog& changelog = database.cloud().changelog();
    print(printable(options.hasEntry ? readEntry(changelog, options.entry)
                                     : readChangelog(changelog)));
}

void appendMessage(Database& database, const ChangelogOptions& options) {
    const std::string text = textOfArgument(options.text);
    database.change({"Append to the changelog"},
                    [&] { database.cloud().changelog().appendMessage(text); });
}

void exportChangelog(const Database& database, const ChangelogOptions& options) {
    writeAnswer(database, options.file, readChangelog(database.cloud().changelog()));
}

void importChangelog(Database& database, const ChangelogOptions& options) {
    if (files::sameFile(options.file, database.fileName())) {
        throw UsageError("\"" + options.file + "\" is the database itself.",
                         "Name another one, whose changelog shall stand before its own.");
    }
    database.change({"Import a changelog"},
                    [&] { database.cloud().changelog().importFromDatabase(options.file); });
    print("The changelog of \"" + options.file + "\" stands before this one.\n");
}

void verifyEntry(const Database& database, const ChangelogOptions& options) {
    const std::string entry = readEntry(database.cloud().changelog(), options.entry);
    const bool valid = Changelog::verifyLogEntry(entry, KeyOptions::method, options.key.bytes());
    print(valid ? "Signature successfully verified.\n"
                : "No valid signature found or wrong key given.\n");
    if (!valid) {
        throw NegativeAnswer();
    }
}

}  // namespace

void addChangelogCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<ChangelogOptions>();
    CLI::App* const command =
        app.add_subcommand("changelog", "Show, extend, export and verify the changelog");
    addDatabaseFile(*command, invocation);
    command->require_subcommand(0, 1);
    const auto addAction = [&](const char* name, const char* description, auto work) {
        CLI::App* const action = command->add_subcommand(name, description);
        action->callback([work, options, &invocation] {
            invocation.work = [work, options](Database& database) { work(database, *options); };
        });
        return action;
    };
    const auto addEntry = [&](CLI::App& target, const char* description) {
        return target.add_option("--entry", options->entry, description)
            ->type_name("NUMBER")
            ->transform(wholeNumber(1));
    };
    CLI::App* const show = addAction("show", "Write it (the default)", showChangelog);
    CLI::Option* const shown = addEntry(*show, "Only the entry of this transaction");
    show->callback([shown, options, &invocation] {
        options->hasEntry = shown->count() > 0;
        invocation.work = [options](Database& database) { showChangelog(database, *options); };
    });
    addAction("append", "Add a message", appendMessage)
        ->add_option("text", options->text, "The message, @FILE or - for the standard input")
        ->type_name("TEXT")
        ->required();
    addAction("export", "Write it into a text file", exportChangelog)
        ->add_option("out", options->file, "The file to write")
        ->type_name("OUT")
        ->required();
    addAction("import", "Put the changelog of another database before it", importChangelog)
        ->add_option("other", options->file, "The other database")
        ->type_name("OTHER")
        ->required();
    CLI::App* const verify =
        addAction("verify", "Tell whether the signature of an entry is valid", verifyEntry);
    addEntry(*verify, "Number of its transaction")->required();
    options->key.add(*verify, true);
    command->footer(
        "Each transaction has an entry. \"transactions run ... --key\" signs one.\n"
        "\n"
        "Examples:\n"
        "  qrbtool changelog scan.qrbx\n"
        "  qrbtool changelog scan.qrbx append \"Checked by the surveyor\"\n"
        "  qrbtool changelog scan.qrbx verify --entry 4 --key-file my.key");
    command->callback([command, options, &invocation] {
        if (command->get_subcommands().empty()) {
            invocation.work = [options](Database& database) { showChangelog(database, *options); };
        }
    });
}

}  // namespace tarvo::cli
