#include "core/comparedstates.h"

#include "files/identity.h"
#include "qrb/error.h"

namespace tarvo::core {

namespace {

// Bytes; each point is read once, so that little is worth keeping.
constexpr std::uint64_t usualCacheSize = 128u << 20;

void open(qrb::Pointcloud& database, StateName& name, std::uint64_t cacheSize) {
    qrb::pointcloud::OpenSettings settings(database.context());
    settings.cacheSize = cacheSize;
    settings.readOnly = true;
    settings.transaction = name.transaction;
    if (name.transaction != 0)
        return database.open(name.file, settings);
    // The current one by its number, so that it stays.
    for (int turn = 0;; ++turn) {
        settings.transaction = 0;
        database.open(name.file, settings);
        name.transaction = settings.transaction = database.transactions().current();
        database.close();
        try {
            return database.open(name.file, settings);
        } catch (const qrb::Error& error) {
            // Another program may have discarded it in between.
            if (error.code() != QRB_ERROR_NOT_FOUND || turn == 3)
                throw;
        }
    }
}

}  // namespace

ComparedStates::ComparedStates(const qrb::Context& context, const StateName& before,
                               const StateName& after, std::optional<std::uint64_t> cacheSize)
    : m_nameBefore(before), m_nameAfter(after), m_before(context), m_after(context) {
    const auto identity = files::identityOf(before.file);
    const std::uint64_t bytes = cacheSize.value_or(usualCacheSize);
    open(m_before, m_nameBefore, bytes);
    open(m_after, m_nameAfter, bytes);
    // Neither name led elsewhere while both were opened.
    m_ofOneFile = identity && files::identityOf(before.file) == identity &&
                  files::identityOf(after.file) == identity &&
                  m_before.getUuid() == m_after.getUuid();
}

}  // namespace tarvo::core
