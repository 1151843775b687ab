// The coordinate reference system of points: what is told about it, and where a database keeps it.
#pragma once

#include "qrb/metadata.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tarvo::core {

// One that is told: where none is, there is no object. What is not told, or was told and not
// understood, is empty. All texts are UTF-8.
struct ReferenceSystem {
    std::string name;
    std::string code;        // "EPSG:25832", of a compound system "EPSG:25832+7837"
    std::uint32_t epsg = 0;  // of the system as a whole
    std::string wkt;         // as its file holds it
    std::string keys;        // GeoTIFF keys in one order, to compare, where they are what counts
    // As the catalogue writes units: "m", "ft", "ftUS" (US survey foot), "deg".
    std::string horizontalUnit;
    std::string verticalUnit;
    std::string unread;  // what could not be understood, in words; empty: all of it was

    bool isUnderstood() const { return unread.empty(); }
};

// For a reader: "WGS 84 (EPSG:4326)", or what there is of it; "unnamed system".
std::string describe(const ReferenceSystem& system);
// Both in quotes, with their units where the rest doesn't tell them apart.
std::string describeBoth(const ReferenceSystem& a, const ReferenceSystem& b);
// The units in words: "X and Y in ft, Z in m", or "in m" where one holds for all.
std::string describeUnits(const ReferenceSystem& system);
// Whether Z needs a word of its own in that.
bool hasOwnHeights(const ReferenceSystem& system);

// Whether coordinates mean the same: by the codes where both have one, else by the well-known
// texts, else by the keys; units that both tell must agree. Systems that have none of these in
// common count as different; so do those that were not understood, unless they were told alike.
bool isSame(const ReferenceSystem& a, const ReferenceSystem& b);

// The system that the item "tarvo.geo_tag" tells; nothing where it tells none. Throws qrb::Error.
std::optional<ReferenceSystem> referenceSystem(const qrb::pointcloud::MetaData& metaData);
// Writes it there; false where the item is signed or tells more than a system: it stays as it is.
// Throws qrb::Error.
bool setReferenceSystem(qrb::pointcloud::MetaData& metaData, const ReferenceSystem& system);

}  // namespace tarvo::core
