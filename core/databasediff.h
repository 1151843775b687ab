// What is different between two states of databases: definitions, metadata items and points. A
// plain record; core/difftext writes it down.
#pragma once

#include "qrb/pointcloud.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::core {

struct DiffOptions {
    std::vector<std::string> attributes;  // whose values are compared; none: all that both have
    std::size_t first = 5;                // examples of each kind, by id
    bool points = true;                   // else definitions and metadata items alone
    std::uint64_t memory = 256u << 20;    // bytes for points; the libraries' caches are beside it
};

// A field, named as in the JSON form of a definition, and its texts.
struct FieldDiff {
    std::string field;
    std::string before;
    std::string after;
};

struct DefinitionDiff {
    std::string attribute;
    std::vector<FieldDiff> fields;
};

struct DefinitionsDiff {
    std::vector<FieldDiff> settings;  // of the database: primary attribute, level of detail
    std::vector<std::string> added;   // attributes
    std::vector<std::string> removed;
    std::vector<DefinitionDiff> changed;

    bool none() const {
        return settings.empty() && added.empty() && removed.empty() && changed.empty();
    }
};

// Names of items.
struct MetaDataDiff {
    std::vector<std::string> added;
    std::vector<std::string> removed;
    std::vector<std::string> changed;  // values, byte by byte
    std::vector<std::string> nowSigned;
    std::vector<std::string> noLongerSigned;

    bool none() const {
        return added.empty() && removed.empty() && changed.empty() && nowSigned.empty() &&
               noLongerSigned.empty();
    }
};

struct PointExample {
    std::uint64_t id = 0;
    std::vector<std::string> place;  // the elements of the primary attribute
};

struct ValueExample {
    std::uint64_t id = 0;
    std::vector<std::string> before;  // the elements
    std::vector<std::string> after;
};

struct ValuesDiff {
    std::string attribute;
    // Compared as numbers, because the definitions differ: equal are those that are no further
    // apart than half of the finer resolution, and values that are both invalid.
    bool asNumbers = false;
    std::uint64_t points = 0;  // whose value differs
    std::vector<ValueExample> first;
};

struct PointsDiff {
    std::uint64_t before = 0;  // points
    std::uint64_t after = 0;
    std::uint64_t added = 0;
    std::uint64_t removed = 0;
    std::uint64_t changed = 0;  // with another value of any attribute
    std::vector<PointExample> firstAdded;
    std::vector<PointExample> firstRemoved;
    std::vector<ValuesDiff> values;        // a record for each attribute that was compared
    std::vector<std::string> notCompared;  // of another length, so that no value equals another

    bool none() const { return added == 0 && removed == 0 && changed == 0; }
};

struct DatabaseDiff {
    DefinitionsDiff definitions;
    MetaDataDiff metaData;
    std::optional<PointsDiff> points;  // none where they were not compared

    bool none() const {
        return definitions.none() && metaData.none() && (!points || points->none());
    }
};

// Compares two open databases, which must stay as they are meanwhile (core/comparedstates). Points
// are the same where they have the same id; those of levels of detail don't count. ofOneFile:
// both are states of one file, so that leaves that both have are not read. progress gets per cent;
// what it throws ends the comparison, as qrb::Error of either database does, and Failure for an
// attribute of the options that neither has, or an id that occurs twice.
DatabaseDiff compareDatabases(const qrb::Pointcloud& before, const qrb::Pointcloud& after,
                              bool ofOneFile, const DiffOptions& options = {},
                              const qrb::pointcloud::Progress& progress = {});

}  // namespace tarvo::core
