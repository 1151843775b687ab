// The lock that lets one process at a time write a database file. It is a file beside the
// database, "NAME-writer", whose operating-system lock dies with its process. The database file
// itself is never opened for this: closing it would drop the container's own locks.
#pragma once

#include <memory>
#include <string>

namespace tarvo::engine::store {

class WriterLock {
public:
    // Throws Failure(Busy) that names the holder, Failure(File) when the place is not writable.
    explicit WriterLock(const std::string& databaseName);
    ~WriterLock();
    WriterLock(const WriterLock&) = delete;
    WriterLock& operator=(const WriterLock&) = delete;

private:
    struct Handle;
    std::unique_ptr<Handle> m_handle;
};

}  // namespace tarvo::engine::store
