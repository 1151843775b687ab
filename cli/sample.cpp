// qrbtool sample: a database with a simulated scan.

#include "cli/answer.h"
#include "cli/commands.h"
#include "cli/errors.h"
#include "cli/importinputs.h"
#include "cli/number.h"
#include "cli/terminal.h"
#include "core/newdatabase.h"
#include "simulation/sampledatabase.h"

#include <CLI/CLI.hpp>

#include <chrono>
#include <limits>
#include <memory>

namespace tarvo::cli {

namespace {

struct SampleOptions {
    std::string file;
    std::uint64_t pointCount = 100000;
    std::uint64_t seed = 1;
    bool overwrite = false;
};

void runSample(const qrb::Context& context, const SampleOptions& options) {
    const auto begin = std::chrono::steady_clock::now();
    core::NewDatabase database(context, options.file, options.overwrite, overwriteAdvice);
    simulation::makeSample(database, options.file, {options.pointCount, options.seed}, agentText(),
                           importProgress());
    checkInterrupted();
    database.publish();
    tellMade(options.pointCount, "simulated into", options.file, begin);
}

}  // namespace

void addSampleCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<SampleOptions>();
    CLI::App* const command =
        app.add_subcommand("sample", "Make a database with a simulated laser scan");
    command->add_option("file", options->file, "Database to make")->type_name("FILE")->required();
    command->add_option("-n,--points", options->pointCount, "Number of points")
        ->type_name("POINTS")
        ->transform(largeNumber(0, simulation::mostSamplePoints))
        ->capture_default_str();
    command->add_option("--seed", options->seed, "The same seed gives the same points")
        ->type_name("NUMBER")
        ->transform(wholeNumber(0, std::numeric_limits<std::uint64_t>::max()))
        ->capture_default_str();
    command->add_flag("--overwrite", options->overwrite, "Replace an existing database");
    command->footer(
        "The scene: gentle relief, a house and a garage, trees that give several targets per\n"
        "shot, a power line, a parked car; seen from one scanner position at the origin. The item\n"
        "tarvo.pointcloud_info tells what is simulated and what is not.\n"
        "\n"
        "Examples:\n"
        "  qrbtool sample scan.qrbx\n"
        "  qrbtool sample -n 10000000 --seed 7 large.qrbx");
    command->callback([options, &invocation] {
        invocation.run = [options](const qrb::Context& context) { runSample(context, *options); };
    });
}

}  // namespace tarvo::cli
