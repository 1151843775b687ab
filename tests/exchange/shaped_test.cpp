#include "exchange/table/shapedsource.h"
#include "tests/exchange/sourcetest.h"

#include <stdexcept>

namespace {

using namespace tarvo;
using namespace tarvo::exchange;
using namespace tarvo::exchange::tests;

class Shaped : public SourceTest {
protected:
    std::unique_ptr<PointSource> source(const std::string& name, const std::string& bytes,
                                        const std::shared_ptr<core::Shaper>& shaper, bool isFirst,
                                        std::size_t shown = SIZE_MAX) {
        return std::make_unique<ShapedSource>(
            openSource(folder.write(name, bytes)), shaper, isFirst, [this] { check(); }, shown);
    }
    void check() {
        if (++m_checks > mostChecks)
            throw std::runtime_error("stopped");
    }
    std::size_t m_checks = 0;
    std::size_t mostChecks = 1000;
};

// Files count and thin out as one, each time that they are read.
TEST_F(Shaped, SourcesAreShapedTogetherAgainAndAgain) {
    core::Shape shape;
    shape.every = 2;
    shape.distance = 1.5;
    const auto shaper = std::make_shared<core::Shaper>(shape);
    const auto one =
        source("one", "x,y,z,a\n0,0,0,1\n9,9,9,2\n1,0,0,3\n9,9,9,4\n2,0,0,5\n", shaper, true);
    const auto two =
        source("two", "x,y,z,a\n2,1,0,6\n3,0,0,7\n3.5,0,0,8\n9,9,9,9\n", shaper, false);
    for (int pass = 0; pass < 3; ++pass) {
        EXPECT_EQ(readAll(*one)["csv.a"], (std::vector<double>{1, 5})) << pass;
        Table table = readAll(*two);
        EXPECT_EQ(table["csv.a"], (std::vector<double>{9})) << pass;
        EXPECT_EQ(table["tarvo.xyz[0]"], (std::vector<double>{9})) << pass;
    }
    EXPECT_EQ(one->columns().size(), 4u);
}

TEST_F(Shaped, HidesColumnsAndCanBeStoppedWhereNothingIsLeft) {
    core::Shape shape;
    shape.bounds = core::boundsFromText("5,5,6,6");
    std::string text = "a,x,y,z\n";
    for (int i = 0; i < 200000; ++i)
        text += std::to_string(i % 100) + (i == 150000 ? ",5.5,6,0\n" : ",1,2,3\n");
    const auto few = source("few", text, std::make_shared<core::Shaper>(shape), true, 1);
    const Table table = readAll(*few);
    EXPECT_EQ(table.size(), 1u);
    EXPECT_EQ(table.at("csv.a"), (std::vector<double>{0}));
    EXPECT_GT(m_checks, 0u);
    mostChecks = m_checks;
    EXPECT_THROW(readAll(*few), std::runtime_error);
    const auto flat = [&] {
        source("flat", "a,x,y\n1,2,3\n", std::make_shared<core::Shaper>(shape), true);
    };
    EXPECT_THROW(flat(), core::Failure);
}

}  // namespace
