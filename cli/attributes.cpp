// qrbtool attributes: the point attribute definitions of a database.

#include "cli/actions.h"
#include "cli/answer.h"
#include "cli/attributetext.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/output.h"
#include "cli/terminal.h"
#include "cli/text.h"
#include "cli/textfile.h"
#include "cli/texttable.h"
#include "core/attributerules.h"
#include "core/redefinition.h"
#include "numbers/numbertext.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::PointAttribute;
using qrb::pointcloud::PointAttributes;

struct AttributeOptions {
    std::string name;
    std::string newName;
    std::vector<std::string> names;
    std::string file;
    std::string pick;
    bool convert = false;
    bool dryRun = false;
};

void listAttributes(const PointAttributes& attributes, const AttributeOptions& options) {
    std::vector<PointAttribute> definitions;
    for (const std::string& name : attributes.listFiltered(options.pick)) {
        definitions.push_back(attributes.get(name));
    }
    if (!manner().json) {
        print(attributeTable(definitions));
        return;
    }
    JsonText json;
    json.beginArray();
    for (const PointAttribute& definition : definitions) {
        json.raw(definition.toJson());
    }
    json.endArray();
    print(json.text());
}

void showAttribute(const PointAttribute& definition) {
    print(manner().json ? definition.toJson() + "\n" : describeAttribute(definition));
}

// The definition in a JSON file, the text of one as "show --json" writes it.
PointAttribute readDefinition(const std::string& fileName) {
    PointAttribute definition;
    definition.fromJson(readTextFile(fileName));
    return definition;
}

// What is doubtful about a definition, beside the answer.
void tellHints(const PointAttribute& definition, const core::AttributeUse& use) {
    for (const core::AttributeFinding& finding : core::checkAttribute(definition, use)) {
        const char* front = "";
        if (finding.severity == core::Severity::REFUSAL) {
            front = "The library may refuse this: ";
        } else if (finding.severity == core::Severity::NOTE) {
            front = "Note: ";
        }
        note(front + finding.text);
    }
}

void addAttributes(Database& database, const AttributeOptions& options) {
    auto& attributes = database.cloud().pointAttributes();
    if (!options.file.empty()) {
        const PointAttribute definition = readDefinition(options.file);
        tellHints(definition, {});
        database.change({"Add attribute " + definition.name}, [&] { attributes.add(definition); });
        answer("The attribute \"" + oneLine(definition.name) + "\" is added.",
               [&](JsonText& json) { json.member("added", std::vector{definition.name}); });
        return;
    }
    database.change({"Add attributes"}, [&] {
        for (const std::string& name : options.names) {
            attributes.addDefault(name);
        }
    });
    answer(counted(options.names.size(), "attribute") + " added.",
           [&](JsonText& json) { json.member("added", options.names); });
}

// What a redefinition does to the values that points have.
std::optional<core::ValueChanges> countChanges(const Database& database,
                                               const PointAttribute& stored,
                                               const PointAttribute& definition) {
    ProgressLine progress("Comparing values");
    return core::countChanges(database.cloud(), stored, definition,
                              [&progress](int percent) { progress.update(percent / 100.0); });
}

// changes: none where they can't be told.
void tellRedefined(const std::string& sentence, const std::string& name,
                   const std::optional<core::ValueChanges>& changes) {
    answer(sentence, [&](JsonText& json) {
        json.member("attribute", name);
        json.key("values_changed");
        changes ? json.value(changes->changed()) : json.raw("null");
    });
}

void putAttribute(Database& database, const AttributeOptions& options) {
    const PointAttribute definition = readDefinition(options.file);
    auto& attributes = database.cloud().pointAttributes();
    const PointAttribute stored = attributes.get(definition.name);
    core::AttributeUse use;
    use.stored = &stored;
    use.key = definition.name == attributes.primaryAttributeName() ||
              definition.name == attributes.pointIdName();
    tellHints(definition, use);
    std::optional<core::ValueChanges> changes;
    std::string told;
    // Within the transaction, so that nobody else changes the values meanwhile. What the library
    // refuses is refused before there is talk of what it would do.
    const auto redefine = [&] {
        const PointAttribute before = attributes.get(definition.name);
        changes = countChanges(database, before, definition);
        attributes.put(definition);
        told = changes ? core::describe(*changes, before, definition) : "";
    };
    const Change change{"Redefine attribute " + definition.name};
    if (options.dryRun) {
        database.tryOut(change, redefine);
        tellRedefined(
            oneLine(!changes
                        ? "What becomes of the values of \"" + definition.name + "\" can't be told."
                    : told.empty() ? "No value of \"" + definition.name + "\" would change."
                                   : told),
            definition.name, changes);
        return;
    }
    database.change(change, [&] {
        redefine();
        if (!told.empty() && !options.convert) {
            throw Failure(told, "Give --convert to do it.");
        }
    });
    const std::uint64_t changed = told.empty() ? 0 : changes->changed();
    tellRedefined("The attribute \"" + oneLine(definition.name) + "\" is defined" +
                      (changed == 0 ? ""
                                    : "; " + numbers::groupedText(changed) +
                                          (changed == 1 ? " value changed" : " values changed")) +
                      ".",
                  definition.name, changes);
}

void removeAttributes(Database& database, const std::vector<std::string>& names) {
    database.change({"Remove attributes"}, [&] {
        for (const std::string& name : names) {
            database.cloud().pointAttributes().remove(name);
        }
    });
    answer(counted(names.size(), "attribute") + " removed.",
           [&](JsonText& json) { json.member("removed", names); });
}

void duplicateAttribute(Database& database, const AttributeOptions& options) {
    database.change({"Duplicate attribute " + options.name}, [&] {
        database.cloud().pointAttributes().duplicate(options.name, options.newName);
    });
    answer("The attribute \"" + options.newName + "\" is a copy of \"" + options.name + "\".",
           [&](JsonText& json) { json.member("added", std::vector{options.newName}); });
}

void discardValues(Database& database, const std::string& name) {
    database.change({"Discard the values of attribute " + name},
                    [&] { database.cloud().pointAttributes().discard(name); });
    answer("All points have the default value of \"" + name + "\".",
           [&](JsonText& json) { json.member("attribute", name); });
}

void listGroups(const PointAttributes& attributes) {
    std::map<std::string, std::map<std::uint32_t, std::string>> groups;
    std::vector<std::string> order;  // of the groups: as they come
    for (const std::string& name : attributes.list()) {
        const PointAttributes::Group group = attributes.group(name);
        if (std::find(order.begin(), order.end(), group.name) == order.end()) {
            order.push_back(group.name);
        }
        groups[group.name][group.rank] = name;
    }
    JsonText json;
    json.beginObject();
    std::string text;
    for (const std::string& group : order) {
        std::vector<std::string> names;
        text += oneLine(group) + "\n";
        for (const auto& [rank, name] : groups[group]) {
            names.push_back(name);
            text += "  " + oneLine(name) + "\n";
        }
        json.member(group, names);
    }
    json.endObject();
    print(manner().json ? json.text() : text);
}

}  // namespace

void addAttributesCommand(CLI::App& app, Invocation& invocation) {
    CLI::App* const command =
        app.add_subcommand("attributes", "List, add, change and remove point attributes");
    addDatabaseFile(*command, invocation);
    const Actions<AttributeOptions> actions(*command, invocation);
    const auto addName = [&](CLI::App& target) {
        target.add_option("name", actions->name, "Name of the attribute")
            ->type_name("ATTRIBUTE")
            ->required();
    };
    const auto list = [](Database& database, const AttributeOptions& given) {
        listAttributes(database.cloud().pointAttributes(), given);
    };
    CLI::App* const listing = actions.add("list", "List them (the default)", list);
    listing
        ->add_option("filter", actions->pick,
                     "Names with * and ? as wildcards, or #TAG (default: all)")
        ->type_name("FILTER");
    CLI::App* const show = actions.add(
        "show", "Tell all about one", [](Database& database, const AttributeOptions& given) {
            showAttribute(database.cloud().pointAttributes().get(given.name));
        });
    addName(*show);
    CLI::App* const add = actions.add("add", "Add some", addAttributes);
    add->add_option("names", actions->names, "Names of default attributes")->type_name("DEFAULT");
    add->add_option("--json", actions->file, "File with a definition of its own (- for the input)")
        ->type_name("FILE");
    add->require_option(1);
    CLI::App* const put =
        actions.add("put", "Redefine one; its values are converted", putAttribute);
    put->add_option("--json", actions->file, "File with the definition (- for the input)")
        ->type_name("FILE")
        ->required();
    CLI::Option* const convert = put->add_flag(
        "--convert", actions->convert, "Redefine it even where values of points change by that");
    put->add_flag("--dry-run", actions->dryRun, "Only try it, and tell which values would change")
        ->excludes(convert);
    actions
        .add("remove", "Remove some with all values",
             [](Database& database, const AttributeOptions& given) {
                 removeAttributes(database, given.names);
             })
        ->add_option("names", actions->names, "Their names")
        ->type_name("ATTRIBUTE")
        ->required();
    CLI::App* const duplicate =
        actions.add("duplicate", "Copy one with all values", duplicateAttribute);
    addName(*duplicate);
    duplicate->add_option("new", actions->newName, "Name of the copy")
        ->type_name("NEW")
        ->required();
    addName(*actions.add("discard", "Give all points the default value again",
                         [](Database& database, const AttributeOptions& given) {
                             discardValues(database, given.name);
                         }));
    actions.add("group", "List them by the groups in which they are shown",
                [](Database& database, const AttributeOptions&) {
                    listGroups(database.cloud().pointAttributes());
                });
    command->footer(
        "\"qrbtool defaults attributes\" lists the default attributes.\n"
        "\n"
        "Examples:\n"
        "  qrbtool attributes scan.qrbx\n"
        "  qrbtool attributes scan.qrbx add tarvo.selected tarvo.rgba\n"
        "  qrbtool attributes scan.qrbx show tarvo.class --json > class.json\n"
        "  qrbtool attributes scan.qrbx put --json class.json");
    actions.otherwise(list);
}

}  // namespace tarvo::cli
