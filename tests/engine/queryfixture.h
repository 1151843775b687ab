// A database for tests of queries: points in a row, and each kind of change by one call.
#pragma once

#include "tests/engine/store.h"

#include "engine/query/commit.h"
#include "engine/query/fill.h"
#include "engine/query/remove.h"
#include "engine/query/update.h"
#include "engine/report/check.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::engine::testing {

using Values = std::vector<double>;
using Ids = std::vector<std::uint64_t>;

inline schema::AttributeRecord constantRecord(const char* name, double minimum, double maximum,
                                              double value, std::uint32_t length = 1) {
    schema::AttributeRecord result = record(name, minimum, maximum, 1, length);
    result.storageClass = 1;
    result.defaultValue = value;
    return result;
}

class QueryFixture : public ::testing::Test {
protected:
    void create(const std::vector<schema::AttributeRecord>& extra, std::uint32_t chunkSize = 100,
                const std::function<void(session::CreateSettings&)>& change = {}) {
        session.reset();
        std::filesystem::remove(file);
        session::CreateSettings created = settings(1, chunkSize);
        if (change)
            change(created);
        session::Session::create(file, created, "test", extra);
        open();
        begin();
    }
    void open() {
        session = std::make_unique<session::Session>(file, session::OpenSettings{0}, "test");
    }
    void begin() { session->begin("t", "test", "", ""); }
    void commit() { query::commit(*session); }
    // In a row along x, with the values of one attribute where there are any.
    void add(std::size_t count, const char* attribute = nullptr, const Values& values = {},
             const Ids& ids = {}) {
        Values xyz(count * 3);
        for (std::size_t i = 0; i < count; ++i)
            xyz[i * 3] = static_cast<double>(m_places++ % 1000);
        query::InsertQuery query(*session);
        if (!ids.empty())
            query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
        if (attribute)
            query.bind(attribute, QRB_DATA_TYPE_DOUBLE, values.data(), 8);
        EXPECT_EQ(query.next(static_cast<std::uint32_t>(count)), count);
    }
    // By id.
    Values read(const char* attribute) {
        query::SelectQuery query(*session, {}, {});
        std::uint64_t id = 0;
        double value = 0;
        query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, &id, 8);
        query.bind(attribute, QRB_DATA_TYPE_DOUBLE, &value, 8);
        std::map<std::uint64_t, double> found;
        while (query.next(1))
            found[id] = value;
        Values result;
        for (const auto& [_, each] : found)
            result.push_back(each);
        return result;
    }
    std::uint32_t fill(const char* attribute, double value, query::Scope scope = {},
                       const char* filter = "") {
        query::FillQuery query(*session, std::move(scope), filter);
        const Values values(8, value);  // one for each element that there may be
        query.bind(attribute, QRB_DATA_TYPE_DOUBLE, values.data());
        std::uint32_t sum = 0;
        while (const std::uint32_t count = query.next(1000))
            sum += count;
        return sum;
    }
    std::uint32_t update(const char* attribute, const Values& values, const Ids& ids) {
        query::UpdateQuery query(*session);
        query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
        query.bind(attribute, QRB_DATA_TYPE_DOUBLE, values.data(), 8);
        return query.next(static_cast<std::uint32_t>(ids.size()));
    }
    std::uint32_t remove(const Ids& ids) {
        query::RemoveQuery query(*session);
        query.bind(QRB_DATA_TYPE_UINT64, ids.data(), 8);
        return query.next(static_cast<std::uint32_t>(ids.size()));
    }
    // All nodes of the index but for the root, in key order.
    std::vector<index::Node> nodes() {
        std::vector<index::Node> result;
        const auto state = session->state();
        const index::Node root = session->blobs().rootNode(*state);
        for (index::TreeCursor at(root, session->blobs().pageReader()); at.node(); at.enter())
            if (at.node()->id != root.id)
                result.push_back(*at.node());
        return result;
    }
    // No node holds anything of an attribute that is gone.
    void expectKnownAttributes() {
        const auto state = session->state();
        for (const index::Node& node : nodes())
            for (const index::AttributeData& data : node.attributes)
                EXPECT_GE(state->attributes.findUid(data.uid), 0) << node.id;
    }
    std::string lastEntry() {
        const std::string text = session->changelog().text();
        return text.substr(text.rfind("[#"));
    }
    void expectSound() {
        for (const report::Fault& fault : report::check(*session).faults)
            ADD_FAILURE() << fault.text << " " << fault.name;
    }
    static ErrorCode codeOf(const std::function<void()>& function) {
        const Outcome outcome = outcomeOf(function);
        EXPECT_FALSE(outcome.text.empty()) << "nothing was refused";
        return outcome.code;
    }

    TemporaryFolder folder;
    const std::string file = folder.file("a.qrbx");
    std::unique_ptr<session::Session> session;

private:
    std::size_t m_places = 0;
};

}  // namespace tarvo::engine::testing
