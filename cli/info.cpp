// qrbtool info: what a database file holds.

#include "cli/commands.h"
#include "cli/output.h"
#include "cli/text.h"
#include "qrb/pointcloud.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <system_error>

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
};

AttributeInfo readAttribute(const qrb::Pointcloud& cloud, const std::string& name,
                            std::uint32_t rootNode) {
    AttributeInfo info;
    info.definition = cloud.pointAttributes().get(name);
    if (rootNode == 0) {
        return info;
    }
    const ValueFormat format(info.definition);
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

FileInfo readInfo(const qrb::Pointcloud& cloud, const std::string& fileName) {
    FileInfo info;
    std::error_code error;
    info.fileName = fileName;
    info.uuid = cloud.getUuid();
    info.size = std::filesystem::file_size(fileName, error);
    qrb::pointcloud::IndexNode root;
    cloud.stat().index(root);
    info.pointCount = static_cast<std::uint64_t>(root.pointCountTotal);
    info.currentTransaction = cloud.transactions().current();
    for (const std::uint32_t id : cloud.transactions().list()) {
        info.transactions.push_back(cloud.transactions().details(id));
    }
    for (const std::string& name : cloud.pointAttributes().list()) {
        info.attributes.push_back(readAttribute(cloud, name, info.pointCount > 0 ? root.id : 0));
    }
    info.metaData = cloud.metaData().list();
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

void writeText(const FileInfo& info, Output& output) {
    const auto line = [&](std::string label, const std::string& text) {
        label.resize(std::max<std::size_t>(label.size(), 14), ' ');
        output.write(label + text + "\n");
    };
    line("File", info.fileName);
    line("Identity", info.uuid);
    line("Size", std::to_string(info.size) + " bytes");
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
    output.write("\nTransactions\n");
    for (const Transaction& transaction : info.transactions) {
        output.write((transaction.id == info.currentTransaction ? "* " : "  ") +
                     std::to_string(transaction.id) + "  " + transaction.stop + "  " +
                     firstLine(transaction.title) + " (" + firstLine(transaction.agent) + ")\n");
    }
    output.write("\nAttributes\n");
    std::size_t width = 0;
    for (const AttributeInfo& attribute : info.attributes) {
        width = std::max(width, attribute.definition.name.size() + 5);
    }
    for (const AttributeInfo& attribute : info.attributes) {
        std::string name = attribute.definition.name;
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
        output.write("  " + name + "  " + range +
                     (range.empty() || attribute.definition.unitSymbol.empty()
                          ? ""
                          : " " + attribute.definition.unitSymbol) +
                     "\n");
    }
    output.write("\nMetadata\n");
    for (const std::string& name : info.metaData) {
        output.write("  " + name + "\n");
    }
}

using JsonWriter = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void putString(JsonWriter& writer, const char* key, const std::string& text) {
    writer.Key(key);
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

// Texts of numbers as numbers; an empty one is null.
void putNumbers(JsonWriter& writer, const char* key, const std::vector<std::string>& texts) {
    writer.Key(key);
    writer.StartArray();
    for (const std::string& text : texts) {
        if (text.empty()) {
            writer.Null();
        } else {
            writer.RawValue(text.data(), text.size(), rapidjson::kNumberType);
        }
    }
    writer.EndArray();
}

void putAttribute(JsonWriter& writer, const AttributeInfo& attribute) {
    const PointAttribute& definition = attribute.definition;
    writer.StartObject();
    putString(writer, "name", definition.name);
    putString(writer, "title", definition.title);
    putString(writer, "unit_symbol", definition.unitSymbol);
    writer.Key("length");
    writer.Uint(definition.length);
    writer.Key("resolution");
    writer.Double(definition.resolution);
    writer.Key("minimum_value");
    writer.Double(definition.minimumValue);
    writer.Key("maximum_value");
    writer.Double(definition.maximumValue);
    putNumbers(writer, "minimum", attribute.minimum);
    putNumbers(writer, "maximum", attribute.maximum);
    writer.EndObject();
}

std::string toJson(const FileInfo& info) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.SetIndent(' ', 4);
    writer.SetFormatOptions(rapidjson::kFormatSingleLineArray);
    writer.StartObject();
    putString(writer, "file", info.fileName);
    putString(writer, "uuid", info.uuid);
    writer.Key("size");
    writer.Uint64(info.size);
    writer.Key("point_count");
    writer.Uint64(info.pointCount);
    writer.Key("current_transaction");
    writer.Uint(info.currentTransaction);
    writer.Key("transactions");
    writer.StartArray();
    for (const Transaction& transaction : info.transactions) {
        writer.StartObject();
        writer.Key("id");
        writer.Uint(transaction.id);
        putString(writer, "title", transaction.title);
        putString(writer, "agent", transaction.agent);
        putString(writer, "library", transaction.qrb);
        putString(writer, "start", transaction.start);
        putString(writer, "stop", transaction.stop);
        writer.EndObject();
    }
    writer.EndArray();
    writer.Key("attributes");
    writer.StartArray();
    for (const AttributeInfo& attribute : info.attributes) {
        putAttribute(writer, attribute);
    }
    writer.EndArray();
    writer.Key("metadata");
    writer.StartArray();
    for (const std::string& name : info.metaData) {
        writer.String(name.data(), static_cast<rapidjson::SizeType>(name.size()));
    }
    writer.EndArray();
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

void runInfo(const qrb::Context& context, const std::string& fileName, bool json) {
    qrb::Pointcloud cloud(context);
    cloud.open(fileName, qrb::pointcloud::OpenSettings(context));
    const FileInfo info = readInfo(cloud, fileName);
    try {
        Output output("");
        if (json) {
            output.write(toJson(info) + "\n");
        } else {
            writeText(info, output);
        }
        output.finish();
    } catch (const OutputClosed&) {
        // The reader has seen what it wanted.
    }
}

}  // namespace

void addInfoCommand(CLI::App& app, Invocation& invocation) {
    struct Options {
        std::string file;
        bool json = false;
    };
    const auto options = std::make_shared<Options>();
    CLI::App* const command = app.add_subcommand("info", "Tell what a database holds");
    command->add_option("file", options->file, "Database to look at")
        ->type_name("FILE")
        ->required();
    command->add_flag("--json", options->json, "Write JSON, for programs");
    command->footer(
        "Identity, size, creator, points, extent, transactions (* marks the current one),\n"
        "attributes with the range of their values, names of the metadata items.\n"
        "\n"
        "Examples:\n"
        "  qrbtool info scan.qrbx\n"
        "  qrbtool info scan.qrbx --json");
    command->callback([options, &invocation] {
        invocation.run = [options](const qrb::Context& context) {
            runInfo(context, options->file, options->json);
        };
    });
}

}  // namespace tarvo::cli
