// qrbtool schema: file schemas, and databases made from them.

#include "catalogue/catalogue.h"
#include "cli/answer.h"
#include "cli/commands.h"
#include "cli/errors.h"
#include "cli/fileschema.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/output.h"
#include "cli/textfile.h"
#include "cli/texttable.h"
#include "core/newdatabase.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace tarvo::cli {

namespace {

struct SchemaOptions {
    std::string schema;
    std::string file;
    std::string settings;
    bool optionals = false;
    bool overwrite = false;
};

void listSchemas() {
    JsonText json;
    json.beginArray();
    TextTable table({{"Identifier"}, {"Extension"}});
    for (const auto& entry : catalogue::schemas()) {
        json.raw(entry.json);
        table.add({entry.identifier, entry.extension});
    }
    json.endArray();
    print(manner().json ? json.text() : table.text());
}

void showSchema(const std::string& identifier) {
    const std::string text = fileSchemaText(identifier);
    const std::string indented = indentedJson(text);
    print((indented.empty() ? text : indented) + "\n");
}

void createBySchema(const qrb::Context& context, const SchemaOptions& options) {
    const std::string schema = fileSchemaText(options.schema);
    qrb::pointcloud::CreateSettings settings(context);
    if (!options.settings.empty()) {
        settings.fromJson(readTextFile(options.settings));
    }
    core::NewDatabase database(context, options.file, options.overwrite, overwriteAdvice);
    database.create(settings, schema, options.optionals);
    database.publish();
    answer("\"" + options.file + "\" is made.",
           [&](JsonText& json) { json.member("database", options.file); });
}

}  // namespace

void addSchemaCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<SchemaOptions>();
    CLI::App* const command =
        app.add_subcommand("schema", "List file schemas, make empty databases from them");
    command->require_subcommand(0, 1);
    const auto list = [&invocation] {
        invocation.run = [](const qrb::Context&) { listSchemas(); };
    };
    CLI::App* const listing = command->add_subcommand("list", "List them (the default)");
    listing->callback(list);
    CLI::App* const show = command->add_subcommand("show", "Write one (JSON)");
    show->add_option("identifier", options->schema, "Its identifier")
        ->type_name("SCHEMA")
        ->required();
    show->callback([options, &invocation] {
        invocation.run = [options](const qrb::Context&) { showSchema(options->schema); };
    });
    CLI::App* const create = command->add_subcommand("create", "Make an empty database");
    create->add_option("file", options->file, "The database to make")
        ->type_name("FILE")
        ->required();
    create->add_option("--schema", options->schema, "Identifier of a file schema, or a file")
        ->type_name("SCHEMA")
        ->required();
    create->add_flag("--optionals", options->optionals,
                     "With the optional attributes and metadata items too");
    create
        ->add_option("--settings", options->settings,
                     "File with creation settings (JSON), as the window saves them")
        ->type_name("FILE");
    create->add_flag("--overwrite", options->overwrite, "Replace an existing database");
    create->callback([options, &invocation] {
        invocation.run = [options](const qrb::Context& context) {
            createBySchema(context, *options);
        };
    });
    command->footer(
        "A file schema tells the attributes and metadata items that a type of file has; a * marks\n"
        "the primary attribute, a ? what is optional.\n"
        "\n"
        "Examples:\n"
        "  qrbtool schema\n"
        "  qrbtool schema show sdcx\n"
        "  qrbtool schema create scan.sdcx --schema sdcx --optionals");
    command->callback([command, list] {
        if (command->get_subcommands().empty()) {
            list();
        }
    });
}

}  // namespace tarvo::cli
