// What the files of an import tell of their points as a whole, as one: they go into one database,
// which has one coordinate reference system and one item of each name of the catalogue.
#pragma once

#include "cli/importsteps.h"

#include <optional>
#include <string>

namespace tarvo::cli {

struct CommonOrigin {
    exchange::Origin origin;  // what the files agree on; the first system
    std::string foreign;      // files in other systems, in words; empty: none
};

// database: the one that the files go into, if it exists. Throws Failure for files in
// different coordinate reference systems, or in another one than the database; asTheyAre: takes
// them nevertheless. Files that tell none are taken as being in the same one, with a note on
// standard error.
CommonOrigin commonOrigin(const PointSources& sources, const qrb::Pointcloud* database,
                          bool asTheyAre);

// Gives "tarvo.xyz" the units of its system, where that is known; other attributes stay as they
// are.
void nameUnits(qrb::pointcloud::PointAttribute& definition,
               const std::optional<core::ReferenceSystem>& system);

// Sets the items of a new database, within a transaction, and tells the changelog of files in other
// systems.
void setOrigin(const qrb::Pointcloud& cloud, const CommonOrigin& common);
// The same for one that has points of other origin: it gets the system, and its coordinates their
// unit, where it knows of none.
void addOrigin(const qrb::Pointcloud& cloud, const CommonOrigin& common);

}  // namespace tarvo::cli
