#include "engine/report/check.h"

#include "engine/report/checkreading.h"

#include <algorithm>

namespace tarvo::engine::report {

Fault CheckReading::faultOf(Fault place, const Failure& failure) {
    switch (failure.code()) {
        case ErrorCode::Internal:
        case ErrorCode::State:
        case ErrorCode::Busy:
        case ErrorCode::Cancelled:
        case ErrorCode::Memory:
            throw failure;
        default:
            break;
    }
    place.text = failure.what();
    place.details = failure.details();
    return place;
}

namespace {

using session::State;

class Check {
public:
    explicit Check(session::Session& session) : m_reading(session) {}

    // Nothing when a transaction went away while it was read: what was missing of it was no fault.
    std::optional<Findings> run() {
        session::History& history = session().history();
        std::vector<std::uint32_t> ids = history.transactions();
        // The current one first: it is the one whose points are all compared with each other.
        const auto current = std::find(ids.begin(), ids.end(), history.current());
        std::rotate(ids.begin(), current == ids.end() ? ids.begin() : current,
                    current == ids.end() ? ids.begin() : current + 1);
        const Fault containerPlace = place(Fault::Kind::Container);
        for (const std::uint32_t id : ids) {
            const std::uint64_t before = findings().faultCount;
            checkTransaction(id);
            bool isGone = false;
            if (findings().faultCount > before)
                m_reading.guarded(containerPlace, [&] { isGone = !history.keeps(id); });
            if (isGone)
                return std::nullopt;
        }
        Findings& result = findings();
        result.blobs = m_reading.blobs();
        checkContainer(containerPlace);
        m_reading.guarded(containerPlace, [&] {
            const std::uint64_t all = history.blobCount();
            // What can't be read doesn't tell what it reaches.
            if (result.faultCount == 0)
                result.unreached = all > result.blobs ? all - result.blobs : 0;
        });
        return std::move(result);
    }

private:
    session::Session& session() { return m_reading.session(); }
    Findings& findings() { return m_reading.findings(); }

    Fault place(Fault::Kind kind, std::string name = {}) const {
        Fault fault;
        fault.kind = kind;
        fault.transaction = m_transaction;
        fault.name = std::move(name);
        return fault;
    }

    // What is read may be right and the pages around it wrong: the next change would go by them.
    void checkContainer(Fault fault) {
        m_reading.guarded(fault, [&] {
            fault.text = "The file is damaged: its pages contradict each other.";
            for (std::string& line : session().structureFaults()) {
                fault.details = std::move(line);
                findings().add(fault);
            }
        });
    }

    void checkTransaction(std::uint32_t id) {
        m_transaction = id;
        const Fault root = place(Fault::Kind::Root);
        std::string text;
        try {
            text = session().history().root(id);
            m_reading.expect(session().history().lastBlob(id));
        } catch (const Failure& failure) {
            if (failure.code() == ErrorCode::NotFound)
                ++findings().leftOut;
            else
                findings().add(CheckReading::faultOf(root, failure));
            return;
        }
        ++findings().transactions;
        findings().bytes += text.size();
        State state;
        if (!m_reading.guarded(root, [&] {
                state = session::stateFromRoot(text);
                if (state.transaction.id != id || state.parent >= id)
                    throw Failure(ErrorCode::Damaged,
                                  "The file is damaged: the root is that of another transaction.");
            }))
            return;
        const bool hasTable = readTable(state);
        for (const auto& [name, item] : state.metaData) {
            const BlobRef& value = item.value;
            if (m_reading.meet(value))
                m_reading.guarded(place(Fault::Kind::MetaDataItem, name),
                                  [&] { (void)session().blobs().read(value, "a metadata item"); });
        }
        readChangelog(state);
        checkIndex(m_reading, state, hasTable, !m_anyIndex);
        m_anyIndex = true;
        m_reading.guarded(root, [&] {
            if (!m_reading.metExpected())
                throw Failure(ErrorCode::Damaged,
                              "The file is damaged: the transaction refers to data behind the last "
                              "that it has.");
        });
    }

    // Whether the state has its definitions now.
    bool readTable(State& state) {
        // Transactions beside each other mostly share it.
        if (m_reading.meet(state.attributesBlob) || state.attributesBlob != m_tableBlob) {
            m_tableBlob = state.attributesBlob;
            m_table = {};
            m_reading.guarded(place(Fault::Kind::AttributeTable), [&] {
                const Bytes text =
                    session().blobs().read(state.attributesBlob, "the attribute table");
                m_table = session::attributesFromText(
                    {reinterpret_cast<const char*>(text.data()), text.size()});
            });
        }
        state.attributes = m_table;
        return m_table.size() > 0 && m_reading.guarded(place(Fault::Kind::AttributeTable),
                                                       [&] { session::requireGiven(state); });
    }

    void readChangelog(const State& state) {
        m_reading.guarded(place(Fault::Kind::Changelog), [&] {
            IdSet chain;
            for (BlobRef link = state.changelog; link && m_reading.meet(link);) {
                if (!chain.insert(link.blob))
                    throw Failure(ErrorCode::Damaged,
                                  "The file is damaged: its changelog has no end.");
                const Bytes blob = session().blobs().read(link, "the changelog");
                link = session::changelogFromBlob(
                           {reinterpret_cast<const char*>(blob.data()), blob.size()})
                           .previous;
            }
        });
    }

    CheckReading m_reading;
    std::uint32_t m_transaction = 0;
    bool m_anyIndex = false;
    BlobRef m_tableBlob;
    schema::AttributeTable m_table;  // empty where it can't be read
};

}  // namespace

Findings check(session::Session& session) {
    session.blobs().forget();
    for (;;)
        if (std::optional<Findings> findings = Check(session).run())
            return *std::move(findings);
}

}  // namespace tarvo::engine::report
