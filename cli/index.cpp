// qrbtool index: the point index of a database.

#include "cli/attributenames.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/indextext.h"
#include "cli/manner.h"
#include "cli/nodestatistics.h"
#include "cli/number.h"
#include "cli/options.h"
#include "cli/output.h"

#include <CLI/CLI.hpp>

#include <limits>
#include <memory>

namespace tarvo::cli {

namespace {

struct IndexOptions {
    std::string filter;
    bool levels = false;
    std::uint32_t depth = std::numeric_limits<std::uint32_t>::max();
    std::uint32_t node = 0;
    bool hasNode = false;
    std::vector<std::string> attributes;
};

void runIndex(const Database& database, const IndexOptions& options) {
    if (options.hasNode) {
        const qrb::Pointcloud& cloud = database.cloud();
        print(nodeStatistics(cloud, options.node,
                             attributesNamed({&cloud.pointAttributes()}, options.attributes),
                             manner().json));
        return;
    }
    const auto stat = database.cloud().stat();
    qrb::pointcloud::IndexNode root;
    stat.index(root, options.filter);
    Leaves leaves;
    if (options.levels || manner().json) {
        // Which nodes are leaves only the whole index tells.
        qrb::pointcloud::IndexNode whole;
        if (!options.filter.empty()) {
            stat.index(whole);
        }
        leaves = leavesOf(options.filter.empty() ? root : whole);
    }
    if (options.levels) {
        print(manner().json ? indexLevelsJson(root, leaves) : indexLevels(root, leaves));
    } else {
        print(manner().json ? indexTreeJson(root, options.depth, leaves)
                            : indexTree(root, options.depth));
    }
}

}  // namespace

void addIndexCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<IndexOptions>();
    CLI::App* const command =
        app.add_subcommand("index", "Tell about the nodes of the point index");
    addDatabaseFile(*command, invocation);
    CLI::Option* const filter =
        command
            ->add_option("-f,--filter", options->filter,
                         "Only nodes that may hold points which satisfy the expression, or the one "
                         "that a command finds, such as \"find fullest leaf\"")
            ->type_name("EXPRESSION")
            ->check(notEmpty());
    CLI::Option* const levels =
        command->add_flag("--levels", options->levels, "A line per level in place of the tree");
    CLI::Option* const depth =
        command->add_option("--depth", options->depth, "Levels below the root that are written")
            ->type_name("LEVELS")
            ->transform(wholeNumber());
    CLI::Option* const node =
        command->add_option("--node", options->node, "The values that a node and those below hold")
            ->type_name("ID")
            ->transform(wholeNumber(1));
    command
        ->add_option("-a,--attribute,--attributes", options->attributes,
                     "Attributes to tell of, or patterns such as 'tarvo.*' (default: all)")
        ->type_name("NAMES")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->needs(node);
    node->excludes(filter)->excludes(levels)->excludes(depth);
    levels->excludes(depth);
    command->footer(
        "Points: of the node and all below. Own: stored in the node itself; in a node that is no\n"
        "leaf these stand for the points below, as its level of detail. Revision: the transaction\n"
        "that last changed the node. Commands that find a node: find largest leaf, find fullest\n"
        "leaf, find largest node, find fullest node.\n"
        "\n"
        "Examples:\n"
        "  qrbtool index scan.qrbx --levels\n"
        "  qrbtool index scan.qrbx --filter \"tarvo.class == 6\" --depth 2\n"
        "  qrbtool index scan.qrbx --node 17 --attribute tarvo.xyz");
    command->callback([options, node, &invocation] {
        options->hasNode = node->count() > 0;
        invocation.work = [options](Database& database) { runIndex(database, *options); };
    });
}

}  // namespace tarvo::cli
