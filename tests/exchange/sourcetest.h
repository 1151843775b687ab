// What tests of the formats do alike: read all points of a source, and see failures.
#pragma once

#include "core/error.h"
#include "exchange/opensource.h"
#include "qrb/visitvalues.h"
#include "tests/cli/folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace tarvo::exchange::tests {

// Values by "NAME" or "NAME[I]".
using Table = std::map<std::string, std::vector<double>>;

inline Table readAll(PointSource& source) {
    Table table;
    source.rewind();
    while (const std::uint32_t count = source.next()) {
        EXPECT_LE(count, source.largestBatch());
        for (std::size_t i = 0; i < source.columns().size(); ++i) {
            visitValues(source.columns()[i].type, source.values(i), [&](const auto* values) {
                auto& column = table[source.columns()[i].descriptor()];
                for (std::uint32_t row = 0; row < count; ++row) {
                    column.push_back(static_cast<double>(values[row]));
                }
            });
        }
    }
    return table;
}

inline std::string joined(const std::vector<std::string>& texts) {
    std::string all;
    for (const std::string& text : texts) {
        all += text + "\n";
    }
    return all;
}

class SourceTest : public testing::Test {
protected:
    Table read(const std::string& bytes, const std::vector<std::string>& columns = {}) {
        const auto source = openSource(folder.write("a", bytes), {}, columns);
        const Table first = readAll(*source);
        notes = joined(source->notes());
        std::string items;
        for (const auto& [name, text] : source->metaData()) {
            items += name + text;
        }
        metaData = items;
        EXPECT_EQ(readAll(*source).size(), first.size());
        return first;
    }
    // The text of the failure and its details; empty: there is none.
    std::string failure(const std::string& bytes, const std::vector<std::string>& columns = {}) {
        try {
            const auto source = openSource(folder.write("a", bytes), {}, columns);
            readAll(*source);
            (void)source->metaData();
        } catch (const core::Failure& error) {
            return error.what() + ("\n" + error.details());
        }
        return {};
    }
    void expectFailure(const std::string& bytes, const std::string& text) {
        const std::string found = failure(bytes);
        EXPECT_NE(found.find(text), std::string::npos) << found;
    }
    // Neither a cut nor a changed byte is more than a failure.
    void expectSurvival(const std::string& good, std::size_t stride = 1) {
        ASSERT_EQ(failure(good), "");
        for (std::size_t size = 0; size < good.size(); size += stride) {
            failure(good.substr(0, size));
            for (const int value : {0x00, 0x01, 0x30, 0x7f, 0xff}) {
                std::string bytes = good;
                bytes[size] = static_cast<char>(value);
                failure(bytes);
            }
        }
    }
    // A real file; empty: there are none.
    static std::string realFile(const std::string& name) {
        const char* const data = std::getenv("QRB_TEST_DATA");
        return data == nullptr || *data == 0 ? std::string()
                                             : std::string(data) + "/formats/" + name;
    }

    // All of it, and its notes.
    Table realTable(const std::string& name) {
        const auto source = openSource(realFile(name));
        Table all = readAll(*source);
        notes = joined(source->notes());
        return all;
    }

    cli::tests::Folder folder;
    std::string notes;
    std::string metaData;
};

}  // namespace tarvo::exchange::tests
