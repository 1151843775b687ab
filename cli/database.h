// The open database that a command works on, and the transaction that its changes are part of.
#pragma once

#include "qrb/pointcloud.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace tarvo::cli {

// What a transaction is recorded with.
struct Change {
    std::string title;
    std::string comments = {};
    std::string settings = {};  // JSON text
    qrb::pointcloud::Signature signature = {};
};

class Database {
public:
    // Opens the file. Throws Error.
    Database(const qrb::Context& context, const std::string& fileName);

    // Its filters may name values (core/namedfilter.h).
    const qrb::Pointcloud& cloud() const { return m_cloud; }
    // A filter as records keep it, with numbers. Throws Error.
    std::string recordedFilter(const std::string& filter) const;
    const std::string& fileName() const { return m_fileName; }
    // Bytes of the file on disk.
    std::uint64_t fileSize() const;
    // The library's report of a format. It can't be stopped: outside a transaction, which would
    // have to be rolled back, an interrupt ends the program.
    std::string inspect(std::uint8_t format) const;

    // Runs work within a transaction that is committed after it and rolled back when work throws.
    // A change that is made by the work of another one becomes a part of that. Returns the number
    // of the transaction (0: part of another one), so that telling it needs no reading that may
    // fail.
    std::uint32_t change(const Change& change, const std::function<void()>& work);
    // Makes one transaction of the changes that are made by the steps. Where they make none,
    // nothing is committed, and 0 returned.
    std::uint32_t changeTogether(const Change& change, const std::function<void()>& steps);
    // Runs work as change() does, and takes it back. Between steps it must not follow a change, or
    // else throws Failure.
    void tryOut(const Change& change, const std::function<void()>& work);
    bool isChanging() const { return m_transaction.has_value(); }

private:
    void begin(const Change& change);

    std::string m_fileName;
    qrb::Pointcloud m_cloud;
    std::optional<qrb::pointcloud::TransactionGuard> m_transaction;  // the pending one
    Change m_recorded;                                               // of the pending one
    bool m_hasChanges = false;                                       // the pending one
};

}  // namespace tarvo::cli
