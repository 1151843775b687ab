// qrbtool defaults: the catalogue of default attributes and metadata items, and its versions.

#include "catalogue/catalogue.h"
#include "cli/attributetext.h"
#include "cli/commands.h"
#include "cli/errors.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/output.h"
#include "cli/texttable.h"
#include "core/defaultattribute.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <utility>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::PointAttribute;

struct DefaultsOptions {
    std::string name;  // empty: all
};

void listDefaultAttributes() {
    if (manner().json) {
        JsonText json;
        json.beginArray();
        for (const auto& entry : catalogue::attributes()) {
            json.raw(core::defaultAttribute(entry).toJson());
        }
        json.endArray();
        print(json.text());
        return;
    }
    std::vector<PointAttribute> definitions;
    for (const auto& entry : catalogue::attributes()) {
        definitions.push_back(core::defaultAttribute(entry));
    }
    print(attributeTable(definitions));
}

void showDefaultAttributes(const DefaultsOptions& options) {
    if (options.name.empty()) {
        listDefaultAttributes();
        return;
    }
    const auto* const entry = catalogue::findAttribute(options.name);
    if (entry == nullptr) {
        throw Failure("\"" + options.name + "\" is not a default attribute.",
                      "\"qrbtool defaults attributes\" lists them.");
    }
    const PointAttribute definition = core::defaultAttribute(*entry);
    print(manner().json ? definition.toJson() + "\n"
                        : describeAttribute(definition) + labelled("Group", entry->group));
}

void putItem(JsonText& json, const catalogue::MetaDataEntry& entry) {
    json.beginObject();
    json.member("name", entry.name);
    json.member("title", entry.title);
    json.member("description", entry.description);
    json.key("schema");
    json.raw(entry.schema);
    json.key("example");
    json.raw(entry.example);
    if (!entry.neutral.empty()) {
        json.key("neutral");
        json.raw(entry.neutral);
    }
    json.endObject();
}

void showDefaultMetaData(const DefaultsOptions& options) {
    JsonText json;
    if (!options.name.empty()) {
        const auto* const entry = catalogue::findMetaData(options.name);
        if (entry == nullptr) {
            throw Failure("\"" + options.name + "\" is not a default metadata item.",
                          "\"qrbtool defaults metadata\" lists them.");
        }
        putItem(json, *entry);
        print(manner().json ? json.text()
                            : labelled("Name", entry->name) + labelled("Title", entry->title) +
                                  labelled("Description", entry->description) +
                                  labelled("Schema", indentedJson(entry->schema)) +
                                  labelled("Example", indentedJson(entry->example)) +
                                  labelled("Neutral", indentedJson(entry->neutral)));
        return;
    }
    TextTable table({{"Name"}, {"Title"}});
    json.beginArray();
    for (const auto& entry : catalogue::metaData()) {
        putItem(json, entry);
        table.add({entry.name, entry.title});
    }
    json.endArray();
    print(manner().json ? json.text() : table.text());
}

void showVersions() {
    const std::pair<const char*, catalogue::Stamp> stamps[] = {
        {"Point attributes", catalogue::attributesStamp()},
        {"Attribute groups", catalogue::groupsStamp()},
        {"Metadata items", catalogue::metaDataStamp()},
        {"File schemas", catalogue::schemasStamp()}};
    JsonText json;
    json.beginArray();
    TextTable table({{"Definitions"}, {"Version"}, {"Date"}});
    for (const auto& [definitions, stamp] : stamps) {
        json.beginObject();
        json.member("definitions", definitions);
        json.member("version", stamp.version);
        json.member("date", stamp.date);
        json.endObject();
        table.add({definitions, stamp.version, stamp.date});
    }
    json.endArray();
    print(manner().json ? json.text() : table.text());
}

}  // namespace

void addDefaultsCommand(CLI::App& app, Invocation& invocation) {
    const auto options = std::make_shared<DefaultsOptions>();
    CLI::App* const command =
        app.add_subcommand("defaults", "Show the default attributes and metadata items");
    command->require_subcommand(1);
    const auto addTable = [&](const char* name, const char* description, auto show) {
        CLI::App* const table = command->add_subcommand(name, description);
        table->add_option("name", options->name, "One of them (default: list all)")
            ->type_name("NAME");
        table->callback([show, options, &invocation] {
            invocation.run = [show, options](const qrb::Context&) { show(*options); };
        });
    };
    addTable("attributes", "The default point attributes", showDefaultAttributes);
    addTable("metadata", "The default metadata items, their JSON schemas and examples",
             showDefaultMetaData);
    CLI::App* const versions = command->add_subcommand("versions", "The versions of the tables");
    versions->callback(
        [&invocation] { invocation.run = [](const qrb::Context&) { showVersions(); }; });
    command->footer(
        "Examples:\n"
        "  qrbtool defaults attributes\n"
        "  qrbtool defaults metadata tarvo.geo_tag\n"
        "  qrbtool defaults versions");
}

}  // namespace tarvo::cli
