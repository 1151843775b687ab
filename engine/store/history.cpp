#include "engine/store/history.h"

#include <algorithm>
#include <charconv>

namespace tarvo::engine::store {

namespace {

constexpr const char* historyName = "history";

std::int64_t textChecksum(const std::string& prefix, std::string_view text) {
    std::string whole = prefix;
    whole.append(text);
    return static_cast<std::int64_t>(
        checksum({reinterpret_cast<const std::uint8_t*>(whole.data()), whole.size()}));
}

std::string snapshotPrefix(std::int64_t id, std::int64_t lastBlob) {
    return std::to_string(id) + ":" + std::to_string(lastBlob) + ":";
}

constexpr const char* whatHistory = "the list of transactions";

// What the transactions that are there say of themselves.
struct Snapshots {
    std::vector<std::uint32_t> ids;  // ascending
    std::int64_t lastBlob = 0;
};
Snapshots readSnapshots(Connection& connection) {
    Statement statement(connection.handle, "SELECT id, last_blob FROM snapshot ORDER BY id",
                        connection.fileName);
    Snapshots result;
    while (statement.step()) {
        const std::int64_t id = statement.integer(0);
        const std::int64_t lastBlob = statement.integer(1);
        if (id < 1 || id > UINT32_MAX || lastBlob < 0 || lastBlob > mostBlobs)
            throwDamaged(connection.fileName, whatHistory);
        result.ids.push_back(static_cast<std::uint32_t>(id));
        result.lastBlob = std::max(result.lastBlob, lastBlob);
    }
    return result;
}

struct Snapshot {
    std::int64_t lastBlob = 0;
    std::string root;
};
Snapshot readSnapshot(Connection& connection, std::uint32_t id) {
    Statement statement(connection.handle,
                        "SELECT last_blob, root, checksum FROM snapshot WHERE id = ?",
                        connection.fileName);
    statement.bind(1, id);
    if (!statement.step())
        throw Failure(ErrorCode::NotFound,
                      "The database has no transaction " + std::to_string(id) + ".");
    Snapshot result{statement.integer(0), statement.text(1)};
    if (statement.integer(2) != textChecksum(snapshotPrefix(id, result.lastBlob), result.root))
        throwDamaged(connection.fileName, "transaction " + std::to_string(id));
    return result;
}

// Reads blank-separated decimal numbers one after another.
class Numbers {
public:
    Numbers(const std::string& text, const std::string& fileName, const char* what)
        : m_at(text.data()), m_end(text.data() + text.size()), m_fileName(fileName), m_what(what) {}

    bool atEnd() const { return m_at == m_end; }
    template <typename T>
    T next() {
        T number = 0;
        const auto [end, error] = std::from_chars(m_at, m_end, number);
        if (error != std::errc() || number < 0 || (end != m_end && *end != ' '))
            throwDamaged(m_fileName, m_what);
        m_at = end == m_end ? end : end + 1;
        return number;
    }

private:
    const char* m_at;
    const char* m_end;
    const std::string& m_fileName;
    const char* m_what;
};

template <typename T>
T numberOf(Connection& connection, const char* name) {
    const std::string text = getInfo(connection, name);
    return Numbers(text, connection.fileName, name).next<T>();
}

// Version 1 has no list of what is kept: what it has are the transactions that are there.
History readFirstHistory(Connection& connection) {
    const Snapshots snapshots = readSnapshots(connection);
    History history;
    history.kept = snapshots.ids;
    history.lastBlob = snapshots.lastBlob;
    history.current = numberOf<std::uint32_t>(connection, "current");
    history.last = history.kept.empty() ? 0 : history.kept.back();
    if (hasInfo(connection, "last"))
        history.last = std::max(history.last, numberOf<std::uint32_t>(connection, "last"));
    return history;
}

}  // namespace

bool isFirstFormat(Connection& connection) {
    return connection.pragma("PRAGMA user_version") == 1;
}

bool History::keeps(std::uint32_t id) const {
    return std::binary_search(kept.begin(), kept.end(), id);
}

void throwDamaged(const std::string& fileName, const std::string& what) {
    throw Failure(ErrorCode::Damaged,
                  "The file is damaged: " + what + " does not agree with its checksum.",
                  "File: " + fileName + "\nRestore it from a backup.");
}

void putInfo(Connection& connection, const std::string& name, std::string_view value) {
    Statement(connection.handle, "INSERT OR REPLACE INTO info VALUES(?, ?, ?)", connection.fileName)
        .bind(1, name)
        .bind(2, value)
        .bind(3, textChecksum(name + ":", value))
        .run();
}

std::string getInfo(Connection& connection, const std::string& name) {
    Statement statement(connection.handle, "SELECT value, checksum FROM info WHERE name = ?",
                        connection.fileName);
    statement.bind(1, name);
    if (!statement.step() || !statement.isText(0) || !statement.isInteger(1))
        throwDamaged(connection.fileName, "the item \"" + name + "\"");
    std::string value = statement.text(0);
    if (statement.integer(1) != textChecksum(name + ":", value))
        throwDamaged(connection.fileName, "the item \"" + name + "\"");
    return value;
}

bool hasInfo(Connection& connection, const std::string& name) {
    Statement statement(connection.handle, "SELECT 1 FROM info WHERE name = ?",
                        connection.fileName);
    return statement.bind(1, name).step();
}

void removeInfo(Connection& connection, const std::string& name) {
    Statement(connection.handle, "DELETE FROM info WHERE name = ?", connection.fileName)
        .bind(1, name)
        .run();
}

History readHistory(Connection& connection) {
    if (isFirstFormat(connection))
        return readFirstHistory(connection);
    const std::string text = getInfo(connection, historyName);
    Numbers numbers(text, connection.fileName, whatHistory);
    History history;
    history.current = numbers.next<std::uint32_t>();
    history.last = numbers.next<std::uint32_t>();
    history.lastBlob = numbers.next<std::int64_t>();
    while (!numbers.atEnd())
        history.kept.push_back(numbers.next<std::uint32_t>());
    const Snapshots snapshots = readSnapshots(connection);
    if (history.kept != snapshots.ids || !history.keeps(history.current) ||
        history.last < history.kept.back() || history.lastBlob < snapshots.lastBlob ||
        history.lastBlob > mostBlobs)
        throwDamaged(connection.fileName, whatHistory);
    return history;
}

void writeHistory(Connection& connection, const History& history) {
    if (isFirstFormat(connection)) {
        putInfo(connection, "current", std::to_string(history.current));
        return;
    }
    std::string text = std::to_string(history.current) + " " + std::to_string(history.last) + " " +
                       std::to_string(history.lastBlob);
    for (const std::uint32_t id : history.kept)
        text += " " + std::to_string(id);
    putInfo(connection, historyName, text);
}

void raiseFormat(Connection& connection) {
    if (!isFirstFormat(connection))
        return;
    removeInfo(connection, "current");
    removeInfo(connection, "last");
    connection.run(("PRAGMA user_version=" + std::to_string(writtenFormat)).c_str());
}

void putSnapshot(Connection& connection, std::uint32_t id, std::int64_t lastBlob,
                 std::string_view root) {
    Statement(connection.handle, "INSERT INTO snapshot VALUES(?, ?, ?, ?)", connection.fileName)
        .bind(1, id)
        .bind(2, lastBlob)
        .bind(3, root)
        .bind(4, textChecksum(snapshotPrefix(id, lastBlob), root))
        .run();
}

std::string readRoot(Connection& connection, std::uint32_t id) {
    return readSnapshot(connection, id).root;
}

std::int64_t readLastBlob(Connection& connection, std::uint32_t id) {
    return readSnapshot(connection, id).lastBlob;
}

void removeSnapshot(Connection& connection, std::uint32_t id) {
    Statement(connection.handle, "DELETE FROM snapshot WHERE id = ?", connection.fileName)
        .bind(1, id)
        .run();
}

}  // namespace tarvo::engine::store
