// Blobs of which only parts are still wanted: cleaning up keeps these parts alone.
#include "engine/query/fill.h"
#include "engine/query/remove.h"
#include "engine/store/extents.h"
#include "tests/engine/seed.h"
#include "tests/engine/store.h"
#include "tests/engine/treecheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <numeric>
#include <vector>

namespace tarvo::engine {
namespace {

using namespace testing;
using store::Extent;
using store::Extents;

// Against a list of the bytes that are wanted.
TEST(Extents, AreTheBytesThatWereAdded) {
    std::mt19937 random(static_cast<unsigned>(seedOfRun()));
    for (int round = 0; round < 300; ++round) {
        std::vector<bool> wanted(100);
        Extents extents;
        for (int i = 0; i < 12; ++i) {
            const std::uint64_t offset = random() % 100;
            const std::uint64_t length = random() % std::min<std::uint64_t>(101 - offset, 20);
            extents.add({offset, length});
            std::fill_n(wanted.begin() + static_cast<std::ptrdiff_t>(offset), length, true);
        }
        std::vector<Extent> expected;
        std::uint64_t before = 0;
        for (std::uint64_t i = 0; i < wanted.size(); ++i)
            if (wanted[i] && i > 0 && wanted[i - 1])
                ++expected.back().length;
            else if (wanted[i])
                expected.push_back({i, 1});
        ASSERT_EQ(extents.all(), expected);

        const Bytes bytes = encodeExtents(extents);
        const ByteSpan list = ByteSpan(bytes).subspan(store::extentCountBytes);
        for (std::uint64_t i = 0; i < wanted.size(); before += wanted[i++]) {
            const auto place = store::placeOf({i, 1}, list, sparseBytes(extents), "a list");
            ASSERT_EQ(place.has_value(), wanted[i]) << i;
            if (place) {
                ASSERT_EQ(*place, bytes.size() + before);
            }
            // Not across a gap.
            if (i > 0 && wanted[i - 1]) {
                ASSERT_EQ(
                    store::placeOf({i - 1, 2}, list, sparseBytes(extents), "a list").has_value(),
                    wanted[i]);
            }
        }
        ASSERT_EQ(sparseBytes(extents), bytes.size() + before);
    }
    Extents extents;
    EXPECT_THROW(extents.add({600u << 20, 1}), Failure);
    EXPECT_THROW(extents.add({1, ~std::uint64_t(0)}), Failure);
}

class Sparse : public ::testing::Test {
protected:
    // Of 140 bits a point, amplitude and second take 20 each, third 32.
    Sparse() : m_file(m_folder.file("a.qrbx")) {
        session::Session::create(
            m_file, settings(1, 5000), "test",
            {record("amplitude", 0, 1e6), record("second", 0, 1e6), record("third", 0, 4e9)});
        session::Session session(m_file, {}, "test");
        std::mt19937 random(5);
        std::vector<double> values(count * columns);
        for (std::size_t i = 0; i < count; ++i) {
            double* const point = &values[i * columns];
            for (int d = 0; d < 3; ++d)
                point[d] = random() % 1'000'000 / 1000.0;
            point[3] = random() % 1'000'000;
            point[4] = random() % 1'000'000;
            point[5] = random() % 4'000'000'000;
            point[6] = static_cast<double>(i + 1);
        }
        session.begin("points", "test", "", "");
        {
            query::InsertQuery query(session);
            bind(query, values);
            query.next(count);
        }
        query::commit(session);
    }
    template <typename Query>
    static void bind(Query& query, std::vector<double>& values) {
        constexpr std::int32_t stride = columns * sizeof(double);
        query.bind("xyz", QRB_DATA_TYPE_DOUBLE, &values[0], stride);
        query.bind("amplitude", QRB_DATA_TYPE_DOUBLE, &values[3], stride);
        query.bind("second", QRB_DATA_TYPE_DOUBLE, &values[4], stride);
        query.bind("third", QRB_DATA_TYPE_DOUBLE, &values[5], stride);
        query.bind("tarvo.id", QRB_DATA_TYPE_DOUBLE, &values[6], stride);
    }
    static void fill(session::Session& session, const char* attribute, double value) {
        session.begin("fill", "test", "", "");
        {
            query::FillQuery query(session, {}, "");
            query.bind(attribute, QRB_DATA_TYPE_DOUBLE, &value);
            while (query.next(1000) > 0) {
            }
        }
        query::commit(session);
    }
    static void cleanUp(session::Session& session) {
        session.history().finalize();
        session.history().vacuum();
    }
    static std::vector<double> values(session::Session& session) {
        std::vector<double> values(count * columns);
        query::SelectQuery query(session, {}, "");
        bind(query, values);
        EXPECT_EQ(query.next(count), count);
        return values;
    }
    int format() const { return numberIn(m_file, "PRAGMA user_version"); }
    std::uint64_t bytes() const { return std::filesystem::file_size(m_file); }

    static constexpr std::uint32_t count = 20'000;
    static constexpr std::size_t columns = 7;
    TemporaryFolder m_folder;
    std::string m_file;
};

TEST_F(Sparse, BlobsKeepTheirReferences) {
    session::Session session(m_file, {}, "test");
    session::Session beside(m_file, session::OpenSettings{0}, "test");
    const std::uint64_t whole = bytes();
    fill(session, "amplitude", 7);
    cleanUp(session);
    EXPECT_EQ(format(), 2);  // an eighth is not enough
    fill(session, "second", 8);
    const std::vector<double> before = values(session);
    cleanUp(session);
    EXPECT_EQ(format(), 3);
    EXPECT_LT(bytes(), whole * 4 / 5);
    EXPECT_EQ(values(session), before);
    EXPECT_EQ(values(beside), before);
    TreeCheck(session, count).run();

    // A second time there is nothing to do.
    const char* const all = "SELECT sum(length(data)) + count(*) FROM blob";
    const int rows = numberIn(m_file, all);
    session.history().vacuum();
    EXPECT_EQ(numberIn(m_file, all), rows);

    // What is sparse is restored and measured as others are, becomes sparser, and goes.
    const std::uint64_t packed = bytes();
    const std::uint32_t kept = session.current();
    fill(session, "third", 9);
    const std::uint32_t filled = session.current();
    session.restore(kept);
    EXPECT_EQ(values(session), before);
    session.restore(filled);
    const std::vector<double> after = values(session);
    cleanUp(session);
    EXPECT_EQ(values(session), after);
    EXPECT_EQ(values(beside), after);
    EXPECT_LT(bytes(), packed * 4 / 5);
    EXPECT_EQ(format(), 3);
    session.begin("remove", "test", "", "");
    {
        query::RemoveQuery query(session);
        std::vector<std::uint64_t> ids(count);
        std::iota(ids.begin(), ids.end(), 1u);
        query.bind(QRB_DATA_TYPE_UINT64, ids.data(), 8);
        EXPECT_EQ(query.next(count), count);
    }
    query::commit(session);
    EXPECT_GT(session.history().size({filled}), bytes() / 2);
    cleanUp(session);
    EXPECT_EQ(numberIn(m_file, "SELECT count(*) FROM blob WHERE id < 0"), 0);
    EXPECT_LT(bytes(), packed / 4);
}

// The transactions that are kept want different parts of the same blobs.
TEST_F(Sparse, BlobsHaveWhatAnyTransactionWants) {
    session::Session session(m_file, {}, "test");
    const std::uint32_t first = session.current();
    fill(session, "amplitude", 7);
    fill(session, "second", 8);
    const std::uint32_t last = session.current();
    const std::vector<double> now = values(session);
    const std::uint64_t whole = bytes();
    session.history().vacuum();
    EXPECT_EQ(bytes(), whole);
    const std::uint64_t announced = session.history().size({first, last - 1});
    EXPECT_GT(announced, whole / 5);
    session.history().discard({first});
    session.history().vacuum();
    session.restore(last - 1);
    EXPECT_EQ(values(session)[3], 7);
    EXPECT_NE(values(session)[4], 8);
    session.restore(last);
    EXPECT_EQ(values(session), now);
    session.history().discard({last - 1});
    session.history().vacuum();
    EXPECT_NEAR(static_cast<double>(whole - bytes()), static_cast<double>(announced),
                static_cast<double>(announced) / 10);
    EXPECT_EQ(values(session), now);
}

TEST_F(Sparse, BlobsThatAreDamagedAreTold) {
    std::vector<double> before;
    {
        session::Session session(m_file, {}, "test");
        fill(session, "amplitude", 7);
        fill(session, "second", 8);
        before = values(session);
        cleanUp(session);
    }
    const std::string good = m_folder.file("good.qrbx");
    std::filesystem::copy_file(m_file, good);
    const char* const rows = "(SELECT min(id) FROM blob)";
    for (const char* damage :
         {"substr(data, 1, 3)", "x'ffffffff' || substr(data, 5)", "x'00000000' || substr(data, 5)",
          "substr(data, 1, 4) || x'00010000' || substr(data, 9)",
          "substr(data, 1, 8) || x'ffffffff' || substr(data, 13)",
          "substr(data, 1, 8) || x'00000000' || substr(data, 13)", "data || x'00'",
          "substr(data, 1, length(data) - 1)", "x''"}) {
        std::filesystem::copy_file(good, m_file, std::filesystem::copy_options::overwrite_existing);
        runSql(m_file, (std::string("UPDATE blob SET data = CAST(") + damage +
                        " AS BLOB) WHERE id = " + rows)
                           .c_str());
        session::Session session(m_file, {}, "test");
        EXPECT_EQ(outcomeOf([&] { values(session); }).code, ErrorCode::Damaged) << damage;
        outcomeOf([&] {
            fill(session, "third", 1);
            cleanUp(session);
        });
        EXPECT_EQ(outcomeOf([&] { values(session); }).code, ErrorCode::Damaged) << damage;
    }
    // Beside a whole blob a sparse one says nothing.
    std::filesystem::copy_file(good, m_file, std::filesystem::copy_options::overwrite_existing);
    runSql(m_file, "INSERT INTO blob SELECT -id, x'00' FROM blob WHERE id > 0");
    session::Session session(m_file, {}, "test");
    EXPECT_EQ(values(session), before);
    session.history().vacuum();
    EXPECT_EQ(values(session), before);
    const char* const sparse = "SELECT count(*) FROM blob WHERE id < 0";
    EXPECT_EQ(numberIn(m_file, sparse), numberIn(good, sparse));
}

}  // namespace
}  // namespace tarvo::engine
