// The commit of the pending transaction with everything that it owes: the changes that queries
// have taken, and the level-of-detail points of the nodes that changed.
#pragma once

#include "engine/session/session.h"

namespace tarvo::engine::query {

// signer: signs the changelog entry (method 0: not at all). Throws Failure(Cancelled) when progress
// says stop; the transaction is still pending then, as after every failure.
void commit(session::Session& session, const session::Progress& progress = {},
            const session::Signer& signer = {});

}  // namespace tarvo::engine::query
