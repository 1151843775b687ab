// What a call that is interrupted leaves behind.

#include "qrb/loader.h"
#include "tests/qrb/library.h"

#include <functional>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

class Interruption : public LibraryTest {
protected:
    Interruption() {
        CreateSettings settings(m_context);
        settings.primaryAttribute = attribute("p", 0, 1e6, 1);
        settings.chunkMode = 1;
        settings.chunkSize = 100;
        settings.chunkSizeLOD = 0;
        m_cloud.create(file("cloud.qrbx"), settings);
        m_cloud.transactions().begin("Begin", "tests");
        m_cloud.pointAttributes().add(attribute("n", 0, 1000, 1));
        insert(0);
    }

    // 20,000 points in some two hundred leaves.
    void insert(double first, bool commits = true) {
        std::vector<double> p(20'000);
        for (std::size_t i = 0; i < p.size(); ++i) {
            p[i] = first + static_cast<double>(i);
        }
        if (!m_cloud.transactions().pending()) {
            m_cloud.transactions().begin("Insert", "tests");
        }
        auto query = m_cloud.insert();
        query.bind("p", DataType::DOUBLE, p.data(), 8);
        std::vector<std::uint16_t> n(p.size());
        for (std::size_t i = 0; i < n.size(); ++i) {
            n[i] = static_cast<std::uint16_t>(i % 1000);
        }
        query.bind("n", DataType::UINT16, n.data(), 2);
        query.next(static_cast<std::uint32_t>(p.size()));
        query.close();
        if (commits) {
            m_cloud.transactions().commit();
        }
    }
    std::uint64_t count(const std::string& filter = {}) const {
        auto query = m_cloud.select(filter);
        std::uint64_t total = 0;
        while (const std::uint32_t got = query.next(1'000'000)) {
            total += got;
        }
        return total;
    }
    // The work under a function that says stop when it is asked for the n-th time. True: it did.
    bool isInterrupted(int n, const std::function<void()>& work) const {
        int asked = 0;
        const qrb::InterruptGuard guard(m_context, [&] { return ++asked < n; });
        try {
            work();
        } catch (const qrb::Error& error) {
            EXPECT_EQ(error.code(), QRB_ERROR_CANCELLED) << error.what();
            EXPECT_EQ(asked, n);  // once is enough
            return true;
        }
        return false;
    }

    qrb::Context m_context{"OFF", ""};
    qrb::Pointcloud m_cloud{m_context};
};

TEST_F(Interruption, EndsEachCallThatReadsAndNoneAfterIt) {
    IndexNode root;
    const std::function<void()> reads[] = {
        [&] { (void)count("p % 7 == 3"); },  [&] { (void)count("p % 7 == 3 && n % 7 == 4"); },
        [&] { m_cloud.stat().index(root); }, [&] { m_cloud.stat().index(root, "p % 7 == 3"); },
        [&] { (void)m_cloud.inspect(2); },   [&] { (void)m_cloud.inspect(5); },
    };
    for (const auto& read : reads) {
        SCOPED_TRACE(&read - reads);
        EXPECT_TRUE(isInterrupted(1, read));
        EXPECT_TRUE(isInterrupted(5, read));
        EXPECT_FALSE(isInterrupted(1'000'000, read));
    }
    EXPECT_EQ(count(), 20'000u);
}

TEST_F(Interruption, LeavesNoQueryThatGoesOnBehindWhatItMissed) {
    auto query = m_cloud.select("p % 7 == 3");
    std::vector<double> p(1000);
    query.bind("p", DataType::DOUBLE, p.data(), 8);
    ASSERT_EQ(query.next(10), 10u);
    EXPECT_TRUE(isInterrupted(2, [&] {
        while (query.next(1000) > 0) {
        }
    }));
    try {
        query.next(1);
        FAIL() << "it went on";
    } catch (const qrb::Error& error) {
        EXPECT_EQ(error.code(), QRB_ERROR_STATE);
    }
}

// Wherever it is stopped, the transaction is pending and whole, or gone and whole.
TEST_F(Interruption, OfChangesLosesNothing) {
    int stops = 0;
    int n = 1;
    for (bool stopped = true; stopped && n < 100'000; n += n / 3 + 1) {
        SCOPED_TRACE(n);
        insert(100'000, false);
        auto coarser = m_cloud.pointAttributes().get("n");
        coarser.resolution = 2;
        stopped = isInterrupted(n, [&] { m_cloud.pointAttributes().put(coarser); }) ||
                  isInterrupted(n, [&] { m_cloud.transactions().commit(); });
        stops += stopped ? 1 : 0;
        EXPECT_EQ(m_cloud.transactions().pending(), stopped);
        EXPECT_EQ(count("p >= 100000"), 20'000u);
        if (stopped) {
            m_cloud.transactions().rollback();
            EXPECT_EQ(count(), 20'000u);
            EXPECT_EQ(m_cloud.pointAttributes().get("n").resolution, 1);
        }
    }
    EXPECT_GT(stops, 3);
    EXPECT_EQ(m_cloud.pointAttributes().get("n").resolution, 2);
    EXPECT_EQ(count(), 40'000u);
}

TEST_F(Interruption, MayCallNothingItself) {
    int refused = 0;
    {
        const qrb::InterruptGuard guard(m_context, [&] {
            try {
                (void)m_context.libraryName();
            } catch (const qrb::Error& error) {
                refused += error.code() == QRB_ERROR_STATE ? 1 : 0;
            }
            return true;
        });
        EXPECT_EQ(count("p % 7 == 3"), 2857u);
    }
    EXPECT_GT(refused, 0);
    // It ends with the guard.
    const int before = refused;
    EXPECT_EQ(count(), 20'000u);
    EXPECT_EQ(refused, before);
}

TEST_F(Interruption, CantBeSetByACallbackOfACall) {
    insert(100'000, false);
    int refused = 0;
    m_cloud.transactions().commit({}, [&](int) {
        try {
            const qrb::InterruptGuard guard(m_context, [] { return false; });
        } catch (const qrb::Error& error) {
            refused += error.code() == QRB_ERROR_STATE ? 1 : 0;
        }
    });
    EXPECT_GT(refused, 0);
}

}  // namespace
