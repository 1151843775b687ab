// Putting files in their places so that they are still there after a power cut. Names are UTF-8.
#pragma once

#include <string>

namespace tarvo::files {

// The file that a name stands for once links at its end are followed, whether it exists or not:
// what is to be replaced is the file, not the link to it. It is still a link where links lead in a
// circle, or to an open file of a process ("/dev/stdout"), whose target is no name.
std::string resolved(const std::string& fileName);

// A name beside the file under which this process can write its successor, different at each call;
// it tells the process, so that removeLeftovers knows it.
std::string temporaryNameFor(const std::string& fileName);

// Removes what processes of this machine that are gone have left under names that temporaryNameFor
// gave them for this file, with the journals beside them; folders of such names go with all that
// is in them. What can't be removed is left.
void removeLeftovers(const std::string& fileName) noexcept;

// Removes a file that was written under such a name, with its journals. What can't be removed is
// left.
void removeTemporary(const std::string& temporaryName) noexcept;

// Renames a file that is whole and synced, replacing what stands at `to`; the new name survives a
// power cut when this returns. Throws FileError, and has then renamed nothing or said otherwise.
void replaceDurably(const std::string& from, const std::string& to);

// The same, but refuses when something stands at `to`; returns whether it was free.
bool placeDurably(const std::string& from, const std::string& to);

// Makes the names in the folder of a file durable. Throws FileError.
void syncFolderOf(const std::string& fileName);

}  // namespace tarvo::files
