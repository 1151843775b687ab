// qrbtool validate: compares a database with a file schema.

#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/fileschema.h"
#include "cli/findings.h"
#include "cli/terminal.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace tarvo::cli {

namespace {

struct ValidateOptions {
    std::string schema;  // empty: by the name of the file
    bool strict = false;
};

void runValidate(const Database& database, ValidateOptions options) {
    if (options.schema.empty()) {
        options.schema = guessFileSchema(database.fileName());
        if (options.schema.empty()) {
            throw UsageError("No file schema has the extension of \"" + database.fileName() + "\".",
                             "Name one with --schema; \"qrbtool schema\" lists them.");
        }
        note("Comparing with the file schema \"" + options.schema + "\".");
    }
    const std::string schema = fileSchemaText(options.schema);
    reportFindings(database.cloud().management().findings(schema, options.strict));
}

}  // namespace

void addValidateCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<ValidateOptions>();
    CLI::App* const command = app.add_subcommand("validate", "Compare with a file schema");
    addDatabaseFile(*command, invocation);
    command
        ->add_option("--schema", options->schema,
                     "Identifier of a default file schema, or a file (default: by the extension)")
        ->type_name("SCHEMA");
    command->add_flag("--strict", options->strict, "Also tell what the schema does not name");
    command->footer(
        "Writes a line per problem, and ends with 1 if there are any.\n"
        "\n"
        "Examples:\n"
        "  qrbtool validate scan.qrbx\n"
        "  qrbtool validate scan.qrbx --schema sdcx --strict");
    command->callback([options, &invocation] {
        invocation.work = [options](Database& database) { runValidate(database, *options); };
    });
}

}  // namespace tarvo::cli
