// The lock that writers of the first release hold: one on a file "NAME-writer" beside the database.
// Whoever writes a file of version 1, which that release can have open, takes it, too.
#pragma once

#include <memory>
#include <string>

namespace tarvo::engine::store {

class NameLock {
public:
    // Throws Failure(Busy) that names the holder, Failure(File) when the place is not writable.
    explicit NameLock(const std::string& databaseName);
    ~NameLock();
    NameLock(const NameLock&) = delete;
    NameLock& operator=(const NameLock&) = delete;

private:
    struct Handle;
    std::unique_ptr<Handle> m_handle;
};

}  // namespace tarvo::engine::store
