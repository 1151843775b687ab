// qrbtool diff: what is different between two databases, or two transactions of one.

#include "cli/attributenames.h"
#include "cli/commands.h"
#include "cli/errors.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/number.h"
#include "cli/output.h"
#include "cli/terminal.h"
#include "cli/text.h"
#include "core/comparedstates.h"
#include "core/databasediff.h"
#include "core/difftext.h"
#include "core/valueformat.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace tarvo::cli {

namespace {

struct DiffCommand {
    std::vector<std::string> files;
    std::uint32_t from = 0;  // transactions; 0: the current one
    std::uint32_t to = 0;
    core::DiffOptions options;
    bool definitionsOnly = false;
};

void addState(JsonText& json, const char* name, const core::StateName& state) {
    json.key(name);
    json.beginObject();
    json.member("file", state.file);
    json.member("transaction", state.transaction);
    json.endObject();
}

void addFields(JsonText& json, const char* name, const std::vector<core::FieldDiff>& fields) {
    json.key(name);
    json.beginArray();
    for (const core::FieldDiff& field : fields) {
        json.beginObject();
        json.member("field", field.field);
        json.member("before", field.before);
        json.member("after", field.after);
        json.endObject();
    }
    json.endArray();
}

void addDefinitions(JsonText& json, const core::DefinitionsDiff& diff) {
    addFields(json, "settings", diff.settings);
    json.key("attributes");
    json.beginObject();
    json.member("added", diff.added);
    json.member("removed", diff.removed);
    json.key("changed");
    json.beginArray();
    for (const core::DefinitionDiff& one : diff.changed) {
        json.beginObject();
        json.member("name", one.attribute);
        addFields(json, "fields", one.fields);
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

void addMetaData(JsonText& json, const core::MetaDataDiff& diff) {
    json.key("metadata");
    json.beginObject();
    json.member("added", diff.added);
    json.member("removed", diff.removed);
    json.member("changed", diff.changed);
    json.member("now_signed", diff.nowSigned);
    json.member("no_longer_signed", diff.noLongerSigned);
    json.endObject();
}

// What is no number, as "nan", is written as a text.
void addNumbers(JsonText& json, const char* name, const std::vector<std::string>& texts) {
    json.key(name);
    json.beginArray();
    for (const std::string& text : texts) {
        if (core::isJson(text)) {
            json.raw(text);
        } else {
            json.value(text);
        }
    }
    json.endArray();
}

void addExamples(JsonText& json, const char* name, const std::vector<core::PointExample>& all) {
    json.key(name);
    json.beginArray();
    for (const core::PointExample& one : all) {
        json.beginObject();
        json.member("id", one.id);
        addNumbers(json, "place", one.place);
        json.endObject();
    }
    json.endArray();
}

void addValues(JsonText& json, const std::vector<core::ValuesDiff>& all) {
    json.key("values");
    json.beginArray();
    for (const core::ValuesDiff& one : all) {
        json.beginObject();
        json.member("attribute", one.attribute);
        json.member("as_numbers", one.asNumbers);
        json.member("points", one.points);
        json.key("first");
        json.beginArray();
        for (const core::ValueExample& example : one.first) {
            json.beginObject();
            json.member("id", example.id);
            addNumbers(json, "before", example.before);
            addNumbers(json, "after", example.after);
            json.endObject();
        }
        json.endArray();
        json.endObject();
    }
    json.endArray();
}

void addPoints(JsonText& json, const core::PointsDiff& diff) {
    json.key("points");
    json.beginObject();
    json.member("before", diff.before);
    json.member("after", diff.after);
    json.member("added", diff.added);
    json.member("removed", diff.removed);
    json.member("changed", diff.changed);
    addExamples(json, "first_added", diff.firstAdded);
    addExamples(json, "first_removed", diff.firstRemoved);
    addValues(json, diff.values);
    json.member("not_compared", diff.notCompared);
    json.endObject();
}

std::string jsonOf(const core::ComparedStates& states, const core::DatabaseDiff& diff) {
    JsonText json;
    json.beginObject();
    addState(json, "before", states.nameBefore());
    addState(json, "after", states.nameAfter());
    json.member("different", !diff.none());
    addDefinitions(json, diff.definitions);
    addMetaData(json, diff.metaData);
    if (diff.points) {
        addPoints(json, *diff.points);
    }
    json.endObject();
    return json.text();
}

std::string headOf(const core::ComparedStates& states) {
    const auto line = [](const char* mark, const core::StateName& state) {
        return mark + (" " + state.file) + ", transaction " + std::to_string(state.transaction) +
               "\n";
    };
    return line("---", states.nameBefore()) + line("+++", states.nameAfter());
}

void runDiff(const qrb::Context& context, DiffCommand command) {
    const core::ComparedStates states(context, {command.files.front(), command.from},
                                      {command.files.back(), command.to}, manner().cacheSize);
    command.options.points = !command.definitionsOnly;
    command.options.attributes =
        attributesNamed({&states.before().pointAttributes(), &states.after().pointAttributes()},
                        command.options.attributes);
    const core::DatabaseDiff diff = [&] {
        ProgressLine progress("Comparing");
        return compareDatabases(states.before(), states.after(), states.areOfOneFile(),
                                command.options,
                                [&](int percent) { progress.update(percent / 100.0); });
    }();
    print(manner().json ? jsonOf(states, diff) : printable(headOf(states) + diffText(diff)));
    if (!diff.none()) {
        throw NegativeAnswer();
    }
}

}  // namespace

void addDiffCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<DiffCommand>();
    CLI::App* const command = app.add_subcommand(
        "diff", "Tell what is different between two databases, or two transactions of one");
    command->add_option("files", options->files, "The databases, or one with --from")
        ->type_name("FILE [FILE]")
        ->required();
    const auto addTransaction = [&](const char* name, std::uint32_t& number,
                                    const char* description) {
        return command->add_option(name, number, description)
            ->type_name("ID")
            ->transform(wholeNumber(1));
    };
    CLI::Option* const from = addTransaction("--from", options->from,
                                             "Transaction of the first (default: the current one)");
    addTransaction("--to", options->to, "Transaction of the second (default: the current one)");
    command
        ->add_option(
            "-a,--attributes", options->options.attributes,
            "Attributes whose values are compared, or patterns such as 'tarvo.*' (default: all)")
        ->type_name("NAMES")
        ->delimiter(',')
        ->allow_extra_args(false);
    command
        ->add_option("--first", options->options.first,
                     "How many points to show of each kind, those with the smallest ids")
        ->type_name("NUMBER")
        ->transform(wholeNumber(0, 1000))
        ->capture_default_str();
    CLI::Option* const definitionsOnly =
        command->add_flag("--definitions-only", options->definitionsOnly, "Leave the points out");
    command->get_option("--attributes")->excludes(definitionsOnly);
    command->footer(
        "Compares settings, definitions, metadata items and points, which are the same where they\n"
        "have the same id. Values of attributes that are defined alike are compared as stored;\n"
        "others as numbers, equal within half of the finer resolution. + stands before what the\n"
        "second has in addition, - before what it lacks, * before what is different. Both are\n"
        "opened to be read only. Of two transactions of one file only that is read which one of\n"
        "them changed. Ends with 0 where nothing is different, 1 where something is, and 2 where\n"
        "they can't be compared.\n"
        "\n"
        "Examples:\n"
        "  qrbtool diff monday.qrbx tuesday.qrbx\n"
        "  qrbtool diff scan.qrbx --from 3\n"
        "  qrbtool diff scan.qrbx --from 3 --to 5 -a tarvo.class --first 20\n"
        "  qrbtool diff scan.qrbx copy.qrbx --definitions-only && echo same");
    command->callback([options, from, &invocation] {
        if (options->files.size() > 2) {
            throw CLI::ValidationError("files", "two databases are compared");
        }
        if (options->files.size() == 1 && from->count() == 0) {
            throw CLI::ValidationError(
                "files", "a second database, or --from for a transaction of the first, is needed");
        }
        invocation.failureCode = 2;
        invocation.run = [options](const qrb::Context& context) { runDiff(context, *options); };
    });
}

}  // namespace tarvo::cli
