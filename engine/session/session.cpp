#include "engine/session/session.h"

#include "engine/base/json.h"
#include "engine/base/utf8.h"
#include "engine/schema/lodmethod.h"
#include "version.h"

#include <algorithm>
#include <random>

namespace tarvo::engine::session {

namespace {

constexpr std::size_t longestTitle = 1u << 20;  // bytes
constexpr std::size_t longestText = 16u << 20;

// A random UUID (RFC 4122, version 4).
std::string makeUuid() {
    std::random_device random;
    std::uint8_t bytes[16];
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0f) | 0x40);
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3f) | 0x80);
    std::string text;
    for (int i = 0; i < 16; ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10)
            text += '-';
        text += "0123456789abcdef"[bytes[i] >> 4];
        text += "0123456789abcdef"[bytes[i] & 15];
    }
    return text;
}

std::string identityText(const Identity& identity) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    writer.StartObject();
    writeMember(writer, "uuid", identity.uuid);
    writeMember(writer, "creator", identity.creator);
    writer.Key("settings");
    const std::string settings = toJson(identity.settings);
    writer.RawValue(settings.data(), settings.size(), rapidjson::kObjectType);
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

Identity identityFromText(const std::string& text) {
    const rapidjson::Document document = parseJson(text, "The identity", ErrorCode::Damaged);
    const JsonObject object(document, "The identity", ErrorCode::Damaged);
    Identity identity;
    identity.uuid = object.text("uuid");
    identity.creator = object.text("creator");
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    object.get("settings").Accept(writer);
    fromJson({buffer.GetString(), buffer.GetSize()}, identity.settings);
    validate(identity.settings);
    return identity;
}

// The primary attribute and the point id tell points apart: they can't have one value for all.
schema::AttributeRecord withValuesOfItsOwn(schema::AttributeRecord record) {
    if (record.storageClass == static_cast<std::uint8_t>(schema::StorageClass::Constant))
        record.storageClass = static_cast<std::uint8_t>(schema::StorageClass::Variable);
    return record;
}

// The texts of a transaction stand in its root and its changelog entry, which are read whole.
void checkText(const std::string& name, const std::string& text, std::size_t most) {
    const std::string what = name + " of a transaction";
    if (text.size() > most)
        throw Failure(ErrorCode::Argument,
                      what + " has at most " + std::to_string(most) + " bytes, this one has " +
                          std::to_string(text.size()) + ".",
                      "Keep a long text as a metadata item.");
    requireUtf8(what, text);
}

// The blobs behind the last one are deleted by who changes the file: a state that refers to them
// would be lost.
void requireKept(const State& state, std::uint64_t lastBlob) {
    std::uint64_t largest =
        std::max({state.attributesBlob.blob, state.rootPage.blob, state.changelog.blob});
    for (const auto& [name, item] : state.metaData)
        largest = std::max(largest, item.value.blob);
    if (largest > lastBlob)
        throw Failure(ErrorCode::Damaged,
                      "The file is damaged: its current transaction refers to data that no "
                      "transaction keeps. Nothing was changed.",
                      "Restore the file from a backup, or copy its points into a new database.");
}

void addTo(State& state, const schema::AttributeRecord& record) {
    schema::validate(record);
    schema::requireTexts(record);
    (void)schema::lodMethod(record);
    if (state.attributes.find(record.name) >= 0)
        throw Failure(ErrorCode::Exists,
                      "The database has a point attribute \"" + record.name + "\" already.");
    state.attributes.all().emplace_back(record, state.nextUid++);
    state.attributesBlob = {};
}

}  // namespace

std::string libraryVersion() {
    return "QRB Library " QRB_VERSION "-" QRB_COMMIT;
}

void Session::create(const std::string& fileName, const CreateSettings& settings,
                     const std::string& api, const std::vector<schema::AttributeRecord>& extra,
                     const std::vector<std::pair<std::string, std::string>>& metaData) {
    validate(settings);
    if (const schema::AttributeRecord& id = settings.primaryAttribute;
        id.name == schema::pointIdName && !canBePointId(id))
        throw Failure(ErrorCode::Argument,
                      "The primary attribute \"" + id.name + "\" must be one whole number.");
    State state;
    addTo(state, withValuesOfItsOwn(settings.primaryAttribute));
    if (settings.primaryAttribute.name != schema::pointIdName)
        addTo(state, withValuesOfItsOwn(defaultAttribute(schema::pointIdName)));
    for (const schema::AttributeRecord& record : extra)
        addTo(state, record);
    state.lodMode = settings.lodMode;
    state.chunkSizeLod = settings.chunkSizeLod;
    TransactionRecord& transaction = state.transaction;
    transaction.id = 1;
    transaction.qrb = libraryVersion() + "\n" + api;
    transaction.title = "Database creation";
    transaction.agent = libraryVersion();
    transaction.settings = toJson(settings);
    transaction.start = transaction.stop = timestamp();

    ChangeNotes notes;
    for (const auto& [name, value] : metaData) {
        checkMetaDataName(name);
        if (isPlaceholder(name, value))
            notes.placeholders.push_back(name);
    }
    const Identity identity{makeUuid(), libraryVersion(), settings};
    store::Container::create(fileName, identityText(identity), [&](const auto& add) {
        state.attributesBlob = add(bytesOf(attributesText(state.attributes)));
        for (const auto& [name, value] : metaData)
            state.metaData[name].value = add(bytesOf(value));
        state.changelog = add(bytesOf(changelogBlob(changelogEntry(State(), state, notes), {})));
        return rootText(state);
    });
}

Session::Session(const std::string& fileName, const OpenSettings& settings, std::string api)
    : m_container(fileName),
      m_identity(identityFromText(m_container.identity())),
      m_api(std::move(api)),
      m_cacheSize(std::max<std::uint64_t>(settings.cacheSize, 16u << 20)),
      m_threads(settings.threads > 0 ? settings.threads
                                     : std::max(1u, std::thread::hardware_concurrency())),
      m_pinned(settings.transaction),
      m_readOnly(settings.readOnly || m_pinned != 0),
      m_blobs(m_container, m_cacheSize, nodeCapacity(m_identity.settings)),
      m_history(*this, m_container),
      m_changelog(*this),
      m_metaData(*this) {
    if (m_pinned != 0)
        loadPinned();
    else
        loadCurrent();
}

Session::~Session() {
    m_pendingChange.reset();
}

ThreadPool& Session::pool() {
    if (!m_pool)
        m_pool = std::make_unique<ThreadPool>(m_threads);
    return *m_pool;
}

std::shared_ptr<const State> Session::stateOf(std::uint32_t id, const std::string& root) {
    auto state = std::make_shared<State>(stateFromRoot(root));
    if (state->transaction.id != id || !state->attributesBlob)
        throw Failure(ErrorCode::Damaged, "The file is damaged: transaction " + std::to_string(id) +
                                              " is not what it should be.");
    const std::string what = "the attribute table of transaction " + std::to_string(id);
    state->attributes = attributesFromText(m_blobs.readText(state->attributesBlob, what.c_str()));
    requireGiven(*state);
    return state;
}

void Session::loadCurrent() {
    for (;;) {
        const std::uint64_t version = m_container.version();
        try {
            auto [id, root] = m_container.currentRoot();
            if (!m_current || m_currentRoot != root) {
                m_current = stateOf(id, root);
                m_currentRoot = std::move(root);
            }
            m_version = version;
            return;
        } catch (const Failure& failure) {
            // Another program may have taken it away between two reads.
            if (failure.code() != ErrorCode::Damaged || m_container.version() == version)
                throw;
        }
    }
}

void Session::loadPinned() {
    const std::string name = "transaction " + std::to_string(m_pinned);
    const auto requireKept = [&] {
        if (!m_container.keeps(m_pinned))
            throw Failure(ErrorCode::NotFound, "The database does not keep " + name + ".",
                          "File: " + fileName() +
                              "\nList its transactions, and open one of these. A transaction that "
                              "was discarded does not come back.");
    };
    requireKept();
    try {
        m_currentRoot = m_container.root(m_pinned);
        m_current = stateOf(m_pinned, m_currentRoot);
    } catch (const Failure&) {
        // Another program may have taken it away between two reads.
        requireKept();
        throw;
    }
}

void Session::throwIfRolledBack(const State& state) {
    if (state.rolledBack && *state.rolledBack)
        throw Failure(ErrorCode::State, "The transaction that is being read was rolled back.",
                      "Start again: a new query reads the current state.");
}

void Session::throwIfDiscarded(const State& state, const Failure& failure) {
    const bool pending = m_pending && m_pending->rolledBack == state.rolledBack;
    if (failure.code() != ErrorCode::Damaged || pending)
        return;
    const std::uint32_t id = state.transaction.id;
    if (!m_container.keeps(id))
        throw Failure(ErrorCode::State,
                      "Transaction " + std::to_string(id) +
                          ", which is being read, was discarded and cleaned up meanwhile.",
                      "The file is well. Start again: a new query reads the current state.");
}

std::uint32_t Session::current() {
    return pending() ? m_current->transaction.id : state()->transaction.id;
}

void Session::settle(const Progress& progress) {
    if (!m_pendingChange)
        return;
    Patience patience(m_container, progress);
    m_pendingChange->apply(patience.progress());
}

std::shared_ptr<const State> Session::state() {
    if (m_pending) {
        settle();
        // A copy: whoever holds it is not to see later changes of the same transaction.
        return std::make_shared<const State>(*m_pending);
    }
    if (m_pinned == 0 && m_container.version() != m_version)
        loadCurrent();
    return m_current;
}

std::uint32_t Session::begin(const std::string& title, const std::string& agent,
                             const std::string& comments, const std::string& settings) {
    requireChangeable();
    checkText("The title", title, longestTitle);
    checkText("The agent", agent, longestTitle);
    checkText("The comment", comments, longestText);
    checkText("The settings text", settings, longestText);
    m_container.beginWriting();
    try {
        loadCurrent();
        const std::shared_ptr<const State> base = m_current;
        requireKept(*base, m_container.lastBlob());
        auto pending = std::make_shared<State>(*base);
        TransactionRecord& transaction = pending->transaction;
        transaction = {};
        transaction.id = m_container.nextTransaction();
        transaction.qrb = libraryVersion() + "\n" + m_api;
        transaction.title = title;
        transaction.agent = agent;
        transaction.comments = comments;
        transaction.settings = settings;
        transaction.start = timestamp();
        pending->parent = base->transaction.id;
        pending->rolledBack = std::make_shared<bool>(false);
        m_pending = std::move(pending);
        m_changelog.notes() = {};
        return m_pending->transaction.id;
    } catch (...) {
        m_container.abandon();
        throw;
    }
}

State& Session::change() {
    if (!m_pending) {
        requireChangeable();
        throw Failure(ErrorCode::State, "No transaction is pending.",
                      "Begin a transaction before changing the database.");
    }
    return *m_pending;
}

void Session::setPendingChange(std::shared_ptr<PendingChange> change) {
    settle();
    m_pendingChange = std::move(change);
}

void Session::endTransaction() {
    m_pending.reset();
    m_pendingChange.reset();
    m_transactionCache.reset();
    m_changelog.notes() = {};
}

void throwCommitCancelled() {
    throw Failure(ErrorCode::Cancelled, "The commit was cancelled.",
                  "The transaction is still pending.");
}

void Session::publish(const Progress& progress, const Signer& signer) {
    State& pending = change();
    // All that may fail works on a copy: a commit that fails can be made again.
    State next = pending;
    if (!next.attributesBlob)
        next.attributesBlob =
            m_blobs.addJson(attributesText(next.attributes), "The attribute table");
    next.transaction.stop = timestamp();
    m_changelog.notes().placeholders = m_metaData.placeholders(next, *m_current);
    std::string entry = changelogEntry(*m_current, next, m_changelog.notes());
    if (signer.method != 0)
        signEntry(entry, signer);
    next.changelog = m_blobs.addJson(changelogBlob(entry, next.changelog), "The changelog entry");
    std::string root = rootText(next);
    checkJsonSize(root, "The list of what the transaction holds");
    auto published = std::make_shared<const State>(std::move(next));
    if (progress && !progress(90))
        throwCommitCancelled();
    m_container.publish(published->transaction.id, root);
    m_current = std::move(published);
    m_currentRoot = std::move(root);
    endTransaction();
    if (progress)
        progress(100);
}

void Session::rollback() {
    *change().rolledBack = true;
    endTransaction();
    m_container.abandon();
}

void Session::restore(std::uint32_t id) {
    requireChangeable();
    m_container.alone([&] {
        std::string root = m_container.root(id);
        std::shared_ptr<const State> state = stateOf(id, root);
        m_container.makeCurrent(id);
        m_current = std::move(state);
        m_currentRoot = std::move(root);
    });
}

void Session::requireChangeable() const {
    if (m_pinned != 0)
        throw Failure(ErrorCode::State,
                      "The database was opened to read transaction " + std::to_string(m_pinned) +
                          ", and can't be changed.",
                      "Open it without naming a transaction.");
    if (m_readOnly)
        throw Failure(ErrorCode::State,
                      "The database was opened to be read only, and can't be changed.",
                      "Open it again without that setting.");
    requireNonePending();
}

void Session::requireNonePending() const {
    if (m_pending)
        throw Failure(ErrorCode::State, "A transaction is pending.",
                      "Commit or roll back transaction " +
                          std::to_string(m_pending->transaction.id) + " first.");
}

void Session::addAttribute(const schema::AttributeRecord& record) {
    State& pending = change();
    settle();
    addTo(pending, record);
}

void Session::setLevelOfDetail(std::uint32_t mode, std::uint32_t size) {
    State& pending = change();
    if (mode != pending.lodMode && size > largestLodSize(mode))
        size = 0;
    validateLod(mode, size);
    pending.lodMode = mode;
    pending.chunkSizeLod = size;
    pending.detailIsStale = true;
}

}  // namespace tarvo::engine::session
