// qrbtool select: reads points.

#include "cli/attributenames.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/number.h"
#include "cli/options.h"
#include "cli/output.h"
#include "cli/pointwriter.h"
#include "cli/terminal.h"
#include "cli/text.h"
#include "core/delimitedpoints.h"
#include "files/path.h"
#include "qrb/pointcloud.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <limits>
#include <memory>

namespace tarvo::cli {

namespace {

constexpr std::uint32_t pageSize = 65536;
constexpr std::uint32_t countPageSize = 10'000'000;

struct SelectOptions {
    std::string filter;
    std::string nodes;
    bool hasNodes = false;
    std::vector<std::string> attributes;
    std::uint64_t limit = std::numeric_limits<std::uint64_t>::max();
    bool count = false;
    std::string format;  // empty: as the extension promises
    std::string output;
};

// What the points are written as: a name promises csv, json or jsonl by its extension.
std::string formatOf(const SelectOptions& options) {
    std::string extension = files::nameOf(files::pathOf(options.output).extension());
    std::ranges::transform(extension, extension.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (manner().json && isStandardOutput(options.output)) {
        if (!options.format.empty() && options.format != "json") {
            throw UsageError(
                "With --json points are written as JSON, not as " + options.format + ".",
                "Leave one of --json and --format out, or name a file with --output.");
        }
        return "json";
    }
    if (extension != ".csv" && extension != ".json" && extension != ".jsonl") {
        return options.format.empty() ? "table" : options.format;
    }
    const std::string promised = extension.substr(1);
    if (!options.format.empty() && options.format != promised) {
        throw UsageError("\"" + options.output + "\" would hold " + options.format + ".",
                         "Give the name the extension of its format.");
    }
    return promised;
}

// The columns of "NAME" or "NAME[I]" of the command line.
std::vector<core::PointColumn> columnsOf(const qrb::Pointcloud& cloud, const std::string& text) {
    const auto& attributes = cloud.pointAttributes();
    const std::size_t open = text.find('[');
    const std::string name = text.substr(0, open);
    const auto definition = attributes.get(name);
    std::vector<core::PointColumn> columns = core::columnsOf(definition);
    if (open == std::string::npos) {
        return columns;
    }
    std::uint32_t element = 0;
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data() + open + 1, end, element);
    if (error != std::errc() || next + 1 != end || *next != ']' || element >= definition.length) {
        throw Failure("The attribute \"" + name + "\" has no element \"" + text + "\".",
                      "Its elements are 0 to " + std::to_string(definition.length - 1) + ".");
    }
    return {columns[element]};
}

std::vector<core::PointColumn> selectedColumns(const qrb::Pointcloud& cloud,
                                               const SelectOptions& options) {
    std::vector<core::PointColumn> columns;
    const auto& attributes = cloud.pointAttributes();
    for (const std::string& name : options.attributes.empty()
                                       ? attributes.list()
                                       : attributesNamed({&attributes}, options.attributes)) {
        for (core::PointColumn& column : columnsOf(cloud, name)) {
            columns.push_back(std::move(column));
        }
    }
    return columns;
}

core::PointSelection selectionOf(const SelectOptions& options) {
    core::PointSelection selection{options.filter, {}};
    if (options.hasNodes) {
        selection.nodes = parseNodes(options.nodes);
    }
    return selection;
}

std::uint64_t countPoints(qrb::pointcloud::QuerySelect& query, std::uint64_t limit) {
    std::uint64_t total = 0;
    while (total < limit) {
        checkInterrupted();
        const std::uint32_t count = query.next(
            static_cast<std::uint32_t>(std::min<std::uint64_t>(countPageSize, limit - total)));
        if (count == 0) {
            break;
        }
        total += count;
    }
    return total;
}

// Returns their number.
std::uint64_t writePoints(const qrb::Pointcloud& cloud, const SelectOptions& options,
                          const std::string& format, Output& output) {
    if (format == "csv") {
        return core::writeDelimited(
            cloud, selectionOf(options), selectedColumns(cloud, options), {',', options.limit},
            [&](std::string_view text) { output.write(text); }, [](int) { checkInterrupted(); });
    }
    const auto page = static_cast<std::uint32_t>(
        std::max<std::uint64_t>(1, std::min<std::uint64_t>(pageSize, options.limit)));
    core::PointPages points(cloud, selectionOf(options), selectedColumns(cloud, options), page);
    const auto writer = makePointWriter(format, points, output);
    writer->begin();
    std::uint64_t total = 0;
    while (total < options.limit) {
        checkInterrupted();
        const std::uint32_t count = points.next(
            static_cast<std::uint32_t>(std::min<std::uint64_t>(page, options.limit - total)));
        if (count == 0) {
            break;
        }
        for (std::uint32_t i = 0; i < count; ++i) {
            writer->point(i);
        }
        total += count;
    }
    writer->end();
    return total;
}

std::string countText(std::uint64_t count, bool asJson) {
    if (!asJson) {
        return std::to_string(count) + "\n";
    }
    JsonText json;
    json.beginObject();
    json.member("points", count);
    json.endObject();
    return json.text();
}

void runSelect(const Database& database, const SelectOptions& options) {
    const std::string format = options.count ? "" : formatOf(options);
    try {
        Output output(database, options.output);
        if (options.count) {
            auto query = selectionOf(options).query(database.cloud());
            output.write(countText(countPoints(query, options.limit),
                                   manner().json && isStandardOutput(options.output)));
        } else if (writePoints(database.cloud(), options, format, output) == 0 &&
                   output.replacesFile()) {
            // Rather a filter that is mistyped than a table that nobody wants any more.
            throw Failure("No points are selected; \"" + options.output + "\" was left as it was.");
        }
        output.finish();
    } catch (const OutputClosed&) {
        // The reader has seen what it wanted.
    }
}

}  // namespace

void addSelectCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<SelectOptions>();
    CLI::App* const command = app.add_subcommand("select", "Read points");
    addDatabaseFile(*command, invocation);
    addFilter(*command, options->filter);
    CLI::Option* const nodes =
        addNodes(*command, options->nodes, "Nodes of the point index whose points are read");
    command
        ->add_option(
            "-a,--attributes", options->attributes,
            "Attributes, elements such as tarvo.xyz[2], or patterns such as 'tarvo.*', to write "
            "(default: all)")
        ->type_name("NAMES")
        ->delimiter(',')
        ->allow_extra_args(false);
    command->add_option("-l,--limit", options->limit, "Largest number of points")
        ->type_name("POINTS")
        ->transform(wholeNumber(0, std::numeric_limits<std::uint64_t>::max()));
    command->add_flag("-c,--count", options->count, "Write the number of points only");
    command
        ->add_option("--format", options->format,
                     "How points are written (default: as the extension of the output says, else "
                     "table)")
        ->check(CLI::IsMember({"table", "csv", "json", "jsonl"}));
    command->add_option("-o,--output", options->output, "File to write (default: the terminal)")
        ->type_name("FILE");
    command->footer(
        "Numbers have the decimals of their attribute's resolution. csv has a header line;\n"
        "\"qrbtool import\" reads it back. json is an array with an object per\n"
        "point, jsonl an object per line.\n"
        "\n"
        "Examples:\n"
        "  qrbtool select scan.qrbx --limit 10\n"
        "  qrbtool select scan.qrbx --filter \"tarvo.xyz[2] > 5 && tarvo.class == 6\" --count\n"
        "  qrbtool select scan.qrbx -a tarvo.xyz,tarvo.class -o points.csv");
    command->callback([options, nodes, &invocation] {
        options->hasNodes = nodes->count() > 0;
        invocation.work = [options](Database& database) { runSelect(database, *options); };
    });
}

}  // namespace tarvo::cli
