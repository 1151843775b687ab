// Which plugins somebody has agreed to run. One file per user, for window and qrbtool.
#pragma once

#include "plugin/package.h"

#include <string>

namespace tarvo::plugin {

enum class Trust {
    NEVER_ASKED,  // no plugin from this place was agreed to
    CHANGED,      // one was, but its files were others
    GIVEN,
};

class TrustedPlugins {
public:
    // In the user's folder of settings.
    TrustedPlugins();
    // In this file, which need not exist.
    explicit TrustedPlugins(std::string fileName) : m_fileName(std::move(fileName)) {}

    // A file that can't be read counts as one that trusts nothing.
    Trust trustIn(const Package& package) const;
    // Throws core::Failure, files::FileError.
    void give(const Package& package);

private:
    std::string m_fileName;
};

}  // namespace tarvo::plugin
