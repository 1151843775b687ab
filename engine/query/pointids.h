// The ids (codes) of all points of the pending state, kept for the length of a transaction that
// has to know which ids there are: read once, then brought up to date by the queries.
#pragma once

#include "engine/base/idset.h"
#include "engine/session/session.h"

#include <memory>

namespace tarvo::engine::query {

class PointIds final : public session::TransactionCache {
public:
    // Those of the session's pending transaction; reads the ids of all points the first time.
    static PointIds& of(session::Session& session);
    // Null unless they were read already.
    static PointIds* ifKnown(session::Session& session);

    IdSet ids;
};

}  // namespace tarvo::engine::query
