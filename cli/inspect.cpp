// qrbtool inspect: the library's reports.

#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/manner.h"
#include "cli/output.h"

#include <CLI/CLI.hpp>

#include <map>
#include <memory>

namespace tarvo::cli {

namespace {

struct InspectOptions {
    std::string format;  // empty: text
    std::string output;
};

void runInspect(const Database& database, const InspectOptions& options) {
    static const std::map<std::string, std::uint8_t> numbers{
        {"text", 1}, {"json", 2}, {"html", 3}, {"histograms", 4}};
    std::string format = options.format;
    if (manner().json && isStandardOutput(options.output)) {
        if (!format.empty() && format != "json") {
            throw UsageError("With --json the report is JSON, not " + format + ".",
                             "Leave one of --json and --format out, or name a file with --output.");
        }
        format = "json";
    }
    std::string report = database.inspect(numbers.at(format.empty() ? "text" : format));
    if (report.empty() || report.back() != '\n') {
        report += '\n';
    }
    writeAnswer(database, options.output, report);
}

}  // namespace

void addInspectCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<InspectOptions>();
    CLI::App* const command = app.add_subcommand("inspect", "Write a report");
    addDatabaseFile(*command, invocation);
    command->add_option("--format", options->format, "Form of the report (default: text)")
        ->check(CLI::IsMember({"text", "json", "html", "histograms"}));
    command->add_option("-o,--output", options->output, "File to write (default: the terminal)")
        ->type_name("FILE");
    command->footer(
        "html is a page with charts, histograms one with the values of each attribute.\n"
        "\n"
        "Examples:\n"
        "  qrbtool inspect scan.qrbx\n"
        "  qrbtool inspect scan.qrbx --format html -o report.html");
    command->callback([options, &invocation] {
        invocation.work = [options](Database& database) { runInspect(database, *options); };
    });
}

}  // namespace tarvo::cli
