// qrbtool transactions: the states of a database that are kept.

#include "cli/transactions.h"

#include "cli/commands.h"
#include "cli/database.h"
#include "cli/json.h"
#include "cli/number.h"
#include "cli/output.h"
#include "cli/texttable.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::Transaction;
using qrb::pointcloud::Transactions;

struct TransactionOptions {
    bool json = false;
    std::uint32_t id = 0;  // 0: the current one
    std::vector<std::uint32_t> ids;
};

void listTransactions(const Transactions& transactions, bool asJson) {
    const std::uint32_t current = transactions.current();
    JsonText json;
    json.beginArray();
    TextTable table({{""}, {"Number", true}, {"Committed"}, {"Title"}, {"Agent"}});
    for (const std::uint32_t id : transactions.list()) {
        const Transaction one = transactions.details(id);
        json.beginObject();
        json.member("id", one.id);
        json.member("current", id == current);
        json.member("title", one.title);
        json.member("agent", one.agent);
        json.member("start", one.start);
        json.member("stop", one.stop);
        json.endObject();
        table.add({id == current ? "*" : "", std::to_string(id), one.stop, one.title, one.agent});
    }
    json.endArray();
    print(asJson ? json.text() : table.text());
}

void showTransaction(const Transactions& transactions, const TransactionOptions& options) {
    const std::uint32_t current = transactions.current();
    const Transaction one = transactions.details(options.id == 0 ? current : options.id);
    const std::uint64_t size = transactions.size({one.id});
    if (options.json) {
        JsonText json;
        json.beginObject();
        json.member("id", one.id);
        json.member("current", one.id == current);
        json.member("title", one.title);
        json.member("agent", one.agent);
        json.member("library", one.qrb);
        json.member("start", one.start);
        json.member("stop", one.stop);
        json.member("comments", one.comments);
        json.member("settings", one.settings);
        json.member("size", size);
        json.endObject();
        print(json.text());
        return;
    }
    const std::string settings = indentedJson(one.settings);
    print(labelled("Number", std::to_string(one.id) + (one.id == current ? " (current)" : "")) +
          labelled("Title", one.title) + labelled("Agent", one.agent) +
          labelled("Library", one.qrb) + labelled("Begun", one.start) +
          labelled("Committed", one.stop) + labelled("Alone holds", counted(size, "byte")) +
          labelled("Comments", one.comments) +
          labelled("Settings", settings.empty() ? one.settings : settings));
}

void restoreTransaction(Transactions& transactions, std::uint32_t id) {
    transactions.restore(id);
    print("The database is at transaction " + std::to_string(id) + ".\n");
}

void discardTransactions(Transactions& transactions, const std::vector<std::uint32_t>& ids) {
    const std::uint64_t size = transactions.size(ids);
    transactions.discard(ids);
    print(counted(ids.size(), "transaction") + " forgotten, " + counted(size, "byte") +
          " for vacuum to give back.\n");
}

}  // namespace

void addTransactionsCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<TransactionOptions>();
    CLI::App* const command = app.add_subcommand(
        "transactions", "List, show, restore and forget states; make several changes in one");
    addDatabaseFile(*command, invocation);
    command->require_subcommand(0, 1);
    const auto addJson = [&options](CLI::App& target) {
        target.add_flag("--json", options->json, "Write JSON, for programs");
    };
    const auto list = [options](Database& database) {
        listTransactions(database.cloud().transactions(), options->json);
    };
    addJson(*command);
    CLI::App* const listing = command->add_subcommand("list", "List them (the default)");
    addJson(*listing);

    CLI::App* const show = command->add_subcommand("show", "Tell all about one");
    show->add_option("id", options->id, "Its number (default: the current one)")
        ->type_name("ID")
        ->transform(wholeNumber(1));
    addJson(*show);
    show->callback([options, &invocation] {
        invocation.work = [options](Database& database) {
            showTransaction(database.cloud().transactions(), *options);
        };
    });

    CLI::App* const restore =
        command->add_subcommand("restore", "Make the state after it the current one");
    restore->add_option("id", options->id, "Its number")
        ->type_name("ID")
        ->transform(wholeNumber(1))
        ->required();
    restore->callback([options, &invocation] {
        invocation.work = [options](Database& database) {
            restoreTransaction(database.cloud().transactions(), options->id);
        };
    });

    CLI::App* const discard =
        command->add_subcommand("discard", "Forget states; the first and the current one stay");
    discard->add_option("ids", options->ids, "Their numbers")
        ->type_name("ID")
        ->transform(wholeNumber(1))
        ->required();
    discard->callback([options, &invocation] {
        invocation.work = [options](Database& database) {
            discardTransactions(database.cloud().transactions(), options->ids);
        };
    });

    CLI::App* const size = command->add_subcommand("size", "Tell the bytes that only these hold");
    size->add_option("ids", options->ids, "Their numbers")
        ->type_name("ID")
        ->transform(wholeNumber(1))
        ->required();
    size->callback([options, &invocation] {
        invocation.work = [options](Database& database) {
            print(std::to_string(database.cloud().transactions().size(options->ids)) + "\n");
        };
    });

    addTransactionRunCommand(*command, invocation);
    command->footer(
        "Every change of a database is a transaction; it keeps the state after it until that is\n"
        "forgotten. * marks the current one.\n"
        "\n"
        "Examples:\n"
        "  qrbtool transactions scan.qrbx\n"
        "  qrbtool transactions scan.qrbx show 3\n"
        "  qrbtool transactions scan.qrbx restore 2\n"
        "  qrbtool transactions scan.qrbx discard 3 4 && qrbtool vacuum scan.qrbx\n"
        "  qrbtool transactions run scan.qrbx --title \"Ground\" -- \\\n"
        "      \"update --set tarvo.class=2 --filter 'tarvo.xyz[2] < 1'\" \\\n"
        "      \"metadata set tarvo.geo_tag @tag.json\"");
    command->callback([command, list, &invocation] {
        const auto given = command->get_subcommands();
        if (given.empty() || given.front()->get_name() == "list") {
            invocation.work = list;
        }
    });
}

}  // namespace tarvo::cli
