// qrbtool info: what a database file holds.

#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errorreport.h"
#include "cli/errors.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/output.h"
#include "cli/terminal.h"
#include "cli/text.h"
#include "cli/texttable.h"
#include "core/referencesystem.h"
#include "core/valueformat.h"
#include "qrb/error.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <optional>

namespace tarvo::cli {

namespace {

using qrb::pointcloud::PointAttribute;
using qrb::pointcloud::Transaction;

struct AttributeInfo {
    PointAttribute definition;
    // Of the points, as texts; empty without points.
    std::vector<std::string> minimum;
    std::vector<std::string> maximum;
};

struct FileInfo {
    std::string fileName;
    std::string uuid;
    std::uint64_t size = 0;  // bytes
    std::uint64_t pointCount = 0;
    std::uint32_t currentTransaction = 0;
    std::vector<Transaction> transactions;
    std::vector<AttributeInfo> attributes;  // the primary one first
    std::vector<std::string> metaData;
    std::optional<core::ReferenceSystem> system;
};

AttributeInfo readAttribute(const qrb::Pointcloud& cloud, const std::string& name,
                            std::uint32_t rootNode) {
    AttributeInfo info;
    info.definition = cloud.pointAttributes().get(name);
    if (rootNode == 0) {
        return info;
    }
    const core::ValueFormat format(info.definition);
    std::vector<std::uint64_t> values(info.definition.length);
    const auto texts = [&] {
        std::vector<std::string> result;
        for (const std::uint64_t value : values) {
            result.push_back(format.isFinite(value) ? format.text(value) : "");
        }
        return result;
    };
    const auto stat = cloud.stat();
    stat.minimum(rootNode, name, format.type(), values.data(), false);
    info.minimum = texts();
    stat.maximum(rootNode, name, format.type(), values.data(), false);
    info.maximum = texts();
    return info;
}

FileInfo readInfo(const Database& database) {
    const qrb::Pointcloud& cloud = database.cloud();
    FileInfo info;
    info.fileName = database.fileName();
    info.uuid = cloud.getUuid();
    info.size = database.fileSize();
    const qrb::pointcloud::IndexNode root = cloud.stat().root();
    info.pointCount = static_cast<std::uint64_t>(root.pointCountTotal);
    info.currentTransaction = cloud.transactions().current();
    for (const std::uint32_t id : cloud.transactions().list()) {
        info.transactions.push_back(cloud.transactions().details(id));
    }
    for (const std::string& name : cloud.pointAttributes().list()) {
        info.attributes.push_back(readAttribute(cloud, name, info.pointCount > 0 ? root.id : 0));
    }
    info.metaData = cloud.metaData().list();
    info.system = core::referenceSystem(cloud.metaData());
    return info;
}

std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

std::string joined(const std::vector<std::string>& texts) {
    std::string result;
    for (const std::string& text : texts) {
        result += (result.empty() ? "" : " ") + text;
    }
    return result;
}

std::string infoText(const FileInfo& info) {
    std::string result;
    const auto line = [&](std::string label, const std::string& text) {
        label.resize(std::max<std::size_t>(label.size(), 14), ' ');
        result += label + oneLine(text) + "\n";
    };
    line("File", info.fileName);
    line("Identity", info.uuid);
    line("Size", sizeInWords(info.size));
    if (!info.transactions.empty()) {
        const Transaction& first = info.transactions.front();
        line("Created", first.start + " by " + first.agent);
        line("Library", firstLine(first.qrb));
    }
    line("Points", std::to_string(info.pointCount));
    if (!info.attributes.empty() && !info.attributes.front().minimum.empty()) {
        const AttributeInfo& primary = info.attributes.front();
        line("Extent", joined(primary.minimum));
        line("", joined(primary.maximum));
    }
    line("Coordinates", info.system ? core::describe(*info.system) : "unknown system");
    result += "\nTransactions\n";
    for (const Transaction& transaction : info.transactions) {
        result += (transaction.id == info.currentTransaction ? "* " : "  ") +
                  std::to_string(transaction.id) + "  " + transaction.stop + "  " +
                  firstLine(transaction.title) + " (" + firstLine(transaction.agent) + ")\n";
    }
    result += "\nAttributes\n";
    std::size_t width = 0;
    for (const AttributeInfo& attribute : info.attributes) {
        width = std::max(width, attribute.definition.name.size() + 5);
    }
    for (const AttributeInfo& attribute : info.attributes) {
        std::string name = oneLine(attribute.definition.name);
        if (attribute.definition.length != 1) {
            name += "[" + std::to_string(attribute.definition.length) + "]";
        }
        name.resize(std::max(width, name.size()), ' ');
        std::string range;
        for (std::size_t i = 0; i < attribute.minimum.size(); ++i) {
            range +=
                (i == 0 ? "" : ", ") + attribute.minimum[i] +
                (attribute.minimum[i] == attribute.maximum[i] ? "" : ".." + attribute.maximum[i]);
        }
        result += "  " + name + "  " + range +
                  (range.empty() || attribute.definition.unitSymbol.empty()
                       ? ""
                       : " " + oneLine(attribute.definition.unitSymbol)) +
                  "\n";
    }
    result += "\nMetadata\n";
    for (const std::string& name : info.metaData) {
        result += "  " + oneLine(name) + "\n";
    }
    return result;
}

void putAttribute(JsonText& json, const AttributeInfo& attribute) {
    const PointAttribute& definition = attribute.definition;
    json.beginObject();
    json.member("name", definition.name);
    json.member("title", definition.title);
    json.member("unit_symbol", definition.unitSymbol);
    json.member("length", definition.length);
    json.member("resolution", definition.resolution);
    json.member("minimum_value", definition.minimumValue);
    json.member("maximum_value", definition.maximumValue);
    json.key("minimum");
    json.numbers(attribute.minimum);
    json.key("maximum");
    json.numbers(attribute.maximum);
    json.endObject();
}

void putSystem(JsonText& json, const std::optional<core::ReferenceSystem>& system) {
    if (!system) {
        json.raw("null");
        return;
    }
    json.beginObject();
    json.member("name", system->name);
    json.member("code", system->code);
    json.member("not_understood", system->unread);
    json.endObject();
}

std::string infoJson(const FileInfo& info) {
    JsonText json;
    json.beginObject();
    json.member("file", info.fileName);
    json.member("uuid", info.uuid);
    json.member("size", info.size);
    json.member("point_count", info.pointCount);
    json.member("current_transaction", info.currentTransaction);
    json.key("reference_system");
    putSystem(json, info.system);
    json.key("transactions");
    json.beginArray();
    for (const Transaction& transaction : info.transactions) {
        json.beginObject();
        json.member("id", transaction.id);
        json.member("title", transaction.title);
        json.member("agent", transaction.agent);
        json.member("library", transaction.qrb);
        json.member("start", transaction.start);
        json.member("stop", transaction.stop);
        json.endObject();
    }
    json.endArray();
    json.key("attributes");
    json.beginArray();
    for (const AttributeInfo& attribute : info.attributes) {
        putAttribute(json, attribute);
    }
    json.endArray();
    json.member("metadata", info.metaData);
    json.endObject();
    return json.text();
}

std::string told(const Database& database) {
    const FileInfo info = readInfo(database);
    return manner().json ? infoJson(info) : printable(infoText(info));
}

// What is wrong with one file is told, and the others are read all the same.
void tellSeveral(const qrb::Context& context, const std::vector<std::string>& files) {
    std::string texts;
    bool isWhole = true;
    for (const std::string& file : files) {
        checkInterrupted();
        try {
            const std::string text = told(Database(context, file));
            texts += (texts.empty() ? "" : manner().json ? "," : "\n") + text;
        } catch (const qrb::Error& error) {
            checkInterrupted();
            isWhole = false;
            reportError(error.what(), error.details(), manner().json, error.code());
        } catch (const Interrupted&) {
            throw;
        } catch (const Failure& failure) {
            isWhole = false;
            reportError(failure.what(), failure.details(), manner().json);
        }
    }
    print(manner().json ? "[" + texts + "]\n" : texts);
    if (!isWhole) {
        throw NegativeAnswer();
    }
}

void tellAll(const qrb::Context& context, const std::vector<std::string>& files) {
    if (files.size() > 1) {
        tellSeveral(context, files);
    } else {
        print(told(Database(context, files.front())));
    }
}

}  // namespace

void addInfoCommand(CLI::App& app, Invocation& invocation) {
    const auto files = std::make_shared<std::vector<std::string>>();
    CLI::App* const command = app.add_subcommand("info", "Tell what databases hold");
    const bool isOpen = invocation.onOpenDatabase;
    if (!isOpen) {
        command->add_option("files", *files, "The databases")->type_name("FILE");
    }
    command->footer(
        "Identity, size, creator, points, extent, coordinate reference system, transactions\n"
        "(* marks the current one), attributes with the range of their values, names of the\n"
        "metadata items. Of several databases those that can't be read are told, and the program\n"
        "ends with 1; --json writes an array of the others.\n"
        "\n"
        "Examples:\n"
        "  qrbtool info scan.qrbx\n"
        "  qrbtool info scan.qrbx --json\n"
        "  qrbtool info *.qrbx");
    command->callback([files, isOpen, &invocation] {
        if (isOpen) {
            invocation.work = [](Database& database) { print(told(database)); };
            return;
        }
        if (files->empty()) {
            throw CLI::RequiredError("The name of the database");
        }
        invocation.run = [files](const qrb::Context& context) { tellAll(context, *files); };
    });
}

}  // namespace tarvo::cli
