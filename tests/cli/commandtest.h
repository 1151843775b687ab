// Runs qrbtool on the files of a folder, and what a test expects of it.
#pragma once

#include "tests/cli/folder.h"
#include "tests/cli/process.h"

#include <gtest/gtest.h>

#include <rapidjson/document.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace tarvo::cli::tests {

class CommandTest : public testing::Test {
protected:
    // Returns what is written.
    static std::string expectSuccess(const std::string& words, const std::string& output = "") {
        const Result result = run(words);
        EXPECT_EQ(result.code, 0) << words << "\n" << result.output;
        if (!output.empty()) {
            EXPECT_EQ(result.output, output) << words;
        }
        return result.output;
    }
    // Expects an end with the code and a text in what is written.
    static void expectFailure(int code, const std::string& words, const std::string& text) {
        const Result result = run(words);
        EXPECT_EQ(result.code, code) << words << "\n" << result.output;
        EXPECT_NE(result.output.find(text), std::string::npos) << words << "\n" << result.output;
    }
    static rapidjson::Document json(const std::string& words) {
        rapidjson::Document document;
        const Result result = run(words);
        document.Parse(result.output.c_str());
        if (result.code != 0 || document.HasParseError()) {
            ADD_FAILURE() << words << "\n" << result.output;
            document.SetObject();
        }
        return document;
    }
    // The cells of each line of a table, which two blanks and more divide; empty ones are none.
    using Cells = std::vector<std::string>;
    static std::vector<Cells> rowsOf(const std::string& table) {
        std::vector<Cells> rows;
        std::istringstream lines(table);
        for (std::string line; std::getline(lines, line);) {
            Cells& cells = rows.emplace_back();
            for (std::size_t at = 0; (at = line.find_first_not_of(' ', at)) != std::string::npos;) {
                const std::size_t end = std::min(line.find("  ", at), line.size());
                cells.push_back(line.substr(at, end - at));
                at = end;
            }
        }
        return rows;
    }
    static std::string read(const std::string& name) {
        std::ifstream stream(name, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    }

    Folder folder;
    const std::string file = folder.file("a.qrbx");
};

// Calls check(NAME) with each LAS file of the real point clouds; without them the test is skipped.
template <typename Check>
void forEachRealCloud(const Check& check) {
    const char* const data = std::getenv("QRB_TEST_DATA");
    if (data == nullptr || *data == '\0') {
        std::cout << "Real clouds were left out: QRB_TEST_DATA is not set.\n";
        GTEST_SKIP();
    }
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(data)) {
        if (entry.path().extension() != ".las") {
            continue;
        }
        ++files;
        SCOPED_TRACE(entry.path().filename().string());
        check(entry.path());
    }
    EXPECT_GT(files, 0) << "no .las files in " << data;
}

}  // namespace tarvo::cli::tests
