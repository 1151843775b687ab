// The connection to the loaded library. Copies share one handle; the last one releases it.
#pragma once

#include "qrb/qrb.h"

#include <functional>
#include <memory>
#include <string>

namespace tarvo::qrb {

class Context {
public:
    // The texts go to the library unchanged: its log level and the path of its log file.
    // Throws Error. The library must be loaded (qrb/loader.h).
    Context(const std::string& logLevel, const std::string& logPath);

    std::string libraryName() const;
    std::string libraryFilename() const;
    std::string libraryVersion() const;
    std::string libraryLicense() const;

    static std::string interfaceName();
    static std::string interfaceVersion();

    std::string databaseFileTypeSuffix() const;
    // Whether the file is a database file of the library; a missing file is none.
    bool databaseFileTypeCheck(const std::string& fileName) const;

    // For the other classes of the layer.
    qrb_context* handle() const;

private:
    class Private;
    std::shared_ptr<Private> d;
};

// While it lives, calls on the context ask the function whether to go on, on the thread of the
// call. One that was stopped throws an Error with the code QRB_ERROR_CANCELLED. A library that
// can't be interrupted doesn't ask. One at a time for a context, and not within a call on it.
class InterruptGuard {
public:
    // goOn: must not throw, nor use the library. Throws Error.
    InterruptGuard(const Context& context, std::function<bool()> goOn);
    ~InterruptGuard();
    InterruptGuard(const InterruptGuard&) = delete;
    InterruptGuard& operator=(const InterruptGuard&) = delete;

private:
    const Context m_context;
    const std::function<bool()> m_goOn;
};

}  // namespace tarvo::qrb
