// qrbtool metadata: the named JSON texts of a database.

#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/findings.h"
#include "cli/json.h"
#include "cli/metadatafile.h"
#include "cli/metadatasignature.h"
#include "cli/output.h"
#include "cli/textfile.h"
#include "cli/texttable.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::MetaData;

struct MetaDataOptions {
    bool json = false;
    bool anyText = false;
    std::string name;
    std::vector<std::string> names;
    std::string value;
    std::string target;
    std::string schema;
};

void listMetaData(const MetaData& metaData, bool asJson) {
    JsonText json;
    json.beginArray();
    TextTable table({{"Name"}, {"Bytes", true}, {"Signed"}});
    for (const std::string& name : metaData.list()) {
        const std::uint64_t size = metaData.get(name).size();
        const bool isSigned = metaData.verifySignature(name, 0, {});
        json.beginObject();
        json.member("name", name);
        json.member("size", size);
        json.member("signed", isSigned);
        json.endObject();
        table.add({name, std::to_string(size), isSigned ? "yes" : ""});
    }
    json.endArray();
    print(asJson ? json.text() : table.text());
}

void requireItem(const MetaData& metaData, const std::string& name) {
    if (!metaData.exists(name)) {
        throw Failure("The database has no metadata item \"" + name + "\".",
                      "\"qrbtool metadata FILE\" lists the items.");
    }
}

void getMetaData(const MetaData& metaData, const std::string& name) {
    requireItem(metaData, name);
    std::string value = metaData.get(name);
    if (value.empty() || value.back() != '\n') {
        value += '\n';
    }
    print(value);
}

void setMetaData(Database& database, const std::string& name, const std::string& argument,
                 bool anyText) {
    const std::string value = textOfArgument(argument);
    if (!anyText) {
        // Any value agrees with the empty schema, but it must be JSON.
        database.cloud().metaData().validateJson(value, "{}");
    }
    database.change({"Set metadata item " + name},
                    [&] { database.cloud().metaData().set(name, value); });
}

void removeMetaData(Database& database, const std::vector<std::string>& names) {
    database.change({"Remove metadata"}, [&] {
        for (const std::string& name : names) {
            database.cloud().metaData().remove(name);
        }
    });
    print(counted(names.size(), "item") + " removed.\n");
}

void importMetaData(Database& database, const std::vector<std::string>& files) {
    core::MetaDataImport result(database.cloud().metaData());
    std::vector<std::string> skipped;
    database.change({"Import metadata"}, [&] {
        for (const std::string& file : files) {
            for (const std::string& name : importMetaDataFile(result, file)) {
                skipped.push_back(name);
            }
        }
    });
    const auto joinedNames = [](const std::vector<std::string>& names) {
        std::string text;
        for (const std::string& name : names) {
            text += (text.empty() ? "" : ", ") + name;
        }
        return text.empty() ? "(none)" : text;
    };
    print(labelled("Items added", joinedNames(result.added)) +
          labelled("Items updated", joinedNames(result.updated)));
    const auto printWhereAny = [&](const char* label, const std::vector<std::string>& names) {
        if (!names.empty()) {
            print(labelled(label, joinedNames(names)));
        }
    };
    printWhereAny("Unchanged", result.unchanged);
    printWhereAny("No longer signed", result.unsignedNow);
    printWhereAny("Skipped", skipped);
}

void validateMetaData(const MetaData& metaData, const MetaDataOptions& options) {
    requireItem(metaData, options.name);
    const std::string schema = options.schema.empty() ? "" : readTextFile(options.schema);
    reportFindings(metaData.findings(options.name, schema), options.json);
}

// Adds a subcommand that works on the open database with the options.
CLI::App* addAction(CLI::App& command, Invocation& invocation, const char* name,
                    const char* description, std::function<void(Database&)> work) {
    CLI::App* const action = command.add_subcommand(name, description);
    action->callback([work = std::move(work), &invocation] { invocation.work = work; });
    return action;
}

}  // namespace

void addMetaDataCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<MetaDataOptions>();
    CLI::App* const command =
        app.add_subcommand("metadata", "List, read, write, sign and check metadata items");
    addDatabaseFile(*command, invocation);
    command->require_subcommand(0, 1);
    const auto list = [options](Database& database) {
        listMetaData(database.cloud().metaData(), options->json);
    };
    command->add_flag("--json", options->json, "Write JSON, for programs");
    addAction(*command, invocation, "list", "List the items (the default)", list)
        ->add_flag("--json", options->json, "Write JSON, for programs");
    addAction(
        *command, invocation, "get", "Write the value of an item",
        [options](Database& database) { getMetaData(database.cloud().metaData(), options->name); })
        ->add_option("name", options->name, "Its name")
        ->type_name("NAME")
        ->required();
    CLI::App* const set =
        addAction(*command, invocation, "set", "Write an item", [options](Database& database) {
            setMetaData(database, options->name, options->value, options->anyText);
        });
    set->add_flag("--text", options->anyText, "Take the value even when it is not JSON");
    set->add_option("name", options->name, "Its name")->type_name("NAME")->required();
    set->add_option("value", options->value,
                    "JSON text, @FILE for what a file holds, - for the standard input")
        ->type_name("VALUE")
        ->required();
    addAction(*command, invocation, "remove", "Remove items",
              [options](Database& database) { removeMetaData(database, options->names); })
        ->add_option("names", options->names, "Their names")
        ->type_name("NAME")
        ->required();
    addAction(*command, invocation, "export", "Write items to a file or folder",
              [options](Database& database) {
                  exportMetaData(database, options->target, options->names);
              });
    CLI::App* const exporting = command->get_subcommand("export");
    exporting
        ->add_option("target", options->target,
                     "JSON file for all of them, or a folder, where each gets a file")
        ->type_name("TARGET")
        ->required();
    exporting->add_option("names", options->names, "Names (default: all)")->type_name("NAME");
    addAction(*command, invocation, "import", "Write the items that such files hold",
              [options](Database& database) { importMetaData(database, options->names); })
        ->add_option("files", options->names, "JSON files")
        ->type_name("FILE")
        ->required();
    addMetaDataSignatureCommands(*command, invocation);
    CLI::App* const validate = addAction(
        *command, invocation, "validate", "Check an item against a JSON schema",
        [options](Database& database) { validateMetaData(database.cloud().metaData(), *options); });
    validate->add_option("name", options->name, "Its name")->type_name("NAME")->required();
    validate
        ->add_option("--schema", options->schema,
                     "File of a JSON schema (default: that of the default item of this name)")
        ->type_name("FILE");
    validate->add_flag("--json", options->json, "Write the problems as JSON");
    command->footer(
        "Values are JSON. A file of items is one JSON object with a member per item, as the "
        "window\n"
        "writes it. \"validate\" and \"verify\" end with 1 if the answer is no.\n"
        "\n"
        "Examples:\n"
        "  qrbtool metadata scan.qrbx\n"
        "  qrbtool metadata scan.qrbx set tarvo.geo_tag @tag.json\n"
        "  qrbtool metadata scan.qrbx export scan.meta.json\n"
        "  qrbtool metadata scan.qrbx sign tarvo.geo_tag --key-file my.key");
    command->callback([command, list, &invocation] {
        if (command->get_subcommands().empty()) {
            invocation.work = list;
        }
    });
}

}  // namespace tarvo::cli
