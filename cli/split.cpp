// qrbtool split: the points of a database in many files, each point in one.

#include "exchange/database/split.h"
#include "cli/answer.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/importinputs.h"
#include "cli/json.h"
#include "cli/number.h"
#include "cli/options.h"
#include "cli/output.h"
#include "cli/shapeoptions.h"
#include "cli/terminal.h"
#include "cli/texttable.h"
#include "core/creationsettings.h"
#include "core/databasecopy.h"
#include "core/newdatabase.h"
#include "exchange/export/exportpoints.h"
#include "files/path.h"
#include "files/place.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <memory>
#include <set>

namespace tarvo::cli {

using namespace exchange;

namespace {

namespace fs = std::filesystem;

struct SplitCommand {
    std::string folder;
    double tiles = 0;       // edge length; 0: by the attribute
    std::string attribute;  // empty: by tiles
    std::string filter;
    std::string format;  // empty: databases
};

// Files that appear in a folder together: they are made in another one within it. Without publish()
// nothing is left of them, nor of the folder if it was not there.
class NewFiles {
public:
    explicit NewFiles(const std::string& folder) : m_folder(files::pathOf(folder)) {
        std::error_code error;
        m_isNew = fs::create_directory(m_folder, error);
        if (!fs::is_directory(m_folder)) {
            throw Failure("\"" + folder + "\" is no folder, and none can be made there.",
                          error ? error.message() + "." : "Give another name.");
        }
        const std::string name = files::nameOf(m_folder / "split");
        files::removeLeftovers(name);
        m_made = files::pathOf(files::temporaryNameFor(name));
        fs::create_directory(m_made, error);
        if (error) {
            throw Failure("Nothing can be written to the folder \"" + folder + "\".",
                          error.message() + ".");
        }
    }
    ~NewFiles() {
        std::error_code error;
        fs::remove_all(m_made, error);
        for (const fs::path& file : m_published) {
            fs::remove(file, error);
        }
        if (m_isNew && !m_isPublished) {
            fs::remove(m_folder, error);
        }
    }
    NewFiles(const NewFiles&) = delete;
    NewFiles& operator=(const NewFiles&) = delete;

    void refuseTaken(const std::string& name) const {
        std::error_code error;
        if (fs::exists(fs::symlink_status(m_folder / files::pathOf(name), error))) {
            throw Failure(
                "\"" + files::nameOf(m_folder / files::pathOf(name)) + "\" exists already.",
                "Nothing is replaced: name another folder.");
        }
    }
    // Where the file is to be made.
    std::string place(const std::string& name) {
        m_names.push_back(name);
        return files::nameOf(m_made / files::pathOf(name));
    }
    void publish() {
        for (const std::string& name : m_names) {
            checkInterrupted();
            const fs::path to = m_folder / files::pathOf(name);
            if (!files::placeDurably(files::nameOf(m_made / files::pathOf(name)),
                                     files::nameOf(to))) {
                refuseTaken(name);
            }
            m_published.push_back(to);
        }
        m_published.clear();
        m_isPublished = true;
    }

private:
    fs::path m_folder;
    fs::path m_made;
    bool m_isNew = false;
    bool m_isPublished = false;
    std::vector<std::string> m_names;
    std::vector<fs::path> m_published;  // while others are to follow
};

std::string settingsJson(const Database& database, const database::Part& part) {
    JsonText json;
    json.beginObject();
    json.member("command", "split");
    json.member("source", fs::path(database.fileName()).filename().string());
    json.member("filter", database.recordedFilter(part.filter));
    json.endObject();
    return json.compact();
}

std::uint64_t writeDatabase(const Database& database, const database::Part& part,
                            const std::string& place) {
    const qrb::Pointcloud& source = database.cloud();
    core::Selection selection;
    selection.filter = part.filter;
    selection.attributes = source.pointAttributes().list();
    selection.metaData = source.metaData().list();
    auto settings =
        core::creationSettings(source).value_or(qrb::pointcloud::CreateSettings(source.context()));
    settings.primaryAttribute =
        core::definitionForCopy(source, source.pointAttributes().primaryAttributeName());
    core::NewDatabase target(source.context(), place, false);
    target.create(settings);
    std::uint64_t points = 0;
    {
        qrb::Pointcloud& cloud = target.cloud();
        qrb::pointcloud::TransactionGuard transaction(cloud.transactions(), "Split", agentText(),
                                                      {}, settingsJson(database, part));
        points = copyDatabase(source, cloud, selection, [](int) { checkInterrupted(); });
        transaction.commit({}, [](int) { checkInterrupted(); });
    }
    target.publish();
    return points;
}

std::uint64_t writeFile(const Database& database, const database::Part& part, ExportFormat format,
                        const std::string& place, std::set<std::string>& notes) {
    const ShapedPoints points =
        shapedPoints(database, {part.filter, {}}, defaultAttributes(database.cloud(), format), {});
    files::WholeFile file(place);
    ExportOptions how;
    how.format = format;
    const Exported exported = exportPoints(*points.source, points.formats, how, file,
                                           [](const std::string&, double) { checkInterrupted(); });
    file.publish();
    notes.insert(exported.notes.begin(), exported.notes.end());
    return exported.points;
}

void runSplit(const Database& database, const SplitCommand& command) {
    const std::vector<database::Part> parts =
        command.attribute.empty()
            ? database::tilesOf(database.cloud(), command.tiles, command.filter, importProgress())
            : database::valuesOf(database.cloud(), command.attribute, command.filter,
                                 importProgress());
    if (parts.empty()) {
        throw Failure("No points are selected; no file was made.");
    }
    NewFiles made(command.folder);
    const std::string stem = files::nameOf(files::pathOf(database.fileName()).stem());
    const std::string extension = command.format.empty() ? "qrbx" : command.format;
    std::vector<std::string> names;
    for (const database::Part& part : parts) {
        names.push_back(stem + "_" + part.name + "." + extension);
        made.refuseTaken(names.back());
    }
    ProgressLine progress("Writing to " + command.folder);
    std::set<std::string> notes;
    std::uint64_t points = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        progress.update(static_cast<double>(i) / static_cast<double>(parts.size()));
        const std::string place = made.place(names[i]);
        const std::uint64_t written =
            command.format.empty()
                ? writeDatabase(database, parts[i], place)
                : writeFile(database, parts[i], *exportFormat(command.format), place, notes);
        if (written != parts[i].points) {
            throw Failure("\"" + names[i] + "\" would hold " + counted(written, "point") +
                              ", not " + std::to_string(parts[i].points) + ".",
                          "Somebody changed the database meanwhile: try again.");
        }
        points += written;
    }
    made.publish();
    note(std::vector<std::string>(notes.begin(), notes.end()));
    answer(counted(points, "point") + " written to " + counted(parts.size(), "file") + " in \"" +
               command.folder + "\".",
           [&](JsonText& json) {
               json.member("points", points);
               json.member("folder", command.folder);
               json.member("files", names);
           });
}

}  // namespace

void addSplitCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<SplitCommand>();
    CLI::App* const command =
        app.add_subcommand("split", "Put the points of a database into many files");
    addDatabaseFile(*command, invocation);
    command->add_option("folder", options->folder, "Where to make them")
        ->type_name("FOLDER")
        ->required();
    CLI::Option_group* const by = command->add_option_group("by");
    by->add_option("--tiles", options->tiles,
                   "Make a file of each square of x and y with edges of this length, in the unit\n"
                   "of the coordinates")
        ->type_name("SIZE")
        ->check(positiveNumber(1e-9, 1e15));
    by->add_option("--by", options->attribute, "Make a file of each value of an attribute")
        ->type_name("ATTRIBUTE")
        ->check(notEmpty("Name an attribute."));
    by->require_option(1);
    addFilter(*command, options->filter);
    command->add_option("--format", options->format, "Format of the files (default: databases)")
        ->check(CLI::IsMember({"las", "laz", "ply", "csv", "xyz"}));
    command->footer(
        "Each point is in one file. Tiles begin at the multiples of their size, and hold the "
        "points\n"
        "on their lower edges; files are called FILE_X_Y by the lower corner, or FILE_VALUE. "
        "There\n"
        "are 1000 at most. Databases keep attributes, ids and metadata items; the other formats\n"
        "hold what \"qrbtool export\" writes. All files appear when the last one is complete; a\n"
        "failure leaves none, and no file is replaced.\n"
        "\n"
        "Examples:\n"
        "  qrbtool split region.qrbx tiles --tiles 500\n"
        "  qrbtool split region.qrbx tiles --tiles 1000 --format laz\n"
        "  qrbtool split scan.qrbx classes --by tarvo.class");
    command->callback([options, &invocation] {
        invocation.work = [options](Database& database) { runSplit(database, *options); };
    });
}

}  // namespace tarvo::cli
