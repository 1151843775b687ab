// Reports about an open database.
#pragma once

#include "engine/session/session.h"

#include <cstdint>
#include <string>

namespace tarvo::engine::report {

// Format 1: plain text; 2: JSON, with the members
//   database         uuid, file, size (bytes), creator, transaction (the current one)
//   points           their number
//   settings         the create settings of the file
//   level_of_detail  mode (1 thinout, 2 combine), size (0: none)
//   transactions     id, title, agent, start, stop of each
//   attributes       name, title, unit, minimum and maximum (an array with a number per element,
//                    null where there are no values)
//   metadata         the names
// Throws Failure(Argument) for an unknown format.
std::string inspect(session::Session& session, std::uint8_t format);

}  // namespace tarvo::engine::report
