// qrbtool finalize and vacuum: give up what is not needed any more.

#include "cli/answer.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/terminal.h"
#include "cli/texttable.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace tarvo::cli {

namespace {

void finalizeDatabase(const Database& database) {
    const auto& transactions = database.cloud().transactions();
    std::vector<std::uint32_t> forgotten = transactions.list();
    const std::uint32_t current = transactions.current();
    const std::uint32_t first = forgotten.empty() ? 0 : forgotten.front();
    std::erase_if(forgotten, [&](std::uint32_t id) { return id == first || id == current; });
    const std::uint64_t size = forgotten.empty() ? 0 : transactions.size(forgotten);
    database.cloud().management().finalize();
    answer(counted(forgotten.size(), "transaction") + " forgotten, about " + sizeInWords(size) +
               " for vacuum to give back.",
           [&](JsonText& json) {
               json.member("forgotten", static_cast<std::uint64_t>(forgotten.size()));
               json.member("size", size);
           });
}

void vacuumDatabase(const Database& database) {
    const std::uint64_t before = database.fileSize();
    {
        ProgressLine progress("Cleaning up " + database.fileName());
        database.cloud().management().vacuum(
            [&progress](int percent) { progress.update(percent / 100.0); });
    }
    const std::uint64_t after = database.fileSize();
    const std::uint64_t given = before - std::min(before, after);
    answer(sizeInWords(given) + " given back, the file has " + sizeInWords(after) + ".",
           [&](JsonText& json) {
               json.member("given_back", given);
               json.member("size", after);
           });
}

}  // namespace

void addFinalizeCommand(CLI::App& app, Invocation& invocation) {
    CLI::App* const command =
        app.add_subcommand("finalize", "Forget all transactions but the first and the current one");
    addDatabaseFile(*command, invocation);
    command->footer(
        "Older states can't be restored afterwards. The changelog stays whole. vacuum gives the\n"
        "space on the disk back.\n"
        "\n"
        "Example:\n"
        "  qrbtool finalize scan.qrbx && qrbtool vacuum scan.qrbx");
    command->callback([&invocation] {
        invocation.work = [](Database& database) { finalizeDatabase(database); };
    });
}

void addVacuumCommand(CLI::App& app, Invocation& invocation) {
    CLI::App* const command =
        app.add_subcommand("vacuum", "Give the disk space of forgotten states back");
    addDatabaseFile(*command, invocation);
    command->footer(
        "An interrupt stops it at any time: what was given back stays so.\n"
        "\n"
        "Example:\n"
        "  qrbtool vacuum scan.qrbx");
    command->callback(
        [&invocation] { invocation.work = [](Database& database) { vacuumDatabase(database); }; });
}

}  // namespace tarvo::cli
