// The lock that lets one process at a time write a database file, whatever name the file goes by:
// a lock of the operating system on one byte of the file itself, far behind its contents, that
// dies with its process.
//
// Closing a descriptor of the file would drop the container's own locks on it, on most systems.
// So a process has the descriptors that it locks with in one place, an OpenFile, which everybody
// who has the file open holds a share of: they are closed with the last share.
#pragma once

#include "files/identity.h"

#include <memory>
#include <string>

namespace tarvo::engine::store {

class OpenFile {
public:
    struct Registry;  // of all that are open

    // The share of this process in the file that the name stands for. Throws Failure(NotFound).
    // Hold it from before the container opens the file until after it has closed it.
    static std::shared_ptr<OpenFile> of(const std::string& fileName);

    OpenFile(std::shared_ptr<Registry> registry, const files::Identity& identity);
    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    const files::Identity& identity() const { return m_identity; }

private:
    friend class WriterLock;
    struct Descriptors;
    void release();

    const std::shared_ptr<Registry> m_registry;  // the last file may go when statics have gone
    const files::Identity m_identity;
    int m_shares = 0;
    std::unique_ptr<Descriptors> m_descriptors;  // none before the first lock
    bool m_locked = false;
};

class WriterLock {
public:
    // fileName: a name that leads to the file now. Throws Failure(Busy) when somebody else, in this
    // process or another, has the lock, Failure(File) when the file can't be written, and
    // Failure(State) when the name leads to another file by now.
    WriterLock(std::shared_ptr<OpenFile> file, const std::string& fileName);
    ~WriterLock();
    WriterLock(const WriterLock&) = delete;
    WriterLock& operator=(const WriterLock&) = delete;

private:
    std::shared_ptr<OpenFile> m_file;
};

// What happens when a name leads to another file than it did when it was opened.
[[noreturn]] void throwMoved(const std::string& fileName);

}  // namespace tarvo::engine::store
