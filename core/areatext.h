// Areas as texts that people and other programs write.
#pragma once

#include "core/area.h"

#include <string>

namespace tarvo::core {

// Whether the text is meant as an area rather than as the name of a file.
bool looksLikeArea(const std::string& text);

// Reads a POLYGON or MULTIPOLYGON in well-known text (with or without Z and M, OGC 06-103r4), or a
// Polygon, MultiPolygon, Feature or FeatureCollection in GeoJSON (RFC 7946); z and what follows it
// are passed over, and rings that are not closed are closed. shown: how messages name the text.
// Throws Failure that tells what is wrong and where.
Area areaFromText(const std::string& text, const std::string& shown);

}  // namespace tarvo::core
