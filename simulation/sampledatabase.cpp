#include "simulation/sampledatabase.h"

#include "catalogue/catalogue.h"
#include "catalogue/jsonmemory.h"
#include "core/defaultattribute.h"
#include "core/error.h"
#include "simulation/scanner.h"

#include <rapidjson/prettywriter.h>

#include <algorithm>
#include <vector>

namespace tarvo::simulation {

namespace {

constexpr std::size_t batchSize = 65536;

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
    if (!entry)
        throw core::Failure("The catalogue lacks the attribute \"" + name + "\".");
    return core::defaultAttribute(*entry);
}

template <typename T>
void bindColumn(qrb::pointcloud::QueryInsert& query, const char* attribute,
                qrb::pointcloud::DataType type, const std::vector<T>& values,
                std::size_t elements = 1) {
    query.bind(attribute, type, values.data(), static_cast<std::int32_t>(elements * sizeof(T)));
}

// A metadata item, an object whose members write() writes.
template <typename Write>
void setItem(qrb::pointcloud::MetaData& metaData, const char* name, const Write& write) {
    rapidjson::StringBuffer text;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(text);
    writer.StartObject();
    write(writer);
    writer.EndObject();
    metaData.set(name, text.GetString());
}

// What the catalogue has for telling of a scan as a whole.
void describeScan(qrb::pointcloud::MetaData& metaData, const Pattern& pattern) {
    setItem(metaData, "tarvo.pointcloud_info", [](auto& json) {
        json.Key("comments");
        json.String(simulationText);
        json.Key("field_of_application");
        json.String("TLS");
    });
    // Times count from the first shot, whenever that was.
    setItem(metaData, "tarvo.time_base", [](auto& json) {
        for (const char* const member : {"epoch", "timescale", "source"}) {
            json.Key(member);
            json.String("unknown");
        }
    });
    setItem(metaData, "tarvo.scan_pattern", [&](auto& json) {
        const std::pair<const char*, double> members[] = {
            {"theta_start", pattern.firstTheta},    {"theta_stop", pattern.lastTheta},
            {"theta_increment", pattern.thetaStep}, {"phi_start", 0},
            {"phi_stop", 360 - pattern.phiStep},    {"phi_increment", pattern.phiStep}};
        json.Key("rectangular");
        json.StartObject();
        for (const auto& [name, value] : members) {
            json.Key(name);
            json.Double(value);
        }
        json.EndObject();
    });
}

void insertScan(qrb::Pointcloud& cloud, const SampleScan& scan, const SampleProgress& progress) {
    using qrb::pointcloud::DataType;
    std::uint64_t done = 0;
    const std::function<void()> goOn = [&] {
        progress("Scanning", static_cast<double>(done) /
                                 static_cast<double>(std::max<std::uint64_t>(scan.points, 1)));
    };
    goOn();
    const Scene scene(scan.seed);
    Scanner scanner(scene, scan.seed, scan.points, goOn);
    describeScan(cloud.metaData(), scanner.pattern());
    Points points(static_cast<std::size_t>(
        std::min<std::uint64_t>(batchSize, std::max<std::uint64_t>(1, scan.points))));
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
    while (done < scan.points) {
        const std::size_t count = scanner.next(
            points,
            static_cast<std::size_t>(std::min<std::uint64_t>(batchSize, scan.points - done)));
        if (query.next(static_cast<std::uint32_t>(count)) != count)
            throw core::Failure("The database took fewer points than it was given.");
        done += count;
        goOn();
    }
    query.close();
}

}  // namespace

void makeSample(core::NewDatabase& database, const std::string& fileName, const SampleScan& scan,
                const std::string& agent, const SampleProgress& progress) {
    qrb::pointcloud::CreateSettings settings(database.context());
    settings.primaryAttribute = catalogueAttribute("tarvo.xyz");
    database.create(settings);
    qrb::Pointcloud& cloud = database.cloud();
    const std::string settingsText =
        "{\"command\":\"sample\",\"points\":" + std::to_string(scan.points) +
        ",\"seed\":" + std::to_string(scan.seed) + "}";
    qrb::pointcloud::TransactionGuard transaction(cloud.transactions(), "Simulated scan", agent,
                                                  changeText, settingsText);
    for (const char* name :
         {"tarvo.range", "tarvo.theta", "tarvo.phi", "tarvo.reflectance", "tarvo.amplitude",
          "tarvo.deviation", "tarvo.target_index", "tarvo.target_count", "tarvo.class",
          "tarvo.timestamp", "tarvo.scan_line_index"})
        cloud.pointAttributes().add(catalogueAttribute(name));
    insertScan(cloud, scan, progress);
    transaction.commit({}, [&](int percent) { progress("Writing " + fileName, percent / 100.0); });
}

}  // namespace tarvo::simulation
