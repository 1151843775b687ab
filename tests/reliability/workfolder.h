// Where a trial works.
#pragma once

#include <string>

namespace tarvo::trial {

// A folder in memory where the system has one; gone with the object, and when the program is
// stopped by SIGINT or SIGTERM. One at a time. What was left of programs that were killed goes when
// it is made.
class WorkFolder {
public:
    // name: of the trial; letters.
    explicit WorkFolder(const std::string& name);
    ~WorkFolder();
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    const std::string& path() const { return m_path; }
    // Makes a folder in it.
    std::string folder(const std::string& name) const;

private:
    std::string m_path;
};

// Removes everything in a folder.
void clear(const std::string& folder);
// Makes a folder hold what another one does.
void copyFolder(const std::string& from, const std::string& to);

}  // namespace tarvo::trial
