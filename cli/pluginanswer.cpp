#include "cli/pluginanswer.h"

#include "cli/errors.h"
#include "cli/json.h"
#include "cli/manner.h"
#include "cli/output.h"
#include "cli/text.h"
#include "cli/texttable.h"
#include "files/path.h"
#include "files/wholefile.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace tarvo::embedded {
std::vector<std::pair<std::string, std::string_view>> plugin_scripts();
}

namespace tarvo::cli {

namespace {

namespace fs = std::filesystem;
using plugin::Result;

const char* suffixOf(Result::Kind kind) {
    switch (kind) {
        case Result::Kind::HTML:
            return ".html";
        case Result::Kind::PICTURE:
            return ".png";
        case Result::Kind::TABLE:
            return ".csv";
        default:
            return ".txt";
    }
}

// A title as a part of a file's name.
std::string fileTitle(std::string title) {
    title = title.substr(0, 80);
    std::replace_if(
        title.begin(), title.end(),
        [](char c) {
            return static_cast<unsigned char>(c) < 32 || c == 127 ||
                   std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos;
        },
        '_');
    return title;
}

std::string tableText(const plugin::Table& table) {
    std::vector<TextTable::Column> columns;
    for (const plugin::Table::Column& column : table.columns) {
        columns.push_back({printable(column.title), column.right});
    }
    TextTable text(columns);
    for (std::vector<std::string> row : table.rows) {
        std::transform(row.begin(), row.end(), row.begin(),
                       [](const std::string& cell) { return printable(cell); });
        text.add(std::move(row));
    }
    return text.text();
}

std::string resultJson(const Result& result) {
    JsonText json;
    json.beginObject();
    json.member("title", result.title);
    if (result.kind != Result::Kind::TABLE) {
        json.member(result.kind == Result::Kind::FILE ? "file" : "text", result.text);
        json.endObject();
        return json.text();
    }
    std::vector<std::string> titles;
    for (const plugin::Table::Column& column : result.table.columns) {
        titles.push_back(column.title);
    }
    json.member("columns", titles);
    json.key("rows");
    json.beginArray();
    for (const std::vector<std::string>& row : result.table.rows) {
        json.value(row);
    }
    json.endArray();
    json.endObject();
    return json.text();
}

}  // namespace

std::vector<plugin::Script> embeddedScripts() {
    std::vector<plugin::Script> scripts;
    for (const auto& [name, text] : embedded::plugin_scripts()) {
        scripts.push_back({name, std::string(text)});
    }
    return scripts;
}

PluginAnswer::PluginAnswer(const std::string& title, const std::string& folder)
    : m_folder(folder), m_progress(printable(title)) {
    std::error_code error;
    if (!folder.empty() && !fs::create_directories(files::pathOf(folder), error) &&
        !fs::is_directory(files::pathOf(folder))) {
        throw Failure("Failed to make the folder \"" + folder + "\".", error.message());
    }
}

void PluginAnswer::printed(std::string_view text) {
    if (!manner().json) {
        std::fputs(printable(text).c_str(), stderr);
        return;
    }
    JsonText json;
    json.beginObject();
    json.member("printed", text);
    json.endObject();
    std::fprintf(stderr, "%s\n", json.compact().c_str());
}

void PluginAnswer::progressed(double fraction, const std::string& /*text*/) {
    if (!cancelled()) {
        m_progress.update(fraction);
    }
}

void PluginAnswer::resulted(Result result) {
    if (!m_problem.empty()) {
        return;
    }
    try {
        if (m_folder.empty() || result.kind == Result::Kind::FILE) {
            show(result);
        } else {
            keep(result);
        }
    } catch (const Failure& failure) {
        m_problem = std::string(failure.what()) + "\n" + failure.details();
    }
}

void PluginAnswer::show(const Result& result) {
    const bool canBeShown = result.kind == Result::Kind::TEXT ||
                            result.kind == Result::Kind::TABLE || result.kind == Result::Kind::FILE;
    if (manner().json && canBeShown) {
        print(resultJson(result));
        return;
    }
    const std::string title = result.title.empty() ? "" : printable(result.title) + "\n";
    switch (result.kind) {
        case Result::Kind::TEXT:
            print(title + printable(result.text) + (result.text.ends_with('\n') ? "" : "\n"));
            break;
        case Result::Kind::TABLE:
            print(title + tableText(result.table));
            break;
        case Result::Kind::FILE:
            print("\"" + printable(result.text) + "\" is written.\n");
            break;
        default:
            note("\"" + printable(result.title) +
                 "\" is not shown: --results names a folder for "
                 "pictures and HTML.");
    }
}

void PluginAnswer::keep(const Result& result) {
    const std::string name = std::to_string(++m_number) + " " +
                             fileTitle(result.title.empty() ? "Result" : result.title) +
                             suffixOf(result.kind);
    files::WholeFile file(files::nameOf(files::pathOf(m_folder) / files::pathOf(name)));
    file.write(result.kind == Result::Kind::TABLE ? plugin::csvOf(result.table) : result.text);
    file.publish();
    note("\"" + printable(name) + "\" is written.");
}

}  // namespace tarvo::cli
