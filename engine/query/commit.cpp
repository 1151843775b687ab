#include "engine/query/commit.h"

#include "engine/query/levelofdetail.h"

namespace tarvo::engine::query {

namespace {

session::Progress part(const session::Progress& progress, int from, int to) {
    if (!progress)
        return {};
    return
        [&progress, from, to](int percent) { return progress(from + percent * (to - from) / 100); };
}

}  // namespace

void commit(session::Session& session, const session::Progress& progress,
            const session::Signer& signer) {
    (void)session.change();
    session::Patience patience = session.patienceWith(progress);
    const session::Progress asked = patience.progress();
    if (asked && !asked(0))
        session::throwCommitCancelled();
    session.settle(part(asked, 0, 60));
    updateLevelOfDetail(session, part(asked, 60, 95));
    session.publish(part(asked, 95, 100), signer);
}

}  // namespace tarvo::engine::query
