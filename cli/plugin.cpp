// qrbtool plugin: lists, describes and runs plugins.

#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/output.h"
#include "cli/pluginanswer.h"
#include "cli/terminal.h"
#include "cli/text.h"
#include "cli/texttable.h"
#include "core/filtertext.h"
#include "core/outputplace.h"
#include "core/utf8.h"
#include "files/path.h"
#include "plugin/interpreter.h"
#include "plugin/package.h"
#include "plugin/parameters.h"
#include "plugin/run.h"
#include "plugin/trust.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

namespace tarvo::cli {

namespace {

using plugin::Found;
using plugin::Manifest;
using plugin::Parameter;

struct PluginOptions {
    std::string folder;  // empty: the one beside the program
    std::string python = plugin::defaultPythonPath;
    std::string name;
    std::string file;
    std::vector<std::string> set;
    std::string results;
    bool trust = false;
};

std::string folderOf(const PluginOptions& options) {
    return options.folder.empty() ? plugin::pluginFolder("plugins") : options.folder;
}

// A name, or the place of a plugin where there is a slash in it.
plugin::Package packageOf(const PluginOptions& options) {
    if (options.name.find('/') != std::string::npos) {
        return plugin::readPackage(options.name);
    }
    const std::string folder = folderOf(options);
    for (const Found& found : plugin::findPlugins(folder)) {
        if (found.manifest && found.manifest->name == options.name) {
            return plugin::readPackage(found.place);
        }
        if (!found.manifest && files::pathOf(found.place).stem() == options.name) {
            throw Failure("\"" + found.place + "\" is no plugin that could be run.", found.problem);
        }
    }
    throw Failure("There is no plugin \"" + options.name + "\" in \"" + folder + "\".",
                  "\"qrbtool plugin list\" lists them; --plugins names another folder.");
}

void writeManifest(JsonText& json, const Manifest& manifest, const std::string& place) {
    json.beginObject();
    json.member("name", manifest.name);
    json.member("title", manifest.title);
    json.member("version", manifest.version);
    json.member("description", manifest.description);
    json.member("writes", manifest.writes);
    json.member("place", place);
    json.key("parameters");
    json.beginArray();
    for (const Parameter& parameter : manifest.parameters) {
        json.beginObject();
        json.member("name", parameter.name);
        json.member("title", parameter.title);
        json.member("description", parameter.description);
        json.member("type", plugin::wordOf(parameter.type));
        json.key("default");
        json.raw(parameter.defaultValue.value_or("null"));
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

void listPlugins(const PluginOptions& options) {
    const std::string folder = folderOf(options);
    JsonText json;
    json.beginArray();
    TextTable table({{"Name"}, {"Version"}, {"Writes"}, {"Title"}});
    for (const Found& found : plugin::findPlugins(folder)) {
        if (!found.manifest) {
            note("\"" + printable(found.place) + "\" is left out: " + printable(found.problem));
            continue;
        }
        const Manifest& manifest = *found.manifest;
        writeManifest(json, manifest, found.place);
        table.add({manifest.name, printable(manifest.version), manifest.writes ? "yes" : "no",
                   printable(manifest.title)});
    }
    json.endArray();
    print(manner().json ? json.text() : table.text());
}

// "0 to 10 m, default 1", and the choices.
std::string described(const Parameter& parameter) {
    std::string text = plugin::wordOf(parameter.type);
    if (!parameter.unit.empty()) {
        text += " in " + parameter.unit;
    }
    if (parameter.defaultValue) {
        text += ", default " + *parameter.defaultValue;
    }
    for (const plugin::Choice& choice : parameter.choices) {
        text += "\n" + choice.value + (choice.title == choice.value ? "" : ": " + choice.title);
    }
    if (!parameter.description.empty()) {
        text += "\n" + parameter.description;
    }
    return text;
}

void describePlugin(const PluginOptions& options) {
    const plugin::Package package = packageOf(options);
    const Manifest& manifest = package.manifest;
    if (manner().json) {
        JsonText json;
        writeManifest(json, manifest, package.place);
        print(json.text());
        return;
    }
    std::string text = labelled("Name", manifest.name) + labelled("Title", manifest.title) +
                       labelled("Version", manifest.version) +
                       labelled("Description", manifest.description) +
                       labelled("Writes", manifest.writes ? "yes, in one transaction" : "no") +
                       labelled("Place", package.place) + "\n";
    for (const Parameter& parameter : manifest.parameters) {
        text += labelled(parameter.name, described(parameter));
    }
    print(printable(text));
}

plugin::Values valuesOf(const Manifest& manifest, const std::vector<std::string>& set) {
    plugin::Values values;
    for (const std::string& text : set) {
        const std::size_t equals = text.find('=');
        const std::string name = text.substr(0, equals);
        const auto parameter =
            std::find_if(manifest.parameters.begin(), manifest.parameters.end(),
                         [&name](const Parameter& one) { return one.name == name; });
        if (equals == std::string::npos || parameter == manifest.parameters.end()) {
            throw UsageError("--set \"" + text + "\" gives no parameter of the plugin a value.",
                             "It is written NAME=VALUE; \"qrbtool plugin describe " +
                                 manifest.name + "\" lists the parameters.");
        }
        if (!values.emplace(name, plugin::valueFromText(*parameter, text.substr(equals + 1)))
                 .second) {
            throw UsageError("The parameter \"" + name + "\" is given twice.");
        }
    }
    return values;
}

// Plugins have filters from the library, which knows numbers only.
void useNumbers(const qrb::Context& context, const Manifest& manifest, plugin::Values& values,
                const std::string& fileName) {
    std::optional<Database> database;
    for (const Parameter& parameter : manifest.parameters) {
        const auto value = values.find(parameter.name);
        if (parameter.type != plugin::ParameterType::FILTER || value == values.end()) {
            continue;
        }
        const std::string filter = plugin::textOfValue(parameter, value->second);
        if (core::filterTokens(filter).empty()) {
            continue;
        }
        if (!database) {
            database.emplace(context, fileName);
        }
        value->second = plugin::valueFromText(parameter, database->recordedFilter(filter));
    }
}

// A plugin's output must not take the place of what it reads.
void checkOutputFiles(const qrb::Context& context, const plugin::Package& package,
                      const plugin::Values& values, const std::string& database) {
    std::vector<std::string> reads{database};
    std::vector<std::string> outputs;
    for (const Parameter& parameter : package.manifest.parameters) {
        const auto value = values.find(parameter.name);
        const std::string json =
            value != values.end() ? value->second : parameter.defaultValue.value_or("\"\"");
        if (parameter.type == plugin::ParameterType::INPUT_FILE) {
            reads.push_back(plugin::textOfValue(parameter, json));
        } else if (parameter.type == plugin::ParameterType::OUTPUT_FILE) {
            outputs.push_back(plugin::textOfValue(parameter, json));
        }
    }
    std::erase(outputs, "");
    for (const std::string& name : outputs) {
        core::checkOutputPlace(context, name, reads, core::OutputKind::Unknown);
    }
}

// Whether it may run: what somebody has agreed to, or agrees to now.
void requireTrust(const plugin::Package& package, bool giveTrust) {
    plugin::TrustedPlugins trusted;
    const plugin::Trust trust = trusted.trustIn(package);
    if (trust == plugin::Trust::GIVEN) {
        return;
    }
    if (!giveTrust) {
        throw Failure(trust == plugin::Trust::CHANGED
                          ? "The plugin has changed since it was trusted."
                          : "The plugin was never run by you.",
                      "It is the program \"" + package.place +
                          "\", which can do all that you can. Look at it, and give --trust to "
                          "run it from now on.");
    }
    trusted.give(package);
}

// First what became of the database, then what became of the results.
void tell(const plugin::Outcome& outcome, const PluginAnswer& answer,
          std::optional<AnswerList>& answers) {
    switch (outcome.end) {
        case plugin::Outcome::End::CANCELLED:
            checkInterrupted();
            throw Failure("The plugin was cancelled.");
        case plugin::Outcome::End::FAILED:
            throw Failure(outcome.text, outcome.details);
        case plugin::Outcome::End::DONE:
            break;
    }
    const std::string committed =
        outcome.transaction == 0
            ? ""
            : "Transaction " + std::to_string(outcome.transaction) + " is committed.";
    const auto lost = [&committed](const std::string& problem) {
        return Failure(committed.empty() ? "A result is lost." : committed + " A result is lost.",
                       problem);
    };
    if (!answer.problem().empty()) {
        throw lost(answer.problem());
    }
    try {
        if (answers) {
            answers->close(
                "],\n\"transaction\": " +
                (outcome.transaction == 0 ? "null" : std::to_string(outcome.transaction)) + "}\n");
            return;
        }
        print(committed.empty() ? "" : committed + "\n");
    } catch (const Failure& failure) {
        throw lost(failure.what());
    }
}

void runPlugin(const qrb::Context& context, const PluginOptions& options) {
    if (!core::isUtf8(options.file)) {
        throw Failure("The name of the database is no UTF-8.", "Rename it to run plugins on it.");
    }
    const plugin::Package package = packageOf(options);
    plugin::Request request;
    request.package = &package;
    plugin::Values values;
    try {
        values = valuesOf(package.manifest, options.set);
        useNumbers(context, package.manifest, values, options.file);
        request.arguments = plugin::argumentsOf(package.manifest, values);
    } catch (const UsageError&) {
        throw;
    } catch (const Failure& failure) {
        throw UsageError(failure.what(), failure.details());
    }
    checkOutputFiles(context, package, values, options.file);
    requireTrust(package, options.trust);
    request.interpreter = plugin::findInterpreter(options.python);
    request.scripts = embeddedScripts();
    request.library = context.libraryFilename();
    request.database = std::filesystem::absolute(options.file).string();
    request.agent = agentText();
    std::optional<AnswerList> answers;
    if (manner().json) {
        answers.emplace("{\"results\": [\n");
    }
    PluginAnswer answer(package.manifest.title, options.results);
    tell(plugin::run(request, answer), answer, answers);
}

}  // namespace

void addPluginCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<PluginOptions>();
    CLI::App* const command = app.add_subcommand("plugin", "List, describe and run plugins");
    command->require_subcommand(1);
    const auto add = [&](const char* name, const char* description, auto work) {
        CLI::App* const action = command->add_subcommand(name, description);
        action
            ->add_option("--plugins", options->folder,
                         "Folder of plugins (default: \"plugins\" beside the program)")
            ->type_name("FOLDER");
        action->callback([options, work, &invocation] {
            invocation.run = [options, work](const qrb::Context& context) {
                work(context, *options);
            };
        });
        return action;
    };
    add("list", "List them",
        [](const qrb::Context&, const PluginOptions& given) { listPlugins(given); });
    CLI::App* const describe =
        add("describe", "Tell what one does, and its parameters",
            [](const qrb::Context&, const PluginOptions& given) { describePlugin(given); });
    CLI::App* const run = add("run", "Run one on a database", runPlugin);
    for (CLI::App* const action : {describe, run}) {
        action
            ->add_option("name", options->name, "Its name, or its folder or script (with a slash)")
            ->type_name("NAME")
            ->required();
    }
    run->add_option("file", options->file, "The database")->type_name("FILE")->required();
    run->add_option("--set", options->set, "The value of a parameter, NAME=VALUE")
        ->type_name("NAME=VALUE")
        ->allow_extra_args(false);
    run->add_option("--results", options->results,
                    "Folder for pictures, tables (CSV) and HTML; without it texts and tables are "
                    "written to standard output, the rest is left out")
        ->type_name("FOLDER");
    run->add_flag("--trust", options->trust, "Agree to run it, now and later");
    run->add_option("--python", options->python, "The Python to run it with (default: python3)")
        ->type_name("PROGRAM");
    command->footer(
        "A plugin is a Python script with a description of its parameters. It runs in a process "
        "of\n"
        "its own and may do all that you may; it is run only after it was given --trust, and "
        "again\n"
        "when it has changed. What it prints goes to standard error.\n"
        "\n"
        "Examples:\n"
        "  qrbtool plugin list\n"
        "  qrbtool plugin describe ground-grid\n"
        "  qrbtool plugin run ground-grid flight.qrbx --set cell=2 --results grid --trust");
}

}  // namespace tarvo::cli
