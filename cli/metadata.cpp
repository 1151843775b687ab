// qrbtool metadata: the named JSON texts of a database.

#include "cli/answer.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/findings.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/metadatafile.h"
#include "cli/metadatasignature.h"
#include "cli/output.h"
#include "cli/textfile.h"
#include "cli/texttable.h"
#include "core/json.h"
#include "core/utf8.h"
#include "numbers/sizetext.h"

#include <CLI/CLI.hpp>
#include "cli/actions.h"

#include <memory>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::MetaData;

struct MetaDataOptions {
    bool anyText = false;
    std::string name;
    std::vector<std::string> names;
    std::string value;
    std::string target;
    std::string schema;
};

void listMetaData(const MetaData& metaData) {
    JsonText json;
    json.beginArray();
    TextTable table({{"Name"}, {manner().bytes ? "Bytes" : "Size", true}, {"Signed"}});
    for (const std::string& name : metaData.list()) {
        const std::uint64_t size = metaData.get(name).size();
        const bool isSigned = metaData.verifySignature(name, 0, {});
        json.beginObject();
        json.member("name", name);
        json.member("size", size);
        json.member("signed", isSigned);
        json.endObject();
        table.add({name, manner().bytes ? std::to_string(size) : numbers::sizeText(size),
                   isSigned ? "yes" : ""});
    }
    json.endArray();
    print(manner().json ? json.text() : table.text());
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
    if (manner().json && !core::isJson(value)) {
        JsonText json;
        json.value(value);
        value = json.text();
    }
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
    database.change({"Set metadata item " + core::validUtf8(name)},
                    [&] { database.cloud().metaData().set(name, value); });
}

void removeMetaData(Database& database, const std::vector<std::string>& names) {
    database.change({"Remove metadata"}, [&] {
        for (const std::string& name : names) {
            database.cloud().metaData().remove(name);
        }
    });
    answer(counted(names.size(), "item") + " removed.",
           [&](JsonText& json) { json.member("removed", names); });
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
    std::string text = labelled("Items added", joinedNames(result.added)) +
                       labelled("Items updated", joinedNames(result.updated));
    const auto addWhereAny = [&](const char* label, const std::vector<std::string>& names) {
        text += names.empty() ? "" : labelled(label, joinedNames(names));
    };
    addWhereAny("Unchanged", result.unchanged);
    addWhereAny("No longer signed", result.unsignedNow);
    addWhereAny("Skipped", skipped);
    text.pop_back();
    answer(text, [&](JsonText& json) {
        json.member("added", result.added);
        json.member("updated", result.updated);
        json.member("unchanged", result.unchanged);
        json.member("no_longer_signed", result.unsignedNow);
        json.member("skipped", skipped);
    });
}

void validateMetaData(const MetaData& metaData, const MetaDataOptions& options) {
    requireItem(metaData, options.name);
    const std::string schema = options.schema.empty() ? "" : readTextFile(options.schema);
    reportFindings(metaData.findings(options.name, schema));
}

}  // namespace

void addMetaDataCommand(CLI::App& app, Invocation& invocation) {
    CLI::App* const command =
        app.add_subcommand("metadata", "List, read, write, sign and check metadata items");
    addDatabaseFile(*command, invocation);
    const Actions<MetaDataOptions> actions(*command, invocation);
    const auto list = [](Database& database, const MetaDataOptions&) {
        listMetaData(database.cloud().metaData());
    };
    actions.add("list", "List the items (the default)", list);
    actions
        .add("get", "Write the value of an item",
             [](Database& database, const MetaDataOptions& given) {
                 getMetaData(database.cloud().metaData(), given.name);
             })
        ->add_option("name", actions->name, "Its name")
        ->type_name("ITEM")
        ->required();
    CLI::App* const set =
        actions.add("set", "Write an item", [](Database& database, const MetaDataOptions& given) {
            setMetaData(database, given.name, given.value, given.anyText);
        });
    set->add_flag("--text", actions->anyText, "Take the value even when it is not JSON");
    set->add_option("name", actions->name, "Its name")->type_name("ITEM")->required();
    set->add_option("value", actions->value,
                    "JSON text, @FILE for what a file holds, - for the standard input")
        ->type_name("VALUE")
        ->required();
    actions
        .add("remove", "Remove items",
             [](Database& database, const MetaDataOptions& given) {
                 removeMetaData(database, given.names);
             })
        ->add_option("names", actions->names, "Their names")
        ->type_name("ITEM")
        ->required();
    actions.add("export", "Write items to a file or folder",
                [](Database& database, const MetaDataOptions& given) {
                    exportMetaData(database, given.target, given.names);
                });
    CLI::App* const exporting = command->get_subcommand("export");
    exporting
        ->add_option("target", actions->target,
                     "JSON file for all of them, or a folder, where each gets a file")
        ->type_name("TARGET")
        ->required();
    exporting->add_option("names", actions->names, "Names (default: all)")->type_name("ITEM");
    actions
        .add("import", "Write the items that such files hold",
             [](Database& database, const MetaDataOptions& given) {
                 importMetaData(database, given.names);
             })
        ->add_option("files", actions->names, "JSON files")
        ->type_name("FILE")
        ->required();
    addMetaDataSignatureCommands(*command, invocation);
    CLI::App* const validate = actions.add("validate", "Check an item against a JSON schema",
                                           [](Database& database, const MetaDataOptions& given) {
                                               validateMetaData(database.cloud().metaData(), given);
                                           });
    validate->add_option("name", actions->name, "Its name")->type_name("ITEM")->required();
    validate
        ->add_option("--schema", actions->schema,
                     "File of a JSON schema (default: that of the default item of this name)")
        ->type_name("FILE");
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
    actions.otherwise(list);
}

}  // namespace tarvo::cli
