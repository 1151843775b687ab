// The transactions of one open database.
#pragma once

#include "qrb/pointclouddata.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::qrb::pointcloud {

// Receives the work done in per cent on the calling thread. An exception that it throws stops the
// work and reaches the caller of the operation; at the end, when there is nothing left to stop, it
// is dropped. The function may ask the database whether it is open, for its UUID and for its
// transactions' numbers; other calls on it fail.
using Progress = std::function<void(int percent)>;

struct Transaction {
    std::uint32_t id = 0;
    std::string qrb;  // library version, line break, interface layer
    std::string title;
    std::string agent;
    std::string comments;
    std::string settings;  // JSON text
    std::string start;     // ISO 8601, UTC, milliseconds
    std::string stop;
};

// How a commit signs the changelog entry; method 0 is without signature.
struct Signature {
    std::uint32_t method = 0;
    std::vector<std::uint8_t> key;
};

class Transactions {
public:
    explicit Transactions(std::shared_ptr<PointcloudData> data);

    std::uint32_t begin(const std::string& title, const std::string& agent,
                        const std::string& comments = {}, const std::string& settings = {});
    void commit(const Signature& signature = {}, const Progress& progress = {});
    void rollback();
    std::vector<std::uint32_t> list() const;
    std::uint32_t current() const;
    bool pending() const;
    void restore(std::uint32_t id);
    void discard(const std::vector<std::uint32_t>& ids);
    // Bytes that only these transactions hold.
    std::uint64_t size(const std::vector<std::uint32_t>& ids) const;
    Transaction details(std::uint32_t id) const;

private:
    std::shared_ptr<PointcloudData> m_data;
};

// Rolls the pending transaction back on every exit but its commit; errors while doing so are
// swallowed.
class TransactionGuard {
public:
    TransactionGuard(Transactions& transactions, const std::string& title, const std::string& agent,
                     const std::string& comments = {}, const std::string& settings = {});
    ~TransactionGuard();
    TransactionGuard(const TransactionGuard&) = delete;
    TransactionGuard& operator=(const TransactionGuard&) = delete;

    std::uint32_t id() const { return m_id; }
    void commit(const Signature& signature = {}, const Progress& progress = {});

private:
    Transactions& m_transactions;
    std::uint32_t m_id = 0;
    bool m_open = true;
};

}  // namespace tarvo::qrb::pointcloud
