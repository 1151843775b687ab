// qrbtool import: point clouds in files of other formats become a new database, or go into one that
// exists.

#include "cli/answer.h"
#include "cli/append.h"
#include "cli/commands.h"
#include "cli/errors.h"
#include "cli/importinputs.h"
#include "cli/json.h"
#include "cli/key.h"
#include "cli/shapeoptions.h"
#include "cli/terminal.h"
#include "cli/texttable.h"
#include "core/newdatabase.h"
#include "exchange/import/importrun.h"
#include "numbers/numbertext.h"

#include <CLI/CLI.hpp>

#include <chrono>
#include <filesystem>
#include <memory>
#include <set>
#include <utility>

namespace tarvo::cli {

using namespace exchange;

namespace {

namespace fs = std::filesystem;

struct ImportOptions {
    InputOptions inputs;
    std::string database;  // empty: it is open already
    std::string primary = "tarvo.xyz";
    std::vector<std::string> leftOut;
    std::string title = "Import";
    std::string comment;
    KeyOptions key;
    ShapeOptions shape;
    bool newIds = false;
    bool overwrite = false;
    bool append = false;
    bool round = false;
    bool onlyKnown = false;
    bool crsAsIs = false;
};

std::string settingsJson(const ImportOptions& options) {
    std::vector<std::string> names;
    for (const std::string& input : options.inputs.names) {
        names.push_back(fs::path(input).filename().string());
    }
    JsonText json;
    json.beginObject();
    json.member("command", "import");
    json.member("inputs", names);
    if (!options.append) {
        json.member("primary", options.primary);
    }
    for (const auto& [name, given] : {std::pair{"append", options.append},
                                      {"round", options.round},
                                      {"only_known", options.onlyKnown},
                                      {"new_ids", options.newIds},
                                      {"crs_as_is", options.crsAsIs}}) {
        if (given) {
            json.member(name, true);
        }
    }
    if (!options.inputs.columns.empty()) {
        json.member("columns", options.inputs.columns);
    }
    if (!options.inputs.map.empty()) {
        std::vector<std::string> texts;
        for (const ColumnChoice& choice : options.inputs.map) {
            texts.push_back(choiceText(choice));
        }
        json.member("map", texts);
    }
    if (!options.leftOut.empty()) {
        json.member("left_out", options.leftOut);
    }
    options.shape.describe(json);
    json.endObject();
    return json.compact();
}

// The last name is the database: with a list of scans, where it was forgotten, that is a scan.
void refuseOtherFile(const qrb::Context& context, const ImportOptions& options) {
    std::error_code error;
    if (fs::is_regular_file(options.database, error) &&
        !context.databaseFileTypeCheck(options.database)) {
        throw Failure(
            "\"" + options.database + "\" is not a point-cloud database: it stays as it is.",
            "qrbtool import INPUT... DATABASE: the last name is the " +
                std::string(options.append ? "" : "new ") + "database.");
    }
}

void requireNamed(const PointSources& sources, const std::string& primary,
                  const std::set<std::string>& leftOut) {
    try {
        requireAttributes(sources, primary, leftOut);
    } catch (const NoAttributeToLeaveOut& failure) {
        throw UsageError(failure.what());
    }
}

void importFiles(const qrb::Context& context, const ImportOptions& options) {
    const auto begin = std::chrono::steady_clock::now();
    const qrb::pointcloud::Signature signature = options.key.signature();
    const core::Shape shape = options.shape.shape();
    refuseAsInput(options.database, options.inputs.names);
    refuseOtherFile(context, options);
    const std::set<std::string> leftOut(options.leftOut.begin(), options.leftOut.end());
    if (leftOut.contains(options.primary)) {
        throw UsageError("The primary attribute \"" + options.primary + "\" can't be left out.");
    }
    // What is wrong with the inputs is told before what stands in their way; texts take long to be
    // opened, which is needed for that where attributes are named.
    checkInputs(options.inputs);
    PointSources sources;
    if (!leftOut.empty() || options.primary != ImportOptions().primary) {
        sources = openSources(options.inputs);
        requireNamed(sources, options.primary, leftOut);
    }
    core::NewDatabase database(context, options.database, options.overwrite,
                               "Give --append to add to it or --overwrite to replace it.");
    sources = shaped(sources.empty() ? openSources(options.inputs) : std::move(sources), shape);
    CommonOrigin common = commonOrigin(sources, nullptr, leftOut, options.crsAsIs);
    ImportPlan plan = planImport(sources, options.primary, importProgress());
    const std::uint64_t points = plan.pointCount;
    try {
        importIntoNew(
            database, options.database, sources, std::move(plan), std::move(common),
            {options.primary, leftOut, options.newIds},
            {options.title, agentText(), options.comment, settingsJson(options), signature},
            importListener());
    } catch (const NoAttributeToLeaveOut& failure) {
        throw UsageError(failure.what());
    }
    checkInterrupted();
    database.publish();
    tellMade(points, "imported into", options.database, begin);
}

void appendTo(Database& database, const ImportOptions& options) {
    const Change change{options.title, options.comment, settingsJson(options),
                        options.key.signature()};
    AppendOptions how;
    how.round = options.round;
    how.onlyKnown = options.onlyKnown;
    how.newIds = options.newIds;
    how.crsAsIs = options.crsAsIs;
    how.leftOut = {options.leftOut.begin(), options.leftOut.end()};
    refuseAsInput(database.fileName(), options.inputs.names);
    const core::Shape shape = options.shape.shape();
    appendFiles(database, shaped(openSources(options.inputs), shape), how, change);
}

void appendToFile(const qrb::Context& context, const ImportOptions& options) {
    std::error_code error;
    if (!fs::exists(options.database, error) && !error) {
        throw Failure("There is no file \"" + options.database + "\" to add to.",
                      "Leave --append out to make a new database.");
    }
    refuseAsInput(options.database, options.inputs.names);
    refuseOtherFile(context, options);
    Database database(context, options.database);
    appendTo(database, options);
}

}  // namespace

void addImportCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<ImportOptions>();
    CLI::App* const command = app.add_subcommand(
        "import", "Make a database from files of other formats, or add their points to one");
    const bool isOpen = invocation.onOpenDatabase;
    command
        ->add_option("files", options->inputs.names,
                     isOpen ? "Files, folders of files, or - for standard input"
                            : "Files, folders of files, or - for standard input; then the database")
        ->type_name(isOpen ? "INPUT..." : "INPUT... DATABASE")
        ->required();
    options->inputs.add(*command);
    command->add_flag("--new-ids", options->newIds,
                      "Number the points anew, though a column tarvo.id has ids for them");
    command
        ->add_option("--leave-out", options->leftOut,
                     "Attribute of the files that is left out; may stand several times")
        ->type_name("NAME")
        ->allow_extra_args(false);
    command->add_flag("--crs-as-is", options->crsAsIs,
                      "Take coordinates of different reference systems, and times of different\n"
                      "bases, as they are");
    options->shape.add(*command);
    CLI::Option* const append =
        command->add_flag("--append", options->append, "Add the points to a database that exists");
    command
        ->add_flag("--round", options->round,
                   "Store values that are finer than the resolution of an attribute rounded")
        ->needs(append);
    command
        ->add_flag("--only-known", options->onlyKnown,
                   "Leave attributes out that the database lacks, in place of adding them")
        ->needs(append);
    if (isOpen) {
        append->required();
    } else {
        command
            ->add_option("--primary", options->primary,
                         "Attribute that the point index is built over")
            ->capture_default_str()
            ->excludes(append);
        command->add_flag("--overwrite", options->overwrite, "Replace an existing database")
            ->excludes(append);
        command->add_option("--title", options->title, "Title of the transaction")
            ->type_name("TEXT")
            ->capture_default_str();
        command->add_option("--comment", options->comment, "Comments on it")->type_name("TEXT");
        options->key.add(*command, false);
    }
    command->footer(
        "Reads LAS, LAZ, PLY (ASCII and binary), PTX, E57, CSV with a header line, and texts of\n"
        "numbers such as XYZ and PTS; the content of a file tells which it is. What means the "
        "same\n"
        "as a default attribute gets its name (tarvo.xyz, tarvo.intensity, tarvo.rgba, ...), the\n"
        "rest is called las.NAME, ply.NAME and so on. No value is rounded but coordinates that "
        "are\n"
        "computed by the pose of a scan; where scale factors and offsets of LAS files have no\n"
        "decimal grid in common, a note tells how far coordinates move at most. Texts begin with "
        "a\n"
        "line that names the columns x, y, z and others, separated by commas, semicolons, tabs or\n"
        "blanks; without one, --columns names them, or their number tells: x y z, then intensity\n"
        "(4 or 7), then r g b (6 or 7). Points keep the ids of a column tarvo.id.\n"
        "--map names a column as the file does (\"User Data\", \"scalar_foo\", \"column 4\"), or "
        "by the\n"
        "attribute that it goes to otherwise (las.user_data).\n"
        "A new database appears when it is complete; a failure leaves none.\n"
        "Coordinates have the unit of the reference system that a file tells, which goes to\n"
        "tarvo.geo_tag. Files in different ones are refused without --crs-as-is, which keeps the\n"
        "first system; so are files whose GPS times count from different epochs "
        "(tarvo.time_base).\n"
        "\n" +
        std::string(shapeFooter) +
        "\n"
        "--append adds all points in one transaction, or changes nothing. Columns go to the\n"
        "attributes of their names, which must hold every value: none is cut off, and none "
        "rounded\n"
        "without --round. Attributes that the files lack get their default values, and so do the\n"
        "old points for attributes that are added.\n"
        "\n"
        "Examples:\n"
        "  qrbtool import flight.las flight.qrbx\n"
        "  qrbtool import strip1.las strip2.las both.qrbx\n"
        "  qrbtool import strip3.las both.qrbx --append\n"
        "  qrbtool import scans.e57 tiles points.qrbx\n"
        "  qrbtool import tiles part.qrbx --polygon district.geojson --thin 0.05\n"
        "  qrbtool import flight.las flight.qrbx --map \"User Data=own.strip\" --map Withheld=-\n"
        "  qrbtool import --columns x,y,z,-,intensity points.dat points.qrbx --overwrite\n"
        "  zcat points.csv.gz | qrbtool import - points.qrbx");
    command->callback([options, isOpen, &invocation] {
        if (isOpen) {
            invocation.work = [options](Database& database) { appendTo(database, *options); };
            return;
        }
        std::vector<std::string>& names = options->inputs.names;
        if (names.size() < 2) {
            throw CLI::ValidationError("files", "an input file and the database are needed");
        }
        options->database = names.back();
        names.pop_back();
        invocation.run = [options](const qrb::Context& context) {
            options->append ? appendToFile(context, *options) : importFiles(context, *options);
        };
    });
}

}  // namespace tarvo::cli
