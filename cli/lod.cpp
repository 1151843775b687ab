// qrbtool lod: the level of detail of a database.

#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/number.h"
#include "cli/output.h"
#include "cli/texttable.h"

#include <CLI/CLI.hpp>
#include "cli/actions.h"

#include <memory>
#include <optional>

namespace tarvo::cli {

namespace {

enum LodMode : std::uint32_t { thinout = 1, combine = 2 };

struct LodOptions {
    std::string mode;  // empty: as it is
    std::optional<std::uint32_t> size;
};

std::string modeName(std::uint32_t mode) {
    return mode == thinout ? "thinout" : mode == combine ? "combine" : std::to_string(mode);
}

void tellLod(std::uint32_t mode, std::uint32_t size) {
    if (manner().json) {
        JsonText json;
        json.beginObject();
        json.member("mode", modeName(mode));
        json.member("size", size);
        json.endObject();
        print(json.text());
        return;
    }
    print(labelled("Mode", modeName(mode)) +
          labelled("Size", size == 0         ? "0 (off)"
                           : mode == thinout ? std::to_string(size) + " % of the points"
                                             : std::to_string(size)));
}

void showLod(const Database& database) {
    const auto& management = database.cloud().management();
    tellLod(management.getLodMode(), management.getChunkSizeLOD());
}

// What is told at the end needs no reading that could fail after the commit.
void changeLod(Database& database, std::uint32_t mode, std::uint32_t size) {
    const std::string modeText = std::to_string(mode);
    const std::string sizeText = std::to_string(size);
    database.change({"Update LOD", "LOD mode: " + modeText + "\nLOD size: " + sizeText,
                     "{\"lodMode\":" + modeText + ",\"chunkSizeLOD\":" + sizeText + "}"},
                    [&] {
                        auto& management = database.cloud().management();
                        management.setLodMode(mode);
                        management.setChunkSizeLOD(size);
                    });
    tellLod(mode, size);
}

void setLod(Database& database, const LodOptions& options) {
    const auto& management = database.cloud().management();
    const std::uint32_t mode = options.mode.empty()        ? management.getLodMode()
                               : options.mode == "combine" ? combine
                                                           : thinout;
    changeLod(database, mode, options.size.value_or(management.getChunkSizeLOD()));
}

void turnLodOff(Database& database) {
    changeLod(database, database.cloud().management().getLodMode(), 0);
}

}  // namespace

void addLodCommand(CLI::App& app, Invocation& invocation) {
    CLI::App* const command =
        app.add_subcommand("lod", "Show, build and remove the level of detail");
    addDatabaseFile(*command, invocation);
    const Actions<LodOptions> actions(*command, invocation);
    const auto show = [](Database& database, const LodOptions&) { showLod(database); };
    actions.add("show", "Tell the settings (the default)", show);
    CLI::App* const set = actions.add("set", "Change the settings and build anew", setLod);
    set->add_option("--mode", actions->mode, "How points are chosen")
        ->check(CLI::IsMember({"thinout", "combine"}));
    set->add_option("--size", actions->size,
                    "thinout: per cent of the points; combine: 1 to 16, up to 2^(n size) points "
                    "per node of an index with n dimensions; 0: none")
        ->type_name("SIZE")
        ->transform(wholeNumber());
    set->require_option(1, 2);
    actions.add("off", "Remove the level of detail",
                [](Database& database, const LodOptions&) { turnLodOff(database); });
    command->footer(
        "Nodes of the index that are no leaves hold some of the points below them, so that a\n"
        "viewer need not read all points to show all of the cloud.\n"
        "\n"
        "Examples:\n"
        "  qrbtool lod scan.qrbx\n"
        "  qrbtool lod scan.qrbx set --mode thinout --size 20\n"
        "  qrbtool lod scan.qrbx off");
    actions.otherwise(show);
}

}  // namespace tarvo::cli
