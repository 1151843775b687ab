// Filter expressions on a small database: what statistics decide agrees with what each point says,
// and an expression and its opposite share the points between them.
#include "engine/query/scan.h"
#include "tests/engine/database.h"
#include "tests/fuzz/folder.h"
#include "tests/fuzz/survive.h"

#include <memory>

using namespace tarvo;
using namespace tarvo::engine;

namespace {

constexpr std::uint64_t allPoints = 300;

session::Session& database() {
    static const std::unique_ptr<session::Session> session = [] {
        const std::string file = fuzz::folder().file("a.qrbx");
        schema::AttributeRecord valid = testing::record("valid", -10, 10, 0.5);
        valid.invalidValue = -10;
        valid.defaultValue = -10;
        session::Session::create(file, testing::settings(1, 20), "fuzzer",
                                 {testing::record("amplitude", 0, 65535),
                                  testing::record("real", -1e30, 1e30, 0), valid});
        auto opened = std::make_unique<session::Session>(file, session::OpenSettings{}, "fuzzer");
        testing::commitPoints(*opened, testing::somePoints(allPoints, 1));
        return opened;
    }();
    return *session;
}

std::uint64_t counted(const std::string& filter) {
    query::Scan scan(database(), {}, filter);
    std::uint64_t count = 0;
    while (const auto hits = scan.next())
        count += hits->count;
    return count;
}

// The same by looking at each point.
std::uint64_t countedPoints(const filter::BoundFilter& bound) {
    query::Scan scan(database(), {}, "");
    scan.setColumns(bound.elements());
    scan.wantLeaves();
    std::uint64_t count = 0;
    filter::Selection selection;
    while (const auto hits = scan.next()) {
        bound.select(
            hits->count,
            [&](std::size_t slot) -> const codec::Block& { return *hits->columns[slot]; },
            selection);
        count += selection.size();
    }
    return count;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::uint64_t passing = 0;
    if (!fuzz::survive([&] { passing = counted(text); }))
        return 0;
    fuzz::require(passing <= allPoints, "no more points pass than there are");
    fuzz::survive([&] {
        const filter::Expression expression = filter::Expression::parse(text);
        if (expression.empty())
            return;
        const filter::BoundFilter bound(expression, database().state()->attributes);
        fuzz::require(countedPoints(bound) == passing, "statistics decide as points do");
        fuzz::require(counted("!(" + text + ")") == allPoints - passing,
                      "each point passes a filter or its opposite");
    });
    return 0;
}
