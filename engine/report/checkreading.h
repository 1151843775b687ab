// What the parts of a check share: which references were read, what was found.
#pragma once

#include "engine/base/idset.h"
#include "engine/report/check.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace tarvo::engine::report {

class CheckReading {
public:
    explicit CheckReading(session::Session& session)
        : m_session(session),
          m_mostKnown(session.cacheSize() / 4 / (sizeof(BlobRef) + 5 * sizeof(void*))) {}
    CheckReading(const CheckReading&) = delete;
    CheckReading& operator=(const CheckReading&) = delete;

    session::Session& session() { return m_session; }
    Findings& findings() { return m_findings; }

    // Whether the reference was not met before. There is room for many, not for any number: of a
    // very large database some are read again.
    bool meet(const BlobRef& reference) {
        m_largest = std::max(m_largest, reference.blob);
        m_blobs.insert(reference.blob);
        if (m_known.count(reference) > 0)
            return false;
        if (m_known.size() < m_mostKnown)
            m_known.insert(reference);
        m_findings.bytes += reference.length;
        return true;
    }
    // No blob behind this one until the next call.
    void expect(std::uint64_t lastBlob) {
        m_lastBlob = lastBlob;
        m_largest = 0;
    }
    bool metExpected() const { return m_largest <= m_lastBlob; }
    std::uint64_t blobs() const { return m_blobs.size(); }

    // Runs a function, and makes a fault of the damage that it meets. Whether it met none.
    template <typename Function>
    bool guarded(const Fault& place, Function&& function) {
        try {
            function();
            return true;
        } catch (const Failure& failure) {
            m_findings.add(faultOf(place, failure));
            return false;
        }
    }
    // The fault at a place that a failure tells; passes on what is no damage.
    static Fault faultOf(Fault place, const Failure& failure);

private:
    session::Session& m_session;
    std::size_t m_mostKnown;
    Findings m_findings;
    std::unordered_set<BlobRef, session::BlobRefHash> m_known;
    IdSet m_blobs;
    std::uint64_t m_lastBlob = 0;
    std::uint64_t m_largest = 0;  // met since then
};

// Reads the index of a state; what it finds goes to the findings. whole: nothing of it was read
// before, so that all points and nodes can be compared with each other. hasTable: the state has its
// definitions; without them blocks are only compared with their checksums.
void checkIndex(CheckReading& reading, const session::State& state, bool hasTable, bool whole);

}  // namespace tarvo::engine::report
