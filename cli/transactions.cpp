// qrbtool transactions: the states of a database that are kept.

#include "cli/transactions.h"

#include "cli/actions.h"
#include "cli/answer.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/number.h"
#include "cli/output.h"
#include "cli/texttable.h"
#include "numbers/sizetext.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::Transaction;
using qrb::pointcloud::Transactions;

struct TransactionOptions {
    std::uint32_t id = 0;  // 0: the current one
    std::vector<std::uint32_t> ids;
};

void listTransactions(const Transactions& transactions) {
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
    print(manner().json ? json.text() : table.text());
}

void showTransaction(const Transactions& transactions, const TransactionOptions& options) {
    const std::uint32_t current = transactions.current();
    const Transaction one = transactions.details(options.id == 0 ? current : options.id);
    const std::uint64_t size = transactions.size({one.id});
    if (manner().json) {
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
          labelled("Committed", one.stop) + labelled("Alone holds", sizeInWords(size)) +
          labelled("Comments", one.comments) +
          labelled("Settings", settings.empty() ? one.settings : settings));
}

void restoreTransaction(Transactions& transactions, std::uint32_t id) {
    transactions.restore(id);
    answer("The database is at transaction " + std::to_string(id) + ".",
           [&](JsonText& json) { json.member("current", id); });
}

void discardTransactions(Transactions& transactions, const std::vector<std::uint32_t>& ids) {
    const std::uint64_t size = transactions.size(ids);
    transactions.discard(ids);
    answer(counted(ids.size(), "transaction") + " forgotten, about " + sizeInWords(size) +
               " for vacuum to give back.",
           [&](JsonText& json) {
               json.member("forgotten", static_cast<std::uint64_t>(ids.size()));
               json.member("size", size);
           });
}

}  // namespace

void addTransactionsCommand(CLI::App& app, Invocation& invocation) {
    CLI::App* const command = app.add_subcommand(
        "transactions", "List, show, restore and forget states; make several changes in one");
    addDatabaseFile(*command, invocation);
    const Actions<TransactionOptions> actions(*command, invocation);
    const auto addNumber = [&](CLI::App& target, const char* description) {
        return target.add_option("id", actions->id, description)
            ->type_name("ID")
            ->transform(wholeNumber(1));
    };
    const auto addNumbers = [&](CLI::App& target) {
        target.add_option("ids", actions->ids, "Their numbers")
            ->type_name("ID")
            ->transform(wholeNumber(1))
            ->required();
    };
    const auto list = [](Database& database, const TransactionOptions&) {
        listTransactions(database.cloud().transactions());
    };
    actions.add("list", "List them (the default)", list);

    CLI::App* const show = actions.add("show", "Tell all about one",
                                       [](Database& database, const TransactionOptions& given) {
                                           showTransaction(database.cloud().transactions(), given);
                                       });
    addNumber(*show, "Its number (default: the current one)");
    addNumber(*actions.add("restore", "Make the state after it the current one",
                           [](Database& database, const TransactionOptions& given) {
                               restoreTransaction(database.cloud().transactions(), given.id);
                           }),
              "Its number")
        ->required();
    addNumbers(*actions.add("discard", "Forget states; the first and the current one stay",
                            [](Database& database, const TransactionOptions& given) {
                                discardTransactions(database.cloud().transactions(), given.ids);
                            }));
    addNumbers(
        *actions.add("size", "Tell how much only these hold",
                     [](Database& database, const TransactionOptions& given) {
                         const std::uint64_t size = database.cloud().transactions().size(given.ids);
                         answer(manner().bytes ? std::to_string(size) : numbers::sizeText(size),
                                [&](JsonText& json) { json.member("size", size); });
                     }));

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
    actions.otherwise(list);
}

}  // namespace tarvo::cli
