// Reports about an open database, for people and programs. They describe the pending state where
// a transaction is pending, else that of the current transaction, and begin no transaction.
#pragma once

#include "engine/session/session.h"

#include <cstdint>
#include <string>

namespace tarvo::engine::report {

// Of a database with more points than this, histograms and picture are made from every n-th leaf,
// and say so.
inline constexpr std::uint64_t sampledPoints = 20'000'000;

// Format 1: plain text.
//
// Format 2: JSON, with the members (numbers of bytes unless told otherwise)
//   database         uuid, file, size, creator, transaction (the current one), pending (whether
//                    what follows is the state of a transaction not yet committed)
//   points           their number
//   extent           of the primary attribute: attribute, unit, minimum, maximum, size (arrays with
//                    a number per element, null where there are no values)
//   settings         the create settings of the file
//   level_of_detail  mode (1 thinout, 2 combine), size (0: none), points (their number)
//   index            nodes, leaves, levels: an array from the root down with leaves, inner_nodes,
//                    points (in leaves), level_of_detail_points (in inner nodes)
//   storage          points, level_of_detail, index, metadata, other (older transactions, free
//                    space, the container's own); together the size of the file
//   transactions     id, title, agent, comments, start, stop, library of each
//   attributes       name, title, description, unit, type, length, resolution, storage_class,
//                    minimum and maximum (arrays as above), has_invalid (an array of booleans),
//                    blocks (their number), bytes, share (per cent of those of all attributes),
//                    bytes_per_point (without level of detail; null without points)
//   metadata         the names
//   metadata_items   name, bytes, signed of each
//
// Format 3: HTML, with a picture of the cloud from above and a histogram per attribute.
//
// Format 4: HTML that shows, and lets copy, comma-separated values: a header line, then for each
// bin of each element the columns
//   attribute, element
//   bin              its number from 0, or "invalid" for the points without valid value; a line
//                    with "sample" and nothing in the columns before comes first where not all
//                    points were read: its count is the number of those that were
//   from, to         the values of the bin, both within; without a resolution `to` begins the next
//   count            points
//   name             of a single value that has one by definition
//
// Format 5: a check, as JSON on one line: everything that the kept transactions reach is read. A
// transaction that is pending is not.
//   fault_count      0: all is well
//   faults           an array of the first 1,000: kind ("root", "attribute table", "metadata item",
//                    "changelog", "index", "block", "container": the tables that hold all these),
//                    where it applies transaction (the one it was met in, the current one before
//                    all others; others may share it), item or attribute, element (from 0) and
//                    node, then text and details
//   transactions     their number, as far as their roots can be read
//   left_out         those that somebody discarded meanwhile
//   blobs, points, bytes  how many were read; what transactions share counts once
//   unreached_blobs  those that no transaction reaches, which vacuum removes; not told when there
//                    are faults: what can't be read may reach them
//
// limit: for sampledPoints. Throws Failure(Argument) for an unknown format, Failure(Damaged).
std::string inspect(session::Session& session, std::uint8_t format,
                    std::uint64_t limit = sampledPoints);

}  // namespace tarvo::engine::report
