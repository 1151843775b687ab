// A database beside a plain model in memory, through random operations: whatever is done, in
// whatever order, both must read the same afterwards.
#pragma once

#include "tests/engine/database.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace tarvo::engine::testing {

using Values = std::map<std::string, double>;  // by attribute; coordinates are "xyz[0]" to "[2]"

struct ModelState {
    std::map<std::uint64_t, Values> points;
    std::map<std::string, schema::AttributeRecord> attributes;  // beside xyz and the point id
    std::map<std::string, double> constants;                    // of the constant ones with a value
    std::map<std::string, std::string> metaData;
    std::set<std::string> signedItems;
    std::uint64_t nextId = 1;
};

inline bool isConstant(const schema::AttributeRecord& record) {
    return record.storageClass == 1;
}

inline const session::Signer signer{1, {1, 2, 3}, {}};

class Play {
public:
    Play(std::uint32_t seed, std::uint32_t chunkSize, bool multiPass);

    void run(int steps);

private:
    std::uint32_t below(std::uint32_t limit) { return m_random() % limit; }
    bool chance(std::uint32_t oneIn) { return below(oneIn) == 0; }

    void open();

    // Each does one thing to both, and tells what.
    std::string step();
    std::string betweenTransactions();
    std::string levelOfDetail();
    std::string endTransaction(bool keep);
    std::string reopen();
    // Another process changes the database and is killed: nothing of what it did not commit stays,
    // and what it was committing is there as a whole or not at all.
    std::string crash();

    std::string insertPoints();
    // What a constant attribute has, or may be given while it has nothing.
    double constantFor(const std::string& name);
    double valueFor(const schema::AttributeRecord& attribute);
    std::vector<std::uint64_t> someIds();
    std::string updatePoints();
    std::string removePoints();
    std::string fill();
    std::string invert();

    std::string changeMetaData();
    std::string addAttribute();
    // A new attribute in the model: every point has the default value.
    void give(const schema::AttributeRecord& attribute);
    std::string changeAttribute();
    std::string duplicate(const schema::AttributeRecord& from);
    std::string redefine(const schema::AttributeRecord& from);

    std::map<std::uint64_t, Values> readPoints(const std::string& filter);
    void comparePoints(const std::string& filter, const std::map<std::uint64_t, Values>& read,
                       const std::function<bool(const Values&)>& passes);
    void compare();

    std::mt19937 m_random;
    TemporaryFolder m_folder;
    std::string m_file;
    std::unique_ptr<session::Session> m_session;
    ModelState m_now;
    ModelState m_before;  // of the pending transaction
    std::map<std::uint32_t, ModelState> m_history;
    std::uint32_t m_id = 0;
    int m_step = 0;
};

}  // namespace tarvo::engine::testing
