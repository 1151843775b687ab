#include "tests/reliability/damagebase.h"

#include "engine/query/columns.h"
#include "engine/query/commit.h"
#include "engine/query/insert.h"
#include "engine/query/select.h"
#include "engine/query/update.h"
#include "files/error.h"
#include "tests/engine/database.h"

#include <cmath>
#include <fstream>
#include <limits>
#include <new>
#include <numeric>
#include <random>
#include <set>
#include <stdexcept>

namespace tarvo::trial {

namespace {

using namespace engine;

const session::Signer& signer() {
    static const session::Signer one{1, {1, 2, 3, 4}, {}};
    return one;
}

FileImage contents(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// Columns that each favour another codec, storage class or kind of value.
std::vector<schema::AttributeRecord> attributes() {
    std::vector<schema::AttributeRecord> all{
        testing::record("noise", 0, 255),       testing::record("steps", 0, 4e9),
        testing::record("planes", 0, 4e9),      testing::record("both", 0, 4e9),
        testing::record("letters", 0, 255),     testing::record("real", -1e9, 1e9, 0),
        testing::record("gaps", -20, 20, 0.25), testing::record("single", 0, 10),
    };
    all[1].compressionOptions = 1;
    all[2].compressionOptions = 2;
    all[3].compressionOptions = 3;
    all[6].invalidValue = -99;
    all[6].storageClass = 3;
    all[7].storageClass = 1;
    all[7].defaultValue = 7;
    return all;
}

struct Row {
    double xyz[3];
    std::uint8_t noise;
    std::uint32_t steps, planes, both;
    std::uint8_t letters;
    double real;
    double gaps;
};

std::vector<Row> rows(std::size_t count, std::uint32_t seed) {
    std::mt19937 random(seed);
    std::vector<Row> result(count);
    for (std::size_t i = 0; i < count; ++i) {
        Row& row = result[i];
        row.xyz[0] = static_cast<double>(random() % 2000) - 1000;
        row.xyz[1] = static_cast<double>(random() % 100);
        row.xyz[2] = static_cast<double>(random() % 100) / 8;
        row.noise = static_cast<std::uint8_t>(random());
        row.steps = static_cast<std::uint32_t>(i * 1000 + random() % 3);
        row.planes = (static_cast<std::uint32_t>(random()) % 4 << 24) | (random() % 3);
        row.both = static_cast<std::uint32_t>(i * 70'000);
        row.letters = static_cast<std::uint8_t>(random() % 6 == 0 ? random() % 3 * 100 : 30);
        row.real = std::ldexp(static_cast<double>(random()), -7);
        row.gaps = random() % 5 == 0 ? -99 : static_cast<double>(random() % 100) / 4 - 10;
    }
    return result;
}

// Everything but the place.
template <typename Query>
void bindValues(Query& query, std::vector<Row>& points) {
    const auto bind = [&](const char* name, std::uint32_t type, void* first) {
        query.bind(name, type, first, sizeof(Row));
    };
    bind("noise", QRB_DATA_TYPE_UINT8, &points[0].noise);
    bind("steps", QRB_DATA_TYPE_UINT32, &points[0].steps);
    bind("planes", QRB_DATA_TYPE_UINT32, &points[0].planes);
    bind("both", QRB_DATA_TYPE_UINT32, &points[0].both);
    bind("letters", QRB_DATA_TYPE_UINT8, &points[0].letters);
    bind("real", QRB_DATA_TYPE_DOUBLE, &points[0].real);
    bind("gaps", QRB_DATA_TYPE_DOUBLE, &points[0].gaps);
}

void insert(session::Session& session, std::vector<Row> points, bool deep) {
    query::InsertQuery query(session);
    query.bind("xyz", QRB_DATA_TYPE_DOUBLE, &points[0].xyz, sizeof(Row));
    if (!deep)
        bindValues(query, points);
    query.next(static_cast<std::uint32_t>(points.size()));
}

void replaceValues(session::Session& session, std::vector<Row> points) {
    std::vector<std::uint64_t> ids(points.size());
    std::iota(ids.begin(), ids.end(), 1u);
    query::UpdateQuery query(session);
    query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
    bindValues(query, points);
    query.next(static_cast<std::uint32_t>(points.size()));
}

void update(session::Session& session, const char* name) {
    std::vector<std::uint64_t> ids;
    std::vector<double> values;
    for (std::uint64_t id = 1; id < 200; id += 3) {
        ids.push_back(id);
        values.push_back(static_cast<double>(id % 9));
    }
    query::UpdateQuery query(session);
    query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
    query.bind(name, QRB_DATA_TYPE_DOUBLE, values.data(), 8);
    query.next(static_cast<std::uint32_t>(ids.size()));
}

void requireEveryCodec(const std::string& file) {
    session::Session session(file, {}, "trial");
    const auto state = session.state();
    const index::Node root = session.blobs().rootNode(*state);
    std::set<int> codecs;
    for (index::TreeCursor at(root, session.blobs().pageReader()); at.node(); at.enter())
        for (const index::AttributeData& data : at.node()->attributes)
            for (const index::ElementData& element : data.elements)
                if (element.block)
                    codecs.insert(session.blobs().read(element.block, "a block")[0]);
    if (codecs.size() != 6)
        throw std::runtime_error("The database lacks blocks of " +
                                 std::to_string(6 - codecs.size()) + " codecs.");
}

void append(std::string& text, const void* data, std::size_t size) {
    text.append(static_cast<const char*>(data), size);
}

// The columns of every node, level-of-detail points included.
std::string pointsOf(session::Session& session, const session::State& state) {
    std::string text;
    const index::Node root = session.blobs().rootNode(state);
    std::uint64_t nodes = 0;
    for (index::TreeCursor at(root, session.blobs().pageReader()); at.node(); at.enter()) {
        const index::Node& node = *at.node();
        if (++nodes > state.nextNodeId)
            throw Failure(ErrorCode::Damaged, "The index is not a tree.");
        text += "node " + std::to_string(node.id) + " " + std::to_string(node.totalCount) + ":";
        for (const schema::Attribute& attribute : state.attributes.all())
            for (std::uint32_t e = 0; e < attribute.record.length; ++e) {
                const auto column = query::readColumn(session, node, attribute, e);
                column->visit([&](auto codes) { append(text, codes.data(), codes.size_bytes()); });
            }
    }
    return text;
}

// The points of the current state as a query reads them.
std::string selected(session::Session& session) {
    query::SelectQuery query(session, {}, "xyz[0] < 900");
    std::vector<std::uint64_t> ids(500);
    std::vector<double> xyz(1500);
    query.bind("tarvo.id", QRB_DATA_TYPE_UINT64, ids.data(), 8);
    query.bind("xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(), 24);
    std::string text;
    while (const std::uint32_t count = query.next(500)) {
        append(text, ids.data(), count * 8);
        append(text, xyz.data(), count * 24);
    }
    return text;
}

class Reader {
public:
    explicit Reader(Picture& picture) : m_picture(picture) {}
    template <typename Function>
    void operator()(const std::string& name, Function&& function) {
        try {
            m_picture[name] = function();
        } catch (const std::exception& error) {
            m_picture.erase(name);
            if (isInternal(error))
                m_picture[internalError] = name + ": " + error.what();
        }
    }

private:
    Picture& m_picture;
};

// What hangs on roots. What several of them share is read once.
class Transactions {
public:
    Transactions(session::Session& session, Reader& read) : m_session(session), m_read(read) {}

    void read(std::uint32_t id) {
        const std::string number = " of " + std::to_string(id);
        session::State state;
        bool whole = false;
        m_read("root" + number, [&] {
            std::string root = m_session.history().root(id);
            state = session::stateFromRoot(root);
            whole = true;
            return root;
        });
        if (!whole)
            return;
        for (const auto& [name, item] : state.metaData)
            m_read("item " + name + number, [&] { return text(item.value); });
        whole = false;
        m_read("definitions" + number, [&] {
            std::string definitions = text(state.attributesBlob);
            if (definitions != m_definitions) {
                m_table = session::attributesFromText(definitions);
                m_definitions = definitions;
            }
            state.attributes = m_table;
            whole = true;
            return definitions;
        });
        if (whole)
            m_read("points" + number, [&] { return pointsOf(m_session, state); });
    }

private:
    const std::string& text(const BlobRef& reference) {
        std::string& known = m_texts[reference.blob];
        if (known.empty()) {
            const Bytes bytes = m_session.blobs().read(reference, "a text");
            known.assign(bytes.begin(), bytes.end());
        }
        return known;
    }

    session::Session& m_session;
    Reader& m_read;
    std::map<std::uint64_t, std::string> m_texts;
    std::string m_definitions;
    schema::AttributeTable m_table;
};

}  // namespace

bool isInternal(const std::exception& error) {
    if (const auto* const failure = dynamic_cast<const Failure*>(&error))
        return failure->code() == ErrorCode::Internal;
    return !dynamic_cast<const files::FileError*>(&error) &&
           !dynamic_cast<const std::bad_alloc*>(&error);
}

DamageBase makeDamageBase(const std::string& file, bool deep) {
    DamageBase base;
    session::CreateSettings settings;
    settings.primaryAttribute = testing::record("xyz", -1000, 1000, 0.001, 3);
    settings.chunkSize = deep ? 3 : 90;
    settings.chunkSizeLod = deep ? 0 : 20;
    session::Session::create(file, settings, "trial",
                             deep ? std::vector<schema::AttributeRecord>() : attributes(),
                             {{"first", "{\"a\": [1, 2, 3]}"}});
    base.older.push_back(contents(file));
    session::Session session(file, {}, "trial");
    const auto change = [&](const char* title, const std::function<void()>& work) {
        session.begin(title, "trial", "a comment", "{}");
        work();
        query::commit(session, {}, signer());
        base.older.push_back(contents(file));
    };
    change("points", [&] {
        insert(session, rows(deep ? 270 : 160, 1), deep);
        session.metaData().set("note", "{\"text\": \"a note that stays\"}");
        session.metaData().sign("note", signer());
    });
    if (!deep) {
        // Of what the leaves were first, only the places are still wanted: sparse blobs.
        change("values anew", [&] { replaceValues(session, rows(160, 3)); });
        session.history().discard({2});
        session.history().vacuum();
        base.older.push_back(contents(file));
    }
    change("to be discarded", [&] { session.metaData().set("short", "[1]"); });
    if (!deep)
        change("values", [&] {
            update(session, "noise");
            session.metaData().set("note", "{\"text\": \"another note\"}");
            session.metaData().sign("note", signer());
            session.changelog().append("a message");
        });
    change("more", [&] {
        insert(session, rows(2, 2), deep);
        session.metaData().remove("first");
    });
    session.history().discard({deep ? 3u : 4u});
    if (!deep)
        requireEveryCodec(file);
    base.image = contents(file);
    return base;
}

std::vector<std::uint32_t> kept(const std::string& file) {
    return session::Session(file, {}, "trial").history().transactions();
}

Picture readAll(const std::string& file, const std::vector<std::uint32_t>& ids, bool dear) {
    Picture picture;
    Reader read(picture);
    try {
        session::Session session(file, {}, "trial");
        const session::Blobs::Scope scope(session.blobs());
        read("uuid", [&] { return session.identity().uuid; });
        read("settings", [&] { return session::toJson(session.identity().settings); });
        read("current", [&] { return std::to_string(session.current()); });
        read("transactions", [&] {
            std::string text;
            for (const std::uint32_t id : session.history().transactions())
                text += std::to_string(id) + " ";
            return text;
        });
        Transactions transactions(session, read);
        for (const std::uint32_t id : ids)
            transactions.read(id);
        read("note", [&] { return session.metaData().get("note"); });
        read("signature",
             [&] { return session.metaData().verify("note", signer()) ? "valid" : "invalid"; });
        read("details", [&] { return session.history().details(ids.back()).title; });
        read("changelog", [&] { return session.changelog().text(); });
        const std::string changelog = picture.contains("changelog") ? picture["changelog"] : "";
        if (const std::size_t at = changelog.rfind("[#"); at != changelog.npos)
            read("entry", [&] {
                return session::verifyEntry(changelog.substr(at), signer()) ? "valid" : "invalid";
            });
        if (dear)
            read("points", [&] { return selected(session); });
        if (dear && ids.size() > 2)
            read("size", [&] { return std::to_string(session.history().size({ids[1]})); });
    } catch (const std::exception& error) {
        if (isInternal(error))
            picture[internalError] = std::string("opening: ") + error.what();
    }
    return picture;
}

void commitSomething(const std::string& file, bool withPoints) {
    session::Session session(file, {}, "trial");
    session.begin("probe", "trial", "", "");
    session.metaData().set("probe", "\"a probe\"");
    if (withPoints)
        insert(session, rows(5, 3), true);
    query::commit(session, {}, signer());
}

}  // namespace tarvo::trial
