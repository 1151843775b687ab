// The database that is damaged, and everything that can be read of a database, as texts by name.
#pragma once

#include "engine/session/session.h"

#include <map>
#include <string>
#include <vector>

namespace tarvo::trial {

using FileImage = std::vector<char>;

struct DamageBase {
    FileImage image;
    std::vector<FileImage> older;  // what the file was after each of its earlier changes
};

// Several transactions, attributes of every kind, blocks of every codec, levels of detail, signed
// items and entries. deep: many small nodes, whose index stands in several pages.
DamageBase makeDamageBase(const std::string& file, bool deep);

// Values by what they are; those that can't be read are missing. What can't be a fault of the file,
// an internal error, stands under this name.
using Picture = std::map<std::string, std::string>;
inline constexpr const char* internalError = "internal error";
// Whether an exception is one: whatever is not a Failure of another kind, or want of memory.
bool isInternal(const std::exception& error);

// What a file holds. ids: the transactions that are asked for, whatever the file lists. dear: also
// what takes its time, a query and a size.
Picture readAll(const std::string& file, const std::vector<std::uint32_t>& ids, bool dear = true);
// The transactions that a file keeps. Throws Failure.
std::vector<std::uint32_t> kept(const std::string& file);

// Commits a change: an item, with points also some points. Throws Failure where it is refused.
void commitSomething(const std::string& file, bool withPoints);

}  // namespace tarvo::trial
