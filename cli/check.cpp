// qrbtool check: reads everything that a database holds, and tells what is damaged.

#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/output.h"
#include "cli/text.h"
#include "cli/texttable.h"

#include <CLI/CLI.hpp>

namespace tarvo::cli {

namespace {

constexpr std::uint8_t checkFormat = 5;  // of the library's reports

// A member of what the library answers; null where it lacks it.
const rapidjson::Value& memberOf(const rapidjson::Value& object, const char* name) {
    static const rapidjson::Value none;
    if (!object.IsObject()) {
        return none;
    }
    const auto found = object.FindMember(name);
    return found == object.MemberEnd() ? none : found->value;
}

std::uint64_t numberOf(const rapidjson::Value& object, const char* name) {
    const rapidjson::Value& value = memberOf(object, name);
    if (!value.IsUint64()) {
        throw Failure("The library's report of the check can't be read.",
                      std::string("It lacks the number \"") + name + "\".");
    }
    return value.GetUint64();
}

std::string textOf(const rapidjson::Value& object, const char* name) {
    const rapidjson::Value& value = memberOf(object, name);
    return value.IsString() ? std::string(value.GetString(), value.GetStringLength())
                            : std::string();
}

// "Transaction 3, block, node 17, tarvo.xyz[2]: text (details)"
std::string faultLine(const rapidjson::Value& fault) {
    std::string line = textOf(fault, "kind");
    if (memberOf(fault, "transaction").IsUint64()) {
        line = "Transaction " + std::to_string(numberOf(fault, "transaction")) + ", " + line;
    } else {
        line = "The file's " + line;
    }
    if (memberOf(fault, "node").IsUint64()) {
        line += ", node " + std::to_string(numberOf(fault, "node"));
    }
    if (const std::string item = textOf(fault, "item"); !item.empty()) {
        line += " \"" + item + "\"";
    }
    if (const std::string attribute = textOf(fault, "attribute"); !attribute.empty()) {
        line += ", " + attribute;
    }
    if (memberOf(fault, "element").IsUint64()) {
        line += "[" + std::to_string(numberOf(fault, "element")) + "]";
    }
    line += ": " + textOf(fault, "text");
    if (const std::string details = textOf(fault, "details"); !details.empty()) {
        line += " (" + details + ")";
    }
    for (char& c : line) {
        c = c == '\n' ? ' ' : c;
    }
    return line + "\n";
}

std::string checkText(const rapidjson::Value& report) {
    std::string text;
    const rapidjson::Value& faults = memberOf(report, "faults");
    if (faults.IsArray()) {
        for (const rapidjson::Value& fault : faults.GetArray()) {
            text += faultLine(fault);
        }
    }
    const std::uint64_t count = numberOf(report, "fault_count");
    text += (count == 0 ? "No faults found: " : counted(count, "fault") + " found: ") +
            counted(numberOf(report, "transactions"), "transaction") + ", " +
            counted(numberOf(report, "blobs"), "blob") + ", " +
            sizeInWords(numberOf(report, "bytes")) + " read.\n";
    if (const std::uint64_t leftOut = numberOf(report, "left_out"); leftOut > 0) {
        text += counted(leftOut, "transaction") + " discarded meanwhile.\n";
    }
    const rapidjson::Value& unreached = memberOf(report, "unreached_blobs");
    if (unreached.IsUint64() && unreached.GetUint64() > 0) {
        text +=
            counted(unreached.GetUint64(), "blob") + " of no transaction, for vacuum to remove.\n";
    }
    return text;
}

void runCheck(const Database& database) {
    const std::string json = database.inspect(checkFormat);
    rapidjson::Document report;
    report.Parse(json.data(), json.size());
    if (report.HasParseError()) {
        throw Failure("The library's report of the check can't be read.", "It is no JSON.");
    }
    print(manner().json ? indentedJson(json) : printable(checkText(report)));
    if (numberOf(report, "fault_count") > 0) {
        throw NegativeAnswer();
    }
}

}  // namespace

void addCheckCommand(CLI::App& app, Invocation& invocation) {
    CLI::App* const command =
        app.add_subcommand("check", "Read everything and tell what is damaged");
    addDatabaseFile(*command, invocation);
    command->footer(
        "Reads what any kept transaction holds: its definitions, metadata items, changelog, index\n"
        "and all values of its points. Writes a line per fault, up to 1,000, and ends with 1 if\n"
        "there are any. Other programs may read and change the database meanwhile.\n"
        "\n"
        "Example:\n"
        "  qrbtool check scan.qrbx");
    command->callback(
        [&invocation] { invocation.work = [](Database& database) { runCheck(database); }; });
}

}  // namespace tarvo::cli
