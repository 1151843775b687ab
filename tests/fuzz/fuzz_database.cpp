// Hostile databases whose checksums are right. An input is a database in parts (parts.h), or a file
// as it is where it begins like one. Everything in it is read, then it is changed.
//
// QRB_TAKE_APART=DATABASE fuzz_database: writes the parts to the standard output, for seeds.
#include "engine/query/commit.h"
#include "engine/query/fill.h"
#include "engine/query/insert.h"
#include "engine/query/remove.h"
#include "engine/query/select.h"
#include "engine/report/report.h"
#include "engine/session/session.h"
#include "engine/validation/conformance.h"
#include "tests/fuzz/folder.h"
#include "tests/fuzz/parts.h"
#include "tests/fuzz/survive.h"

#include <cstring>
#include <iostream>
#include <random>

using namespace tarvo;
using namespace tarvo::engine;
using fuzz::survive;

namespace {

constexpr int mostCalls = 30;  // of a query: a file may well claim very many points
constexpr std::uint64_t mostInspected = 200'000;

// What is done with an input: not everything with each, for more inputs find more. It follows from
// the input's bytes.
std::minstd_rand choice;

// Whether they could be read.
bool readPoints(session::Session& session, const std::string& filter) {
    return survive([&] {
        query::SelectQuery query(session, {}, filter);
        const std::uint32_t rows = 512;
        std::vector<std::vector<double>> buffers;
        for (const schema::Attribute& attribute : session.state()->attributes.all()) {
            const std::uint32_t length = attribute.record.length;
            buffers.emplace_back(std::size_t(rows) * length);
            query.bind(attribute.record.name, QRB_DATA_TYPE_DOUBLE, buffers.back().data(),
                       static_cast<std::int32_t>(length * sizeof(double)));
        }
        for (int i = 0; i < mostCalls; ++i)
            if (query.next(rows) == 0)
                break;
    });
}

// isSound: the check has found no fault, so what it vouches for must be read.
void readState(session::Session& session, bool isSound) {
    const auto sound = [&](bool isRead) {
        fuzz::require(isRead || !isSound, "what the check finds sound can be read");
    };
    sound(survive([&] { (void)session.changelog().text(); }));
    std::shared_ptr<const session::State> state;
    sound(survive([&] { state = session.state(); }));
    if (!state)
        return;
    for (const auto& item : state->metaData) {
        sound(survive([&] { (void)session.metaData().get(item.first); }));
        survive([&] { (void)session.metaData().verify(item.first, {}); });
    }
    sound(readPoints(session, ""));
    for (const schema::Attribute& attribute : state->attributes.all())
        if (attribute.record.length == 1) {
            readPoints(session, attribute.record.name + " > 5");
            break;
        }
    readPoints(session, "find fullest leaf");
    if (state->pointCount <= mostInspected) {
        // Pictures (3) take far longer than everything else.
        const std::uint8_t formats[] = {1, 2, 4};
        const std::uint8_t format = choice() % 60 == 0 ? 3 : formats[choice() % std::size(formats)];
        survive([&] { (void)report::inspect(session, format); });
    }
    survive([&] {
        (void)validation::deviations(
            session,
            validation::readFileSchema(
                R"({"identifier":"a","extension":"a","attributes":["xyz*"],"metadata":["own?"]})"),
            true);
    });
}

void change(session::Session& session) {
    if (!survive([&] { session.begin("change", "fuzzer", "", ""); }))
        return;
    survive([&] { session.metaData().set("own", "{\"a\": 1}"); });
    survive([&] { session.changelog().append("a message"); });
    survive([&] { session.changelog().import(session.changelog().text()); });
    std::shared_ptr<const session::State> state;
    survive([&] { state = session.state(); });
    if (state && state->pointCount <= mostInspected) {
        survive([&] {
            query::InsertQuery query(session);
            const std::vector<schema::Attribute>& all = state->attributes.all();
            const std::vector<double> values(all.at(0).record.length * 3, 0.0);
            query.bind(all[0].record.name, QRB_DATA_TYPE_DOUBLE, values.data(),
                       static_cast<std::int32_t>(all[0].record.length * sizeof(double)));
            query.next(3);
        });
        survive([&] {
            const std::uint64_t ids[] = {1, 2, 77};
            query::RemoveQuery query(session);
            query.bind(QRB_DATA_TYPE_UINT64, ids, sizeof ids[0]);
            query.next(3);
        });
        survive([&] {
            const schema::Attribute& last = state->attributes.all().back();
            const std::vector<double> value(last.record.length, last.record.minimumValue);
            query::FillQuery query(session, {}, "");
            query.bind(last.record.name, QRB_DATA_TYPE_DOUBLE, value.data());
            for (int i = 0; i < mostCalls && query.next(10000) > 0; ++i) {
            }
        });
        survive([&] { session.setLevelOfDetail(2, 3); });
    }
    if (!survive([&] { query::commit(session); })) {
        survive([&] { session.rollback(); });
        return;
    }
    readPoints(session, "");
}

void useFile(const std::string& file) {
    (void)store::Container::recognises(file);
    survive([&] {
        session::Session session(file, {8u << 20}, "fuzzer");
        std::string checked;
        survive([&] { checked = report::inspect(session, 5); });
        const bool isSound = checked.starts_with("{\"fault_count\":0,");
        readState(session, isSound);
        std::vector<std::uint32_t> transactions;
        survive([&] { transactions = session.history().transactions(); });
        if (transactions.empty())
            transactions.push_back(1);
        const auto any = [&] { return transactions[choice() % transactions.size()]; };
        survive([&] { (void)session.history().details(any()); });
        survive([&] { (void)session.history().size({any()}); });
        if (choice() % 2 == 0)
            change(session);
        if (choice() % 2 == 0)
            survive([&] { session.history().vacuum(); });
        if (survive([&] { session.restore(any()); }))
            readState(session, isSound);
        survive([&] { session.history().finalize(); });
        survive([&] { session.history().vacuum(); });
    });
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t most);

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    const char* const file = std::getenv("QRB_TAKE_APART");
    if (!file)
        return 0;
    const Bytes bytes = fuzz::bytesFromParts(fuzz::takeApart(file));
    std::cout.write(reinterpret_cast<const char*>(bytes.data()),
                    static_cast<std::streamsize>(bytes.size()));
    std::exit(std::cout.flush() ? 0 : 1);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string file = fuzz::folder().file("a.qrbx");
    choice.seed(static_cast<std::uint32_t>(checksum({data, size})));
    if (size >= 16 && std::memcmp(data, "SQLite format 3", 16) == 0) {
        std::filesystem::remove(file + "-journal");
        useFile(fuzz::folder().write("a.qrbx", data, size));
    } else {
        fuzz::assemble(fuzz::partsFromBytes({data, size}), file);
        useFile(file);
    }
    return 0;
}

// Changes one part, most times; the rest is left right.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t most, unsigned seed) {
    std::minstd_rand random(seed);
    if (size < 16 || std::memcmp(data, "SQLite format 3", 16) == 0 || random() % 50 == 0)
        return LLVMFuzzerMutate(data, size, most);
    fuzz::Parts parts = fuzz::partsFromBytes({data, size});
    const auto any = [&]() -> fuzz::Part& { return parts[random() % parts.size()]; };
    if (parts.empty())
        return LLVMFuzzerMutate(data, size, most);
    switch (random() % 20) {
        case 0:
            std::swap(any(), any());
            break;
        case 1:
            parts.erase(parts.begin() + static_cast<std::ptrdiff_t>(random() % parts.size()));
            break;
        case 2:
            parts.insert(parts.begin() + static_cast<std::ptrdiff_t>(random() % parts.size()),
                         any());
            break;
        case 3:
            any().kind =
                static_cast<fuzz::Kind>(random() % static_cast<unsigned>(fuzz::Kind::Count));
            break;
        case 4: {
            fuzz::Part& part = any();
            const std::uint32_t count = 1u << random() % 16;
            part.kind = fuzz::Kind::Bomb;
            part.content.assign(5, 0);
            std::memcpy(part.content.data(), &count, 4);
            break;
        }
        default:
            for (unsigned i = 0; i <= random() % 3; ++i) {
                Bytes& content = any().content;
                const std::size_t before = content.size();
                content.resize(before + 64);
                content.resize(LLVMFuzzerMutate(content.data(), before, content.size()));
            }
    }
    const Bytes bytes = fuzz::bytesFromParts(parts);
    if (bytes.empty() || bytes.size() > most)
        return LLVMFuzzerMutate(data, size, most);
    std::memcpy(data, bytes.data(), bytes.size());
    return bytes.size();
}
