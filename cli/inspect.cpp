// qrbtool inspect: the library's reports.

#include "cli/commands.h"
#include "cli/database.h"
#include "cli/output.h"

#include <CLI/CLI.hpp>

#include <map>
#include <memory>

namespace tarvo::cli {

namespace {

struct InspectOptions {
    std::string format = "text";
    std::string output;
};

void runInspect(const Database& database, const InspectOptions& options) {
    static const std::map<std::string, std::uint8_t> numbers{
        {"text", 1}, {"json", 2}, {"html", 3}, {"histograms", 4}};
    std::string report = database.inspect(numbers.at(options.format));
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
    command->add_option("--format", options->format, "Form of the report")
        ->check(CLI::IsMember({"text", "json", "html", "histograms"}))
        ->capture_default_str();
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
