// qrbtool import: a new database from LAS files or texts of separated values.

#include "cli/commands.h"
#include "cli/csv/source.h"
#include "cli/errors.h"
#include "cli/importplan.h"
#include "cli/las/source.h"
#include "cli/newdatabase.h"
#include "cli/terminal.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <memory>
#include <set>

namespace tarvo::cli {

namespace {

namespace fs = std::filesystem;

struct ImportOptions {
    std::vector<std::string> files;  // the last one is the database
    std::string format;              // "las", "csv" or empty
    std::string primary = "tarvo.xyz";
    bool newIds = false;
    bool overwrite = false;
};

std::unique_ptr<PointSource> openSource(const std::string& fileName, std::string format) {
    if (format.empty()) {
        std::string extension = fs::path(fileName).extension().string();
        std::transform(extension.begin(), extension.end(), extension.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        const bool text = extension == ".csv" || extension == ".txt" || extension == ".tsv" ||
                          extension == ".xyz";
        format = text ? "csv" : "las";
    }
    if (format == "csv") {
        return std::make_unique<csv::CsvSource>(fileName);
    }
    return std::make_unique<las::LasSource>(fileName);
}

std::string settingsJson(const ImportOptions& options) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    writer.StartObject();
    writer.Key("command");
    writer.String("import");
    writer.Key("inputs");
    writer.StartArray();
    for (std::size_t i = 0; i + 1 < options.files.size(); ++i) {
        const std::string name = fs::path(options.files[i]).filename().string();
        writer.String(name.data(), static_cast<rapidjson::SizeType>(name.size()));
    }
    writer.EndArray();
    writer.Key("primary");
    writer.String(options.primary.c_str());
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

void addAttributes(qrb::Pointcloud& cloud, const ImportPlan& plan) {
    auto& attributes = cloud.pointAttributes();
    for (const std::string& name : plan.order) {
        if (!attributes.exists(name)) {
            attributes.add(plan.attributes.at(name).definition);
        }
    }
}

// Items of the first file keep their names; those of others get a number where they differ.
void addMetaData(qrb::Pointcloud& cloud, const std::vector<std::unique_ptr<PointSource>>& sources) {
    auto& metaData = cloud.metaData();
    std::set<std::string> written;
    for (const auto& source : sources) {
        for (const auto& [name, value] : source->metaData()) {
            std::string unique = name;
            for (int i = 2; !written.insert(unique).second; ++i) {
                unique = name + "." + std::to_string(i);
            }
            metaData.set(unique, value);
        }
    }
}

void insertPoints(qrb::Pointcloud& cloud, PointSource& source, const ImportPlan& plan) {
    auto query = cloud.insert();
    const std::vector<Column>& columns = source.columns();
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (plan.isWritten(columns[i])) {
            const Column& column = columns[i];
            const bool single = plan.attributes.at(column.attribute).definition.length == 1;
            query.bind(single ? column.attribute
                              : column.attribute + "[" + std::to_string(column.element) + "]",
                       column.type, source.values(i),
                       static_cast<std::int32_t>(dataTypeSize(column.type)));
        }
    }
    ProgressLine progress("Importing " + source.fileName());
    source.rewind();
    while (const std::uint32_t count = source.next()) {
        if (query.next(count) != count) {
            throw Failure("The database took fewer points than it was given.");
        }
        progress.update(source.progress());
    }
    query.close();
}

void importFiles(const qrb::Context& context, const ImportOptions& options) {
    const std::string& target = options.files.back();
    NewDatabase database(context, target, options.overwrite);
    std::vector<std::unique_ptr<PointSource>> sources;
    for (std::size_t i = 0; i + 1 < options.files.size(); ++i) {
        std::error_code error;
        if (fs::equivalent(options.files[i], target, error)) {
            throw UsageError("\"" + target + "\" is an input and the output.");
        }
        sources.push_back(openSource(options.files[i], options.format));
    }
    ImportPlan plan = planImport(sources, options.primary);
    if (options.newIds) {
        plan.leaveOut("tarvo.id");
    }

    qrb::pointcloud::CreateSettings settings(context);
    settings.primaryAttribute = plan.attributes.at(options.primary).definition;
    database.create(settings);
    {
        qrb::Pointcloud& cloud = database.cloud();
        qrb::pointcloud::TransactionGuard transaction(cloud.transactions(), "Import", agentText(),
                                                      {}, settingsJson(options));
        addAttributes(cloud, plan);
        addMetaData(cloud, sources);
        for (const auto& source : sources) {
            insertPoints(cloud, *source, plan);
        }
        ProgressLine progress("Writing " + target);
        transaction.commit({}, [&progress](int percent) { progress.update(percent / 100.0); });
    }
    checkInterrupted();
    database.publish();
}

}  // namespace

void addImportCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<ImportOptions>();
    CLI::App* const command = app.add_subcommand("import", "Make a database from LAS or CSV files");
    command->add_option("files", options->files, "Input files, then the database to make")
        ->type_name("INPUT... OUTPUT")
        ->required();
    command
        ->add_option("--format", options->format,
                     "Format of the inputs (default: csv for .csv, .txt, .tsv and .xyz, else las)")
        ->check(CLI::IsMember({"las", "csv"}));
    command
        ->add_option("--primary", options->primary, "Attribute that the point index is built over")
        ->capture_default_str();
    command->add_flag("--new-ids", options->newIds,
                      "Number the points anew, though a column tarvo.id has ids for them");
    command->add_flag("--overwrite", options->overwrite, "Replace an existing database");
    command->footer(
        "LAS 1.0 to 1.4 with point formats 0 to 10 and extra bytes. What means the same as a\n"
        "default attribute gets its name (tarvo.xyz, tarvo.intensity, tarvo.class, ...), the rest\n"
        "is called las.NAME; no value is rounded. Texts begin with a line that names the columns\n"
        "x, y, z and others, separated by commas, semicolons or tabs. Points keep the ids of a\n"
        "column tarvo.id.\n"
        "The database appears when it is complete; a failure leaves none.\n"
        "\n"
        "Examples:\n"
        "  qrbtool import flight.las flight.qrbx\n"
        "  qrbtool import strip1.las strip2.las both.qrbx\n"
        "  qrbtool import --format csv points.dat points.qrbx --overwrite");
    command->callback([options, &invocation] {
        if (options->files.size() < 2) {
            throw CLI::ValidationError("files", "an input file and the database are needed");
        }
        invocation.run = [options](const qrb::Context& context) { importFiles(context, *options); };
    });
}

}  // namespace tarvo::cli
