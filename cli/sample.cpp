// qrbtool sample: a database with a simulated scan.

#include "catalogue/catalogue.h"
#include "cli/commands.h"
#include "cli/errors.h"
#include "cli/json.h"
#include "cli/number.h"
#include "cli/sample/scanner.h"
#include "cli/terminal.h"
#include "core/defaultattribute.h"
#include "core/newdatabase.h"

#include <CLI/CLI.hpp>

#include <algorithm>
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

constexpr std::size_t sampleBatch = 65536;
// What timestamps of a year and 32 bits for the lines hold with ease.
constexpr std::uint64_t mostPoints = 1'000'000'000'000;

constexpr const char* changeText =
    "Simulated: no instrument measured it, as tarvo.pointcloud_info tells.";
constexpr const char* simulationText =
    "Simulated scan: no instrument measured it. A scene of simple bodies is met by rays from a "
    "scanner at the origin, whose coordinate system is that of the points. Modelled are echoes of "
    "several targets per shot, noise of range and reflectance, and the threshold of the receiver; "
    "not modelled are the width of the beam, errors of angles, times for turning between and "
    "within lines, atmosphere and stray echoes.";

qrb::pointcloud::PointAttribute catalogueAttribute(const std::string& name) {
    const auto* const entry = catalogue::findAttribute(name);
    if (entry == nullptr) {
        throw Failure("The catalogue lacks the attribute \"" + name + "\".");
    }
    return core::defaultAttribute(*entry);
}

template <typename T>
void bindColumn(qrb::pointcloud::QueryInsert& query, const char* attribute,
                qrb::pointcloud::DataType type, const std::vector<T>& values,
                std::size_t elements = 1) {
    query.bind(attribute, type, values.data(), static_cast<std::int32_t>(elements * sizeof(T)));
}

// What the catalogue has for telling of a scan as a whole.
void describeScan(qrb::pointcloud::MetaData& metaData, const sample::Pattern& pattern) {
    JsonText info;
    info.beginObject();
    info.member("comments", simulationText);
    info.member("field_of_application", "TLS");
    info.endObject();
    metaData.set("tarvo.pointcloud_info", info.text());

    JsonText timeBase;  // times count from the first shot, whenever that was
    timeBase.beginObject();
    for (const char* const member : {"epoch", "timescale", "source"}) {
        timeBase.member(member, "unknown");
    }
    timeBase.endObject();
    metaData.set("tarvo.time_base", timeBase.text());

    JsonText scan;
    scan.beginObject();
    scan.key("rectangular");
    scan.beginObject();
    scan.member("theta_start", pattern.firstTheta);
    scan.member("theta_stop", pattern.lastTheta);
    scan.member("theta_increment", pattern.thetaStep);
    scan.member("phi_start", 0.0);
    scan.member("phi_stop", 360 - pattern.phiStep);
    scan.member("phi_increment", pattern.phiStep);
    scan.endObject();
    scan.endObject();
    metaData.set("tarvo.scan_pattern", scan.text());
}

void insertScan(qrb::Pointcloud& cloud, const SampleOptions& options) {
    using qrb::pointcloud::DataType;
    const sample::Scene scene(options.seed);
    sample::Scanner scanner(scene, options.seed, options.pointCount);
    describeScan(cloud.metaData(), scanner.pattern());
    sample::Points points(static_cast<std::size_t>(
        std::min<std::uint64_t>(sampleBatch, std::max<std::uint64_t>(1, options.pointCount))));
    auto query = cloud.insert();
    bindColumn(query, "tarvo.xyz", DataType::DOUBLE, points.xyz, 3);
    bindColumn(query, "tarvo.range", DataType::DOUBLE, points.range);
    bindColumn(query, "tarvo.theta", DataType::DOUBLE, points.theta);
    bindColumn(query, "tarvo.phi", DataType::DOUBLE, points.phi);
    bindColumn(query, "tarvo.reflectance", DataType::SINGLE, points.reflectance);
    bindColumn(query, "tarvo.amplitude", DataType::SINGLE, points.amplitude);
    bindColumn(query, "tarvo.deviation", DataType::INT16, points.deviation);
    bindColumn(query, "tarvo.target_index", DataType::UINT8, points.targetIndex);
    bindColumn(query, "tarvo.target_count", DataType::UINT8, points.targetCount);
    bindColumn(query, "tarvo.class", DataType::UINT8, points.pointClass);
    bindColumn(query, "tarvo.timestamp", DataType::DOUBLE, points.timestamp);
    bindColumn(query, "tarvo.scan_line_index", DataType::UINT32, points.line);
    ProgressLine progress("Scanning");
    for (std::uint64_t done = 0; done < options.pointCount;) {
        const std::size_t count =
            scanner.next(points, static_cast<std::size_t>(std::min<std::uint64_t>(
                                     sampleBatch, options.pointCount - done)));
        if (query.next(static_cast<std::uint32_t>(count)) != count) {
            throw Failure("The database took fewer points than it was given.");
        }
        done += count;
        progress.update(static_cast<double>(done) / static_cast<double>(options.pointCount));
    }
    query.close();
}

void runSample(const qrb::Context& context, const SampleOptions& options) {
    core::NewDatabase database(context, options.file, options.overwrite, overwriteAdvice);
    qrb::pointcloud::CreateSettings settings(context);
    settings.primaryAttribute = catalogueAttribute("tarvo.xyz");
    database.create(settings);
    {
        qrb::Pointcloud& cloud = database.cloud();
        const std::string settingsText =
            "{\"command\":\"sample\",\"points\":" + std::to_string(options.pointCount) +
            ",\"seed\":" + std::to_string(options.seed) + "}";
        qrb::pointcloud::TransactionGuard transaction(cloud.transactions(), "Simulated scan",
                                                      agentText(), changeText, settingsText);
        for (const char* name :
             {"tarvo.range", "tarvo.theta", "tarvo.phi", "tarvo.reflectance", "tarvo.amplitude",
              "tarvo.deviation", "tarvo.target_index", "tarvo.target_count", "tarvo.class",
              "tarvo.timestamp", "tarvo.scan_line_index"}) {
            cloud.pointAttributes().add(catalogueAttribute(name));
        }
        insertScan(cloud, options);
        ProgressLine progress("Writing " + options.file);
        transaction.commit({}, [&progress](int percent) { progress.update(percent / 100.0); });
    }
    checkInterrupted();
    database.publish();
}

}  // namespace

void addSampleCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<SampleOptions>();
    CLI::App* const command =
        app.add_subcommand("sample", "Make a database with a simulated laser scan");
    command->add_option("file", options->file, "Database to make")->type_name("FILE")->required();
    command->add_option("-n,--points", options->pointCount, "Number of points")
        ->type_name("POINTS")
        ->transform(largeNumber(0, mostPoints))
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
