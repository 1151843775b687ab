// A database that is changed transaction by transaction, to be compared with itself and others.
#pragma once

#include "core/comparedstates.h"
#include "core/databasediff.h"
#include "tests/qrb/library.h"

#include <functional>
#include <string>
#include <vector>

namespace tarvo::core::testing {

using namespace tarvo::qrb::pointcloud;

inline constexpr const char* idName = "tarvo.id";

class Diff : public LibraryTest {
protected:
    Diff() : m_context("OFF", ""), m_cloud(m_context) {}

    void create(const std::string& name, std::uint32_t chunkSize = 50) {
        CreateSettings settings(m_context);
        settings.primaryAttribute = attribute("p", -1000, 1000, 0.01, 2);
        settings.chunkSize = chunkSize;
        m_cloud.create(file(name), settings);
    }
    // Makes one transaction.
    void change(const std::function<void()>& work) {
        TransactionGuard transaction(m_cloud.transactions(), "change", "tests");
        work();
        transaction.commit();
    }
    void insert(const std::vector<std::uint64_t>& ids, const std::string& name,
                const std::vector<double>& values) {
        std::vector<double> places;
        for (const std::uint64_t id : ids) {
            // Neighbours are near each other, so that leaves are left alone.
            places.push_back(static_cast<double>(id % 400) * 5 - 1000);
            places.push_back(static_cast<double>(id % 10));
        }
        auto query = m_cloud.insert();
        query.bind(idName, DataType::UINT64, ids.data(), 8);
        query.bind("p", DataType::DOUBLE, places.data(), 16);
        if (!name.empty())
            query.bind(name, DataType::DOUBLE, values.data(), 8);
        ASSERT_EQ(query.next(static_cast<std::uint32_t>(ids.size())), ids.size());
        query.close();
    }
    void update(const std::vector<std::uint64_t>& ids, const std::string& name,
                const std::vector<double>& values) {
        auto query = m_cloud.update();
        query.bind(idName, DataType::UINT64, ids.data(), 8);
        query.bind(name, DataType::DOUBLE, values.data(), 8);
        query.next(static_cast<std::uint32_t>(ids.size()));
        query.close();
    }
    void remove(const std::vector<std::uint64_t>& ids) {
        auto query = m_cloud.remove();
        query.bind(DataType::UINT64, ids.data(), 8);
        query.next(static_cast<std::uint32_t>(ids.size()));
        query.close();
    }
    void fill(const std::string& name, double value, const std::string& filter = {}) {
        auto query = m_cloud.fill(filter);
        query.bind(name, DataType::DOUBLE, &value);
        while (query.next(1000)) {
        }
        query.close();
    }
    core::DatabaseDiff compare(core::StateName before, core::StateName after,
                               const core::DiffOptions& options = {}) const {
        const core::ComparedStates states(m_context, before, after);
        return compareDatabases(states.before(), states.after(), states.areOfOneFile(), options);
    }

    qrb::Context m_context;
    qrb::Pointcloud m_cloud;
};

template <typename Examples>
std::vector<std::uint64_t> idsOf(const Examples& examples) {
    std::vector<std::uint64_t> ids;
    for (const auto& one : examples)
        ids.push_back(one.id);
    return ids;
}

}  // namespace tarvo::core::testing
