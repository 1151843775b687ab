// A folder for files that only this program sees; gone with the object.
#pragma once

#include <string>

namespace tarvo::files {

class TemporaryFolder {
public:
    TemporaryFolder();  // throws FileError
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string file(const std::string& name) const;

private:
    std::string m_path;
};

}  // namespace tarvo::files
