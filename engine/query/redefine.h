// Changes attribute definitions together with the values of all points, as part of the pending
// transaction. All or, on failure, nothing.
#pragma once

#include "engine/session/session.h"

#include <string>

namespace tarvo::engine::query {

// Replaces the definition of the same name. Values are carried over where the new range holds them,
// the others become invalid or, without an invalid value, the default value. Throws Failure(Range)
// where points differ and the new storage class is constant, Failure(Argument) where the primary
// attribute or the point id would get other values.
void putAttribute(session::Session& session, const schema::AttributeRecord& record);

// Adds a copy of an attribute with all values under another name; shares what is stored.
void duplicateAttribute(session::Session& session, const std::string& name,
                        const std::string& newName);

// Forgets all values: every point has the default value again.
void discardAttribute(session::Session& session, const std::string& name);

// Removes an attribute and all values.
void removeAttribute(session::Session& session, const std::string& name);

}  // namespace tarvo::engine::query
