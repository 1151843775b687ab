#include "engine/query/pointids.h"

#include "engine/query/scan.h"

namespace tarvo::engine::query {

PointIds* PointIds::ifKnown(session::Session& session) {
    return static_cast<PointIds*>(session.transactionCache().get());
}

PointIds& PointIds::of(session::Session& session) {
    (void)session.change();
    if (PointIds* known = ifKnown(session))
        return *known;
    auto made = std::make_shared<PointIds>();
    const session::Blobs::Scope scope(session.blobs());
    Scan scan(session, {}, "");
    scan.setColumns({{scan.state().pointIdIndex(), 0}});
    while (const std::optional<NodeHits> hits = scan.next())
        hits->columns[0]->visit([&](auto codes) {
            for (const auto code : codes)
                made->ids.insert(code);
        });
    session.transactionCache() = made;
    return *made;
}

}  // namespace tarvo::engine::query
