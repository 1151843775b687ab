// qrbtool export: points in the formats of other programs.

#include "cli/answer.h"
#include "cli/attributenames.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/importinputs.h"
#include "cli/inputs.h"
#include "cli/number.h"
#include "cli/options.h"
#include "cli/output.h"
#include "cli/shapeoptions.h"
#include "cli/terminal.h"
#include "cli/text.h"
#include "cli/texttable.h"
#include "core/outputplace.h"
#include "exchange/export/exportpoints.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <optional>

namespace tarvo::cli {

using namespace exchange;

namespace {

struct ExportCommand {
    std::string output;
    std::string format;  // empty: as the extension promises
    std::string filter;
    std::string nodes;
    ShapeOptions shape;
    std::vector<std::string> attributes;  // none: the usual ones
    std::optional<int> pointFormat;
    std::optional<double> scale;
    bool asText = false;
    bool overwrite = false;
};

ExportFormat formatOf(const ExportCommand& command) {
    if (command.output.empty() || command.output == "-") {
        throw UsageError("An export needs the name of a file.",
                         "\"qrbtool select --format csv\" writes points to the terminal.");
    }
    const auto promised = formatOfFile(command.output);
    const auto format = command.format.empty() ? promised : exportFormat(command.format);
    if (!format) {
        throw UsageError("The name \"" + command.output + "\" does not tell a format.",
                         "Give it the extension .las, .laz, .ply, .csv or .xyz, or give --format.");
    }
    if (promised && *promised != *format) {
        throw UsageError("\"" + command.output + "\" would hold " + command.format + ".",
                         "Give the name the extension of its format.");
    }
    const bool isLas = *format == ExportFormat::Las || *format == ExportFormat::Laz;
    if (!isLas && (command.pointFormat || command.scale)) {
        throw UsageError("--point-format and --scale are for LAS and LAZ.");
    }
    if (*format != ExportFormat::Ply && command.asText) {
        throw UsageError("--ascii is for PLY.");
    }
    return *format;
}

std::vector<std::string> attributesOf(const qrb::Pointcloud& cloud, const ExportCommand& command,
                                      ExportFormat format) {
    if (command.attributes.empty()) {
        return defaultAttributes(cloud, format);
    }
    std::vector<std::string> names =
        attributesNamed({&cloud.pointAttributes()}, command.attributes);
    for (const std::string& name : names) {
        if (!cloud.pointAttributes().exists(name)) {
            throw UsageError("\"" + name + "\" is no attribute.", "Whole attributes are exported.");
        }
        if (std::count(names.begin(), names.end(), name) > 1) {
            throw UsageError("The attribute \"" + name + "\" is named twice.");
        }
    }
    return names;
}

void runExport(const Database& database, const ExportCommand& command) {
    const ExportFormat format = formatOf(command);
    const core::Shape shape = command.shape.shape();
    core::PointSelection selection{command.filter, {}};
    if (!command.nodes.empty()) {
        selection.nodes = parseNodes(command.nodes);
    }
    const ShapedPoints points = shapedPoints(
        database, std::move(selection), attributesOf(database.cloud(), command, format), shape);
    std::vector<std::string> reads = inputs();
    reads.push_back(database.fileName());
    core::checkOutputPlace(database.cloud().context(), command.output, reads,
                           core::OutputKind::Scan);
    files::WholeFile file(command.output);
    if (file.replaces() && !command.overwrite) {
        throw Failure("\"" + command.output + "\" exists already.", overwriteAdvice);
    }
    const Exported exported = exportPoints(
        *points.source, points.formats,
        {format, command.pointFormat, command.scale, command.asText}, file, importProgress());
    if (exported.points == 0 && file.replaces()) {
        // Rather a filter that is mistyped than points that nobody wants any more.
        throw Failure("No points are selected; \"" + command.output + "\" was left as it was.");
    }
    file.publish();
    note(exported.notes);
    if (exported.points == 0) {
        note("No points are selected: the file holds none.");
    }
    answer(counted(exported.points, "point") + " exported to \"" + command.output + "\".",
           [&](JsonText& json) {
               json.member("points", exported.points);
               json.member("file", command.output);
           });
}

}  // namespace

void addExportCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<ExportCommand>();
    CLI::App* const command =
        app.add_subcommand("export", "Write points to a LAS, LAZ, PLY, CSV or XYZ file");
    addDatabaseFile(*command, invocation);
    command->add_option("output", options->output, "The file to write")
        ->type_name("OUT")
        ->required();
    command->add_option("--format", options->format, "Its format (default: as its extension says)")
        ->check(CLI::IsMember({"las", "laz", "ply", "csv", "xyz"}));
    addFilter(*command, options->filter);
    addNodes(*command, options->nodes,
             "Nodes of the point index whose points are written; inner nodes hold the level of "
             "detail");
    options->shape.add(*command);
    command
        ->add_option("-a,--attributes", options->attributes,
                     "Attributes to write, or patterns such as 'tarvo.*' (default: all but the "
                     "ids; xyz: the "
                     "coordinates)")
        ->type_name("NAMES")
        ->delimiter(',')
        ->allow_extra_args(false);
    command
        ->add_option(
            "--point-format", options->pointFormat,
            "Point format of LAS and LAZ, 0 to 10 (default: the one that suits the points)")
        ->type_name("N")
        ->transform(wholeNumber(0, 10));
    command
        ->add_option("--scale", options->scale,
                     "Step to which the coordinates of LAS and LAZ are rounded (default: none "
                     "changes)")
        ->type_name("STEP")
        ->check(positiveNumber(1e-30, 1e30));
    command->add_flag("--ascii", options->asText, "Write PLY in digits");
    command->add_flag("--overwrite", options->overwrite, "Replace a file that exists");
    command->footer(
        "LAS and LAZ are of version 1.4. The point format and its fields are chosen so that every\n"
        "value is kept; attributes that they don't hold become extra bytes, which an import makes\n"
        "the same attributes again. What the point format has and the database has not is 0.\n"
        "\n" +
        std::string(shapeFooter) +
        "\n"
        "Examples:\n"
        "  qrbtool export scan.qrbx scan.laz\n"
        "  qrbtool export scan.qrbx ground.las --filter \"tarvo.class == 2\"\n"
        "  qrbtool export scan.qrbx scan.ply -a tarvo.xyz,tarvo.rgba\n"
        "  qrbtool export scan.qrbx plot.laz --polygon \"POLYGON ((0 0, 40 0, 20 30))\"\n"
        "  qrbtool export scan.qrbx overview.xyz --nodes 1");
    command->callback([options, &invocation] {
        invocation.work = [options](Database& database) { runExport(database, *options); };
    });
}

}  // namespace tarvo::cli
