#include "tests/qrb/library.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

class Database : public LibraryTest {
protected:
    Database() : fileName(file("cloud.qrbx")) {}

    // An open database over "p" (three elements) with an attribute "n".
    void create(qrb::Pointcloud& cloud) {
        CreateSettings settings(cloud.context());
        settings.primaryAttribute = attribute("p", -10, 10, 0.01, 3);
        cloud.create(fileName, settings);
        TransactionGuard transaction(cloud.transactions(), "Begin", "tests");
        cloud.pointAttributes().add(attribute("n", 0, 1000, 1));
        transaction.commit();
    }
    static void insert(qrb::Pointcloud& cloud, std::uint32_t count) {
        TransactionGuard transaction(cloud.transactions(), "Insert", "tests");
        insertPending(cloud, count);
        transaction.commit();
    }
    static void insertPending(qrb::Pointcloud& cloud, std::uint32_t count) {
        std::vector<double> p(3 * count);
        std::vector<std::uint16_t> n(count);
        for (std::uint32_t i = 0; i < count; ++i) {
            n[i] = static_cast<std::uint16_t>(i % 1000);
            p[3 * i] = n[i] / 100.0;
            p[3 * i + 1] = -p[3 * i];
            p[3 * i + 2] = 5;
        }
        auto query = cloud.insert();
        query.bind("p", DataType::DOUBLE, p.data(), 24);
        query.bind("n", DataType::UINT16, n.data(), 2);
        ASSERT_EQ(query.next(count), count);
        query.close();
    }
    static std::uint64_t count(const qrb::Pointcloud& cloud, const std::string& filter = {}) {
        auto query = cloud.select(filter);
        std::uint64_t total = 0;
        while (const std::uint32_t got = query.next(1000000)) {
            total += got;
        }
        return total;
    }

    // 0: nothing was thrown.
    template <typename Call>
    static std::int32_t codeOf(Call&& call) {
        try {
            call();
        } catch (const qrb::Error& error) {
            return error.code();
        }
        return 0;
    }

    const std::string fileName;
};

TEST_F(Database, WhatWasInsertedIsSelectedAfterReopening) {
    const qrb::Context context("OFF", "");
    EXPECT_FALSE(context.databaseFileTypeCheck(fileName));
    std::string uuid;
    {
        qrb::Pointcloud cloud(context);
        EXPECT_FALSE(cloud.isOpen());
        create(cloud);
        insert(cloud, 5000);
        uuid = cloud.getUuid();
    }
    EXPECT_TRUE(context.databaseFileTypeCheck(fileName));
    qrb::Pointcloud cloud(context);
    cloud.open(fileName, OpenSettings(context));
    EXPECT_EQ(cloud.getUuid(), uuid);
    EXPECT_EQ(cloud.pointAttributes().list(), (std::vector<std::string>{"p", "tarvo.id", "n"}));
    EXPECT_EQ(cloud.pointAttributes().primaryAttributeName(), "p");
    EXPECT_THROW(cloud.pointAttributes().get("missing"), qrb::Error);
    EXPECT_EQ(count(cloud), 5000u);
    EXPECT_EQ(count(cloud, "n < 10"), 50u);
    EXPECT_THROW(count(cloud, "n <"), qrb::Error);

    auto query = cloud.select("n == 123");
    double y = 0;
    std::int64_t n = 0;
    query.bind("p[1]", DataType::DOUBLE, &y, 8);
    query.bind("n", DataType::INT64, &n, 8);
    ASSERT_EQ(query.next(1), 1u);
    EXPECT_EQ(y, -1.23);
    EXPECT_EQ(n, 123);

    IndexNode root;
    cloud.stat().index(root);
    EXPECT_EQ(root.pointCountTotal, 5000);
    const IndexNode alone = cloud.stat().root();
    EXPECT_EQ(std::tie(alone.id, alone.revision, alone.pointCountTotal, alone.pointCountNode),
              std::tie(root.id, root.revision, root.pointCountTotal, root.pointCountNode));
    EXPECT_FALSE(root.children.empty());
    EXPECT_TRUE(alone.children.empty());
    double low[3] = {};
    double high[3] = {};
    cloud.stat().minimum(root.id, "p", DataType::DOUBLE, low, false);
    cloud.stat().maximum(root.id, "p", DataType::DOUBLE, high, true);
    EXPECT_EQ(low[1], -9.99);
    EXPECT_EQ(high[0], 9.99);
    EXPECT_EQ(count(cloud), 5000u);
    EXPECT_EQ(cloud.select(std::vector<std::uint32_t>{}, "").next(10), 0u);
    cloud.close();
    EXPECT_FALSE(cloud.isOpen());
}

TEST_F(Database, TransactionsAreListedDescribedAndRestored) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    create(cloud);
    insert(cloud, 100);
    auto& transactions = cloud.transactions();
    EXPECT_EQ(transactions.list(), (std::vector<std::uint32_t>{1, 2, 3}));
    EXPECT_EQ(transactions.current(), 3u);
    const Transaction details = transactions.details(3);
    EXPECT_EQ(details.id, 3u);
    EXPECT_EQ(details.title, "Insert");
    EXPECT_EQ(details.agent, "tests");
    EXPECT_NE(details.qrb.find("\nQRB Interface 2.5.2"), std::string::npos) << details.qrb;
    EXPECT_LE(details.start, details.stop);
    EXPECT_THROW(transactions.details(99), qrb::Error);
    EXPECT_THROW(cloud.metaData().set("a", "1"), qrb::Error) << "no transaction is pending";
}

TEST_F(Database, EmptyMetaDataItemCostsNoTransaction) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    create(cloud);
    {
        TransactionGuard transaction(cloud.transactions(), "Empty", "tests");
        cloud.metaData().set("own.empty", "");
        cloud.metaData().set("own.text", "kept");
        transaction.commit();
    }
    cloud.close();
    cloud.open(fileName, OpenSettings(context));
    EXPECT_TRUE(cloud.metaData().exists("own.empty"));
    EXPECT_EQ(cloud.metaData().get("own.empty", "default"), "");
    EXPECT_EQ(cloud.metaData().get("own.text"), "kept");
    cloud.management().vacuum();
    EXPECT_EQ(cloud.metaData().get("own.empty", "default"), "");
}

TEST_F(Database, RestoreGoesBackAndForth) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    create(cloud);
    insert(cloud, 100);
    cloud.transactions().restore(2);
    EXPECT_EQ(count(cloud), 0u);
    EXPECT_EQ(cloud.transactions().current(), 2u);
    cloud.transactions().restore(3);
    EXPECT_EQ(count(cloud), 100u);
    EXPECT_THROW(cloud.transactions().restore(9), qrb::Error);
    // On from an older state: the later one stays as it was.
    cloud.transactions().restore(2);
    insert(cloud, 7);
    EXPECT_EQ(count(cloud), 7u);
    EXPECT_THROW(
        {
            TransactionGuard transaction(cloud.transactions(), "Pending", "tests");
            cloud.transactions().restore(3);
        },
        qrb::Error);
    cloud.transactions().restore(3);
    EXPECT_EQ(count(cloud), 100u);
    EXPECT_EQ(cloud.transactions().list(), (std::vector<std::uint32_t>{1, 2, 3, 4}));
}

TEST_F(Database, TheGuardRollsBackOnEveryExitButTheCommit) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    create(cloud);
    struct Stop : std::exception {};
    EXPECT_THROW(
        {
            TransactionGuard transaction(cloud.transactions(), "Insert", "tests");
            insertPending(cloud, 1000);
            EXPECT_TRUE(cloud.transactions().pending());
            transaction.commit({}, [](int) { throw Stop(); });
        },
        Stop);
    EXPECT_FALSE(cloud.transactions().pending());
    EXPECT_EQ(cloud.transactions().list().size(), 2u);
    EXPECT_EQ(count(cloud), 0u);
}

TEST_F(Database, MetaDataItemsComeBackAsTheyWereWritten) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    create(cloud);
    auto& metaData = cloud.metaData();
    EXPECT_TRUE(metaData.list().empty());
    TransactionGuard transaction(cloud.transactions(), "Metadata", "tests");
    metaData.set("b.item", "{\"ü\": [1, 2]}");
    metaData.set("a.item", "2");
    EXPECT_THROW(metaData.set("", "{}"), qrb::Error);
    metaData.set("c.item", "no { JSON");
    EXPECT_EQ(metaData.get("c.item"), "no { JSON");
    metaData.remove("c.item");
    metaData.remove("a.item");
    transaction.commit();
    EXPECT_EQ(metaData.list(), std::vector<std::string>{"b.item"});
    EXPECT_EQ(metaData.get("b.item"), "{\"ü\": [1, 2]}");
    EXPECT_EQ(metaData.get("a.item", "none"), "none");
    EXPECT_FALSE(metaData.exists("a.item"));
}

TEST_F(Database, TakesNoTextThatIsNoUtf8) {
    const qrb::Context context("OFF", "");
    qrb::Pointcloud cloud(context);
    create(cloud);
    auto& transactions = cloud.transactions();
    for (const std::string bad : {"gr\xf6n", "\xc3", "\xed\xa0\x80"}) {
        for (const int which : {0, 1, 2, 3}) {
            std::string texts[4] = {"a", "b", "c", "{}"};
            texts[which] = bad;
            EXPECT_EQ(codeOf([&] { transactions.begin(texts[0], texts[1], texts[2], texts[3]); }),
                      QRB_ERROR_ARGUMENT);
        }
        std::string PointAttribute::*const fields[] = {
            &PointAttribute::title, &PointAttribute::tags, &PointAttribute::description,
            &PointAttribute::unitSymbol, &PointAttribute::namedValues};
        TransactionGuard guard(transactions, "Größe", "tests");
        for (const auto field : fields) {
            PointAttribute added = attribute("m", 0, 1000, 1), put = attribute("n", 0, 1000, 1);
            added.*field = put.*field = bad;
            EXPECT_EQ(codeOf([&] { cloud.pointAttributes().add(added); }), QRB_ERROR_ARGUMENT);
            EXPECT_EQ(codeOf([&] { cloud.pointAttributes().put(put); }), QRB_ERROR_ARGUMENT);
            CreateSettings settings(context);
            settings.primaryAttribute.*field = bad;
            qrb::Pointcloud other(context);
            EXPECT_EQ(codeOf([&] { other.create(fileName + "2", settings); }), QRB_ERROR_ARGUMENT);
        }
        EXPECT_EQ(codeOf([&] { cloud.metaData().set(bad, "1"); }), QRB_ERROR_ARGUMENT);
        EXPECT_EQ(codeOf([&] { cloud.metaData().set("a", "\"" + bad + "\""); }),
                  QRB_ERROR_ARGUMENT);
        EXPECT_EQ(codeOf([&] { cloud.changelog().appendMessage(bad); }), QRB_ERROR_ARGUMENT);
    }
    EXPECT_EQ(transactions.list().size(), 2u);
    EXPECT_EQ(cloud.pointAttributes().get("n").title, "n");
}

TEST_F(Database, WritesItsCallsAndFailuresToTheLogFile) {
    const std::string logName = fileName + ".log";
    const auto logged = [&logName] {
        std::ifstream in(logName);
        return std::string(std::istreambuf_iterator<char>(in), {});
    };
    {
        const qrb::Context context("TRACE", logName);
        qrb::Pointcloud cloud(context);
        EXPECT_THROW(cloud.open(fileName, OpenSettings(context)), qrb::Error);
    }
    EXPECT_NE(logged().find("TRACE qrb_pointcloud_open\n"), std::string::npos) << logged();
    EXPECT_NE(logged().find("ERROR qrb_pointcloud_open: The file \"" + fileName), std::string::npos)
        << logged();
    // Another context goes on behind what is there.
    const std::string before = logged();
    {
        const qrb::Context context("TRACE", logName);
        EXPECT_FALSE(context.databaseFileTypeCheck(fileName));
    }
    EXPECT_EQ(logged().find(before), 0u);
    EXPECT_GT(logged().size(), before.size());
    std::filesystem::remove(logName);
    {
        const qrb::Context context("ERROR", logName);
        EXPECT_FALSE(context.databaseFileTypeCheck(fileName));
    }
    EXPECT_EQ(logged(), "");
    for (const char* level : {"TRACE", "debug", "Info", "WARNING", "error", "OFF", ""}) {
        EXPECT_NO_THROW(qrb::Context(level, "")) << level;
    }
    EXPECT_THROW(qrb::Context("LOUD", ""), qrb::Error);
    EXPECT_THROW(qrb::Context("TRACE", logName + "/not/there"), qrb::Error);
}

}  // namespace
