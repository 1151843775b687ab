// A database that the commands which look after databases work on, and what a test expects of them.
#pragma once

#include "tests/cli/commandtest.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <sstream>
#include <string>

namespace tarvo::cli::tests {

class Admin : public CommandTest {
protected:
    // A point of the databases below.
    struct Point {
        std::string x, y, z;
        int pointClass = 0;
    };
    using Points = std::map<std::uint64_t, Point>;

    // Makes "a.qrbx" with points whose ids are 10, 20, ...
    void importPoints(int count) {
        std::string text = "tarvo.id,x,y,z,tarvo.class\n";
        for (int i = 1; i <= count; ++i) {
            Point point{std::to_string(i) + ".5", std::to_string(-i), std::to_string(i % 7), i % 3};
            text += std::to_string(10 * i) + "," + point.x + "," + point.y + "," + point.z + "," +
                    std::to_string(point.pointClass) + "\n";
            points[static_cast<std::uint64_t>(10 * i)] = point;
        }
        const std::string table = folder.write("points.csv", text);
        const Result import = run("import " + table + " " + file);
        ASSERT_EQ(import.code, 0) << import.output;
    }
    // Expects that the database holds exactly the points.
    void expectPoints() const {
        const Result select =
            run("select " + file + " -a tarvo.id,tarvo.xyz,tarvo.class --format csv");
        ASSERT_EQ(select.code, 0) << select.output;
        std::istringstream lines(select.output);
        std::string line;
        std::getline(lines, line);
        std::size_t found = 0;
        while (std::getline(lines, line)) {
            std::replace(line.begin(), line.end(), ',', ' ');
            std::istringstream cells(line);
            std::uint64_t id = 0;
            double x = 0, y = 0, z = 0;
            int pointClass = -1;
            cells >> id >> x >> y >> z >> pointClass;
            const auto at = points.find(id);
            ASSERT_NE(at, points.end()) << line;
            EXPECT_EQ(x, std::stod(at->second.x)) << line;
            EXPECT_EQ(y, std::stod(at->second.y)) << line;
            EXPECT_EQ(z, std::stod(at->second.z)) << line;
            EXPECT_EQ(pointClass, at->second.pointClass) << line;
            ++found;
        }
        EXPECT_EQ(found, points.size());
    }

    std::size_t transactionCount() const {
        return json("transactions " + file + " --json").GetArray().Size();
    }

    Points points;
};

}  // namespace tarvo::cli::tests
