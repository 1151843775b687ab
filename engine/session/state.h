// The state of a database at one transaction: what a root text holds. States are values; a pending
// transaction works on a copy of its parent's.
#pragma once

#include "engine/base/blobref.h"
#include "engine/base/json.h"
#include "engine/index/node.h"
#include "engine/schema/attribute.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::engine::session {

struct TransactionRecord {
    std::uint32_t id = 0;
    std::string qrb;  // version of the library, line break, interface layer
    std::string title;
    std::string agent;
    std::string comments;
    std::string settings;
    std::string start;
    std::string stop;
};

// A metadata item; signature is hexadecimal and empty where the item is not signed. parent: the
// transaction from which the one that signed it was made; 0 of signatures of the first release,
// which are bound to the name only.
struct MetaItem {
    BlobRef value;
    std::uint32_t method = 0;
    std::uint32_t parent = 0;
    std::string signature;
    bool operator==(const MetaItem&) const = default;
};

struct State {
    TransactionRecord transaction;
    std::uint32_t parent = 0;  // 0: none

    BlobRef attributesBlob;  // the stored form of `attributes`; none while they are changed
    schema::AttributeTable attributes;  // the primary attribute first, then the point id
    std::uint32_t nextUid = 1;

    // Not stored: of a state that a transaction of this session makes, whether that was rolled
    // back. Null where the state was read.
    std::shared_ptr<bool> rolledBack;

    std::uint64_t shape = 0;  // not stored: counts changes after which a point may stand elsewhere
    BlobRef rootPage;         // holds the root node; none while the database is empty or changed
    std::uint64_t pointCount = 0;
    std::uint64_t nextPointId = 1;
    std::uint32_t nextNodeId = 2;  // the root is 1

    std::map<std::string, MetaItem> metaData;
    BlobRef changelog;  // the newest entry

    std::uint32_t lodMode = 1;
    std::uint32_t chunkSizeLod = 0;
    bool detailIsStale = false;  // not stored: the commit makes all levels of detail anew

    const schema::Attribute& primary() const { return attributes[0]; }
    // The primary attribute itself may be the point id.
    std::size_t pointIdIndex() const {
        return primary().record.name == schema::pointIdName ? 0 : 1;
    }
    const schema::Attribute& pointId() const { return attributes[pointIdIndex()]; }
};

// Root text <-> state, without the attributes, which stand in a blob of their own. Throws
// Failure(Damaged).
std::string rootText(const State& state);
State stateFromRoot(std::string_view root);

// A member that is a reference to a whole blob, or null.
void writeReferenceMember(JsonWriter& writer, const char* name, const BlobRef& reference);
BlobRef readReferenceMember(const JsonObject& parent, const char* name);

// Whether an item can have the name.
bool isMetaDataName(const std::string& name);

// Throws Failure(Damaged) where an attribute has a number that was not given yet: another one
// would get it, too.
void requireGiven(const State& state);

bool canBePointId(const schema::AttributeRecord& record);

// The stored form of an attribute table.
std::string attributesText(const schema::AttributeTable& table);
schema::AttributeTable attributesFromText(std::string_view text);

// Now, as transactions record it: ISO 8601 with milliseconds, UTC.
std::string timestamp();

}  // namespace tarvo::engine::session
