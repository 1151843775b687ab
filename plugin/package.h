// A plugin as it lies on the disk: a folder with a manifest and a script, or one script that has
// the manifest in its first comment.
#pragma once

#include "plugin/manifest.h"

#include <string>
#include <vector>

namespace tarvo::plugin {

struct PackageFile {
    std::string name;  // relative, "/" between folders
    std::string bytes;
};

// All of a plugin's files in memory: what is shown, trusted and run are the same bytes.
struct Package {
    std::string place;  // the absolute name of the folder or the script
    Manifest manifest;
    std::vector<PackageFile> files;  // in the order of their names
    std::string fingerprint;         // SHA-256 of the names and the bytes, 64 hexadecimal digits
};

// The most that a package may be.
inline constexpr std::size_t packageFileLimit = 1000;
inline constexpr std::size_t packageByteLimit = std::size_t{32} << 20;

// Reads a plugin: a folder with "plugin.json", or a file "NAME.py" that begins with the comment
//   # /// plugin
//   # { the manifest }
//   # ///
// Hidden files and folders, "__pycache__" and links are left out. Throws core::Failure.
Package readPackage(const std::string& place);

// A place where something looks like a plugin.
struct Found {
    std::string place;
    std::optional<Manifest> manifest;
    std::string problem;  // why there is no manifest
};

// The plugins of a folder, by their titles, those with problems behind. Two of one name: the second
// has that problem. Throws core::Failure when the folder can't be read.
std::vector<Found> findPlugins(const std::string& folder);

// Where a plugin path leads: a relative one begins in the program's folder, and where nothing is
// there, in that of its shared data.
std::string pluginFolder(const std::string& pluginPath);

}  // namespace tarvo::plugin
