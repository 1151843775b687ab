// What the files of an import tell of their points as a whole, as one: they go into one database,
// which has one coordinate reference system, one time base and one item of each name of the
// catalogue.
#pragma once

#include "exchange/opensource.h"
#include "qrb/pointcloud.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tarvo::exchange {

struct CommonOrigin {
    Origin origin;                     // what the files agree on; the first system and time base
    std::vector<std::string> foreign;  // files in others, in words for the changelog
    std::vector<std::string> notes;    // lines for the user
};

// database: the one that the files go into, if it exists. leftOut: names of attributes. Throws
// Failure for files in different coordinate reference systems or time bases, or in others than the
// database; asTheyAre: takes them nevertheless. Files that tell none are taken as being in the
// same, with a note.
CommonOrigin commonOrigin(const PointSources& sources, const qrb::Pointcloud* database,
                          const std::set<std::string>& leftOut, bool asTheyAre);

// Gives "tarvo.xyz" the units of its system, where that is known; other attributes stay as they
// are.
void nameUnits(qrb::pointcloud::PointAttribute& definition,
               const std::optional<core::ReferenceSystem>& system);

// Sets the items of a new database, within a transaction, and tells the changelog of files in other
// systems or time bases. Adds notes.
void setOrigin(const qrb::Pointcloud& cloud, CommonOrigin& common);
// The same for one that has points of other origin: it gets the system, and its coordinates their
// unit, and the time base, where it knows of none.
void addOrigin(const qrb::Pointcloud& cloud, CommonOrigin& common);

}  // namespace tarvo::exchange
