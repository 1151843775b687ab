#include "core/creationsettings.h"
#include "core/databasecopy.h"
#include "core/newdatabase.h"
#include "core/outputplace.h"
#include "files/place.h"
#include "tests/engine/killedwriter.h"
#include "tests/files/foldersyncs.h"
#include "tests/qrb/library.h"

#include <cmath>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

// A source with attributes of every kind, and what must come back from copies of it.
class Copy : public LibraryTest {
protected:
    struct Point {
        double p[2] = {};
        std::uint8_t kind = 0;
        double fine = 0;  // needs more digits than single precision has
        double raw = 0;   // any double
        double part[3] = {};
        std::uint8_t same = 0;  // one value for the whole file
        bool operator==(const Point&) const = default;
    };
    using Table = std::map<std::uint64_t, Point>;  // by point id

    Copy() : m_context("OFF", ""), m_source(m_context) {
        CreateSettings settings(m_context);
        settings.primaryAttribute = attribute("p", -1000, 1000, 0.01, 2);
        settings.chunkSize = 100;
        settings.compressionLevel = 30;
        m_source.create(file("source.qrbx"), settings);
        TransactionGuard transaction(m_source.transactions(), "Begin", "tests");
        auto& attributes = m_source.pointAttributes();
        attributes.add(attribute("kind", 0, 200, 1));
        attributes.add(attribute("fine", -1e6, 1e6, 1e-6));
        attributes.add(attribute("raw", -1e300, 1e300, 0));
        auto part = attribute("part", -5, 5, 0.5, 3);
        part.invalidValue = -5;
        attributes.add(part);
        auto same = attribute("same", 0, 9, 1);
        same.storageClass = PointAttribute::CONSTANT;
        attributes.add(same);
        std::vector<Point> points(3000);
        std::vector<std::uint64_t> ids(points.size());
        for (std::size_t i = 0; i < points.size(); ++i) {
            const auto n = static_cast<double>(i);
            points[i] = {{std::fmod(n * 37, 2000) / 4 - 250, n / 4},
                         std::uint8_t(i % 7),
                         std::round(n * 333.3333337e6) / 1e6,
                         std::sqrt(n) * 1e200,
                         {double(i % 5), -5, 0.5},
                         4};
            ids[i] = 7 + 3 * i;
        }
        auto query = m_source.insert();
        bind(query, points[0]);
        query.bind("tarvo.id", DataType::UINT64, ids.data(), 8);
        EXPECT_EQ(query.next(3000), 3000u);
        query.close();
        m_source.metaData().set("one", "{\"a\": 1}");
        m_source.metaData().set("two", "plain");
        transaction.commit();
        for (std::size_t i = 0; i < points.size(); ++i)
            m_table[ids[i]] = points[i];
    }

    template <typename Query>
    static void bind(Query& query, Point& point) {
        query.bind("p", DataType::DOUBLE, point.p, sizeof(Point));
        query.bind("kind", DataType::UINT8, &point.kind, sizeof(Point));
        query.bind("fine", DataType::DOUBLE, &point.fine, sizeof(Point));
        query.bind("raw", DataType::DOUBLE, &point.raw, sizeof(Point));
        query.bind("part", DataType::DOUBLE, point.part, sizeof(Point));
        query.bind("same", DataType::UINT8, &point.same, sizeof(Point));
    }

    static Table read(const qrb::Pointcloud& cloud, const std::string& filter = {}) {
        Table table;
        Point point;
        std::uint64_t id = 0;
        auto query = cloud.select(filter);
        bind(query, point);
        query.bind("tarvo.id", DataType::UINT64, &id, 8);
        while (query.next(1))
            table[id] = point;
        return table;
    }

    core::Selection everything() const {
        core::Selection result;
        result.attributes = m_source.pointAttributes().list();
        result.metaData = m_source.metaData().list();
        return result;
    }

    // A copy that is published, opened again.
    std::unique_ptr<qrb::Pointcloud> copied(const core::Selection& what,
                                            const CreateSettings& settings) {
        core::NewDatabase target(m_context, file("target.qrbx"), true);
        target.create(settings);
        TransactionGuard transaction(target.cloud().transactions(), "Copy", "tests");
        copyDatabase(m_source, target.cloud(), what);
        transaction.commit();
        target.publish();
        auto cloud = std::make_unique<qrb::Pointcloud>(m_context);
        cloud->open(file("target.qrbx"), OpenSettings(m_context));
        return cloud;
    }

    CreateSettings settings() const { return core::creationSettings(m_source).value(); }

    qrb::Context m_context;
    qrb::Pointcloud m_source;
    Table m_table;
};

TEST_F(Copy, HoldsAllThatTheSourceHolds) {
    const auto cloud = copied(everything(), settings());
    EXPECT_TRUE(read(*cloud) == m_table);
    EXPECT_EQ(cloud->pointAttributes().list(), m_source.pointAttributes().list());
    for (const std::string& name : m_source.pointAttributes().list())
        EXPECT_EQ(cloud->pointAttributes().get(name).toJson(),
                  m_source.pointAttributes().get(name).toJson());
    EXPECT_EQ(cloud->metaData().get("one"), "{\"a\": 1}");
    EXPECT_EQ(cloud->metaData().get("two"), "plain");
    EXPECT_EQ(core::creationSettings(*cloud)->compressionLevel, 30);
    EXPECT_NE(cloud->getUuid(), m_source.getUuid());
}

TEST_F(Copy, HasTheDefinitionsAndLevelsOfDetailThatTheSourceHasNow) {
    {
        TransactionGuard transaction(m_source.transactions(), "Detail", "tests");
        PointAttribute primary = m_source.pointAttributes().get("p");
        primary.title = "Where it is";
        m_source.pointAttributes().put(primary);
        m_source.management().setLodMode(2);
        m_source.management().setChunkSizeLOD(3);
        transaction.commit();
    }
    const auto cloud = copied(everything(), settings());
    EXPECT_EQ(cloud->pointAttributes().get("p").title, "Where it is");
    EXPECT_EQ(cloud->management().getLodMode(), 2u);
    EXPECT_EQ(cloud->management().getChunkSizeLOD(), 3u);
    EXPECT_TRUE(read(*cloud) == m_table);
    // What a copy is made with is what it has from its first transaction on.
    const CreateSettings now = settings();
    EXPECT_EQ(now.lodMode, 2u);
    EXPECT_EQ(now.chunkSizeLOD, 3u);
    EXPECT_EQ(now.primaryAttribute.title, "Where it is");
    EXPECT_EQ(now.chunkSize, 100u);
    EXPECT_EQ(now.compressionLevel, 30);
}

TEST_F(Copy, HoldsOnlyWhatIsSelected) {
    core::Selection what = everything();
    what.filter = "kind == 3";
    what.metaData = {"two"};
    EXPECT_TRUE(read(*copied(what, settings())) == read(m_source, "kind == 3"));

    IndexNode root;
    m_source.stat().index(root);
    ASSERT_FALSE(root.children.empty());
    const IndexNode* leaf = &root;
    while (!leaf->children.empty())
        leaf = &leaf->children.front();
    what.filter.clear();
    what.nodes = {leaf->id};
    const auto cloud = copied(what, settings());
    EXPECT_EQ(read(*cloud).size(), static_cast<std::size_t>(leaf->pointCountNode));
    EXPECT_EQ(cloud->metaData().list(), std::vector<std::string>{"two"});

    what.filter = "kind == 3";
    const auto both = read(*copied(what, settings()));
    EXPECT_LT(both.size(), static_cast<std::size_t>(leaf->pointCountNode));
    EXPECT_GT(both.size(), 0u);
    for (const auto& [id, point] : both)
        EXPECT_EQ(point.kind, 3) << id;

    what.filter.clear();
    what.nodes.reset();
    what.attributes = {"p"};  // the points are numbered anew
    const auto bare = copied(what, settings());
    EXPECT_EQ(bare->pointAttributes().list(), (std::vector<std::string>{"p", "tarvo.id"}));
    EXPECT_EQ(bare->inspect(2).find("\"kind\""), std::string::npos);
}

TEST_F(Copy, TakesTheDefinitionsOfTheTarget) {
    CreateSettings coarse = settings();
    coarse.primaryAttribute.resolution = 1;
    const Table table = read(*copied(everything(), coarse));
    ASSERT_EQ(table.size(), m_table.size());
    for (const auto& [id, point] : m_table)
        EXPECT_NEAR(table.at(id).p[0], point.p[0], 0.5);

    CreateSettings narrow = settings();
    narrow.primaryAttribute.maximumValue = 10;
    EXPECT_THROW(copied(everything(), narrow), qrb::Error);

    core::Selection what = everything();
    std::erase(what.attributes, "p");
    EXPECT_NE(failure([&] { copied(what, settings()); }, 0).find("primary attribute \"p\""),
              std::string::npos);
}

TEST_F(Copy, CancelledOrFailedLeavesTheFileThatWasThere) {
    copied(everything(), settings())->close();
    const auto size = std::filesystem::file_size(file("target.qrbx"));
    const auto cancelled = [&] {
        core::NewDatabase target(m_context, file("target.qrbx"), true);
        target.create(settings());
        TransactionGuard transaction(target.cloud().transactions(), "Copy", "tests");
        copyDatabase(m_source, target.cloud(), everything(),
                     [](int) { throw std::runtime_error("Cancelled."); });
    };
    EXPECT_THROW(cancelled(), std::runtime_error);
    EXPECT_EQ(std::filesystem::file_size(file("target.qrbx")), size);
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(m_folder))
        files += entry.path().filename().string().find("target") == 0 ? 1 : 0;
    EXPECT_EQ(files, 1u);
    EXPECT_TRUE(read(m_source) == m_table);
}

class NewDatabases : public Copy {
protected:
    void make(const std::string& name, bool overwrite) const {
        core::NewDatabase target(m_context, file(name), overwrite);
        target.create(settings());
        target.publish();
    }
    std::string refusal(const std::string& name, bool overwrite) const {
        return failure([&] { make(name, overwrite); }, 0);
    }
    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(file(name)) << text;
        return file(name);
    }
    std::string uuid(const std::string& name) const {
        qrb::Pointcloud cloud(m_context);
        cloud.open(file(name), OpenSettings(m_context));
        return cloud.getUuid();
    }
    std::set<std::string> names() const {
        std::set<std::string> result;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder))
            result.insert(entry.path().filename().string());
        return result;
    }
};

TEST_F(NewDatabases, ReplaceNothingButDatabases) {
    write("there", "text");
    for (const bool overwrite : {false, true}) {
        const std::string text = refusal("there", overwrite);
        EXPECT_NE(text.find("exists already, and is not a database"), std::string::npos) << text;
        EXPECT_EQ(text.find("--overwrite"), std::string::npos) << text;
        EXPECT_NE(refusal(".", overwrite).find("is a folder"), std::string::npos);
        EXPECT_NE(refusal("no/such.qrbx", overwrite).find("folder"), std::string::npos);
    }
    EXPECT_EQ(std::filesystem::file_size(file("there")), 4u);
    failure([&] { core::NewDatabase(m_context, "", true); }, 0);
    EXPECT_NE(refusal(std::string(250, 'x'), true).find("too long"), std::string::npos);

    make("a.qrbx", true);
    const std::string first = uuid("a.qrbx");
    EXPECT_NE(refusal("a.qrbx", false).find("exists already."), std::string::npos);
    EXPECT_EQ(uuid("a.qrbx"), first);
    std::filesystem::permissions(file("a.qrbx"), std::filesystem::perms(0600));
    std::filesystem::create_symlink("a.qrbx", file("link"));
    make("link", true);
    EXPECT_NE(uuid("a.qrbx"), first);
    EXPECT_TRUE(std::filesystem::is_symlink(file("link")));
    EXPECT_EQ(std::filesystem::status(file("a.qrbx")).permissions(), std::filesystem::perms(0600));
    EXPECT_EQ(names(), (std::set<std::string>{"a.qrbx", "link", "source.qrbx", "there"}));
}

TEST_F(NewDatabases, RefuseAtOnceWhatWouldFailAtTheEnd) {
    const auto begin = [&](const std::string& name, bool overwrite) {
        return failure([&] { core::NewDatabase(m_context, name, overwrite, "Advice."); }, 0);
    };
    EXPECT_EQ(begin("", true), "The new database has no name.\nGive the name of a file.");
    EXPECT_EQ(begin(file(std::string(241, 'x')), true),
              "The name of the new database is too long: it has 241 bytes of at most 240.\n");
    core::NewDatabase(m_context, file(std::string(240, 'x')), true);
    make("a.qrbx", false);
    EXPECT_EQ(begin(file("a.qrbx"), false),
              "The file \"" + file("a.qrbx") + "\" exists already.\nAdvice.");
    EXPECT_EQ(begin(file("."), true),
              "\"" + file(".") + "\" is a folder.\nGive the name of a file in it.");
    qrb::Pointcloud other(m_context);
    other.open(file("a.qrbx"), OpenSettings(m_context));
    const std::string busy = "The file \"" + file("a.qrbx") +
                             "\" is not replaced: it is being "
                             "changed.\n";
    {
        TransactionGuard transaction(other.transactions(), "Pending", "tests");
        EXPECT_EQ(begin(file("a.qrbx"), true).find(busy), 0u);
    }
    // One that is done in a moment is waited for.
    other.transactions().begin("Moment", "tests");
    std::thread moment([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(400));
        other.transactions().rollback();
    });
    EXPECT_NO_THROW(core::NewDatabase(m_context, file("a.qrbx"), true));
    moment.join();
    // What came there meanwhile, by its kind.
    const auto publish = [&](bool overwrite, const std::function<void()>& meanwhile) {
        core::NewDatabase target(m_context, file("new.qrbx"), overwrite);
        target.create(settings());
        meanwhile();
        return failure([&] { target.publish(); }, 0);
    };
    const auto text = [&] { write("new.qrbx", "text"); };
    const auto database = [&] { make("new.qrbx", true); };
    const std::string place = "The file \"" + file("new.qrbx") + "\" exists already";
    EXPECT_EQ(publish(true, text).find(place + ", and is not a database."), 0u);
    std::filesystem::remove(file("new.qrbx"));
    EXPECT_EQ(publish(false, text).find(place + ": somebody made it meanwhile."), 0u);
    std::filesystem::remove(file("new.qrbx"));
    EXPECT_EQ(publish(false, database).find(place + ": somebody made it meanwhile."), 0u);
    EXPECT_EQ(names(), (std::set<std::string>{"a.qrbx", "new.qrbx", "source.qrbx"}));
}

// What a program that was killed has left, and what a link leads to that is not there yet.
TEST_F(NewDatabases, TakeTheirPlaceInOrder) {
    const pid_t child = ::fork();
    if (child == 0) {
        std::ofstream(files::temporaryNameFor(file("a.qrbx"))) << "half";
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    ASSERT_EQ(names().size(), 2u);
    {
        const core::NewDatabase target(m_context, file("a.qrbx"), false);
        EXPECT_EQ(names(), std::set<std::string>{"source.qrbx"});
    }
    std::filesystem::create_symlink("later.qrbx", file("link"));
    make("link", false);
    EXPECT_EQ(names(), (std::set<std::string>{"later.qrbx", "link", "source.qrbx"}));
    EXPECT_TRUE(std::filesystem::is_symlink(file("link")));
    // A circle of links is no place, nor is it replaced.
    std::filesystem::create_symlink("circle", file("circle"));
    for (const bool overwrite : {false, true})
        EXPECT_NE(refusal("circle", overwrite).find("exists already, and is not a database"),
                  std::string::npos);
    EXPECT_TRUE(std::filesystem::is_symlink(file("circle")));
    // The journal of one that was removed goes for good before the new one comes.
    std::filesystem::remove(file("later.qrbx"));
    write("later.qrbx-journal", "j");
    core::NewDatabase target(m_context, file("later.qrbx"), false);
    target.create(settings());
    folderSyncs() = {};
    lastSyncedNames().clear();
    target.publish();
    EXPECT_EQ(folderSyncs().count, 2);
    EXPECT_TRUE(lastSyncedNames().contains("later.qrbx"));
    EXPECT_FALSE(lastSyncedNames().contains("later.qrbx-journal"));
    // A sync that fails is told as an error of the layer.
    core::NewDatabase again(m_context, file("later.qrbx"), true);
    again.create(settings());
    folderSyncs() = {0, 1};
    EXPECT_NE(failure([&] { again.publish(); }, 0).find("could not be synced"), std::string::npos);
    folderSyncs() = {};
}

TEST_F(NewDatabases, BySchemaHaveWhatItMarksOptionalOnlyWhereThatIsAsked) {
    const char* const schema =
        R"({"identifier":"own","extension":"own","attributes":["tarvo.range?"],"metadata":[]})";
    for (const bool optionals : {false, true}) {
        core::NewDatabase target(m_context, file("schema.qrbx"), true);
        target.create(settings(), schema, optionals);
        EXPECT_EQ(target.cloud().pointAttributes().exists("tarvo.range"), optionals);
        target.publish();
    }
}

TEST_F(NewDatabases, DamagedOnesAreLeftToTheUser) {
    make("a.qrbx", false);
    const auto size = std::filesystem::file_size(file("a.qrbx"));
    std::fstream stream(file("a.qrbx"), std::ios::in | std::ios::out | std::ios::binary);
    stream.seekp(200);  // behind the header
    stream << std::string(size - 200, 'x');
    stream.close();
    EXPECT_NE(refusal("a.qrbx", true).find("Remove it by hand"), std::string::npos);
    EXPECT_EQ(std::filesystem::file_size(file("a.qrbx")), size);
}

TEST_F(NewDatabases, DoNotReplaceWhatIsBeingChanged) {
    make("a.qrbx", false);
    qrb::Pointcloud other(m_context);
    other.open(file("a.qrbx"), OpenSettings(m_context));
    core::NewDatabase target(m_context, file("a.qrbx"), true);
    target.create(settings());
    {
        TransactionGuard transaction(other.transactions(), "Pending", "tests");
        other.metaData().set("mine", "1");
        // Both at the begin, before there is work to lose, and at the end.
        EXPECT_NE(refusal("a.qrbx", true).find("is being changed"), std::string::npos);
        EXPECT_NE(failure([&] { target.publish(); }, 0).find("is being changed"),
                  std::string::npos);
        transaction.commit();
    }
    EXPECT_EQ(other.metaData().get("mine"), "1");
    make("a.qrbx", true);
    EXPECT_NE(uuid("a.qrbx"), other.getUuid());
}

TEST_F(NewDatabases, SurviveAPowerCutAndTakeEachPlaceOnce) {
    make("new.qrbx", false);
    EXPECT_TRUE(lastSyncedNames().contains("new.qrbx"));
    lastSyncedNames().clear();
    make("new.qrbx", true);
    EXPECT_TRUE(lastSyncedNames().contains("new.qrbx"));

    for (const bool overwrite : {false, true}) {
        std::filesystem::remove(file("new.qrbx"));
        core::NewDatabase target(m_context, file("new.qrbx"), overwrite);
        target.create(settings());
        write("new.qrbx", "somebody was faster");
        failure([&] { target.publish(); }, 0);
        EXPECT_EQ(std::filesystem::file_size(file("new.qrbx")), 19u);
    }
    EXPECT_EQ(names(), (std::set<std::string>{"new.qrbx", "source.qrbx"}));
}

// A journal that a killed writer has left belongs to the old database, whether that is there or
// not.
TEST_F(NewDatabases, AreNotDamagedByTheJournalOfAnOldOne) {
    for (const bool removed : {true, false}) {
        make("a.qrbx", true);
        const std::string old = file("a.qrbx");
        tarvo::testing::leaveJournal(old);
        ASSERT_TRUE(names().contains("a.qrbx-journal"));
        if (removed)
            std::filesystem::remove(old);
        make("a.qrbx", !removed);
        qrb::Pointcloud cloud(m_context);
        cloud.open(old, OpenSettings(m_context));
        EXPECT_EQ(cloud.transactions().list().size(), 1u);
        EXPECT_FALSE(cloud.pointAttributes().list().empty());
        cloud.close();
        EXPECT_EQ(names(), (std::set<std::string>{"a.qrbx", "source.qrbx"}));
        // The library's own way to make one.
        std::filesystem::rename(old, file("b.qrbx"));
        write("c.qrbx-journal", std::string(100'000, 'j'));
        qrb::Pointcloud(m_context).create(file("c.qrbx"), settings());
        EXPECT_FALSE(uuid("c.qrbx").empty());
        std::filesystem::remove(file("b.qrbx"));
        std::filesystem::remove(file("c.qrbx"));
    }
}

// Whatever wrote the journal, and in whatever way the new one came to its place.
TEST_F(NewDatabases, HoldWhatWasCopiedThoughAJournalLiesAtTheirPlace) {
    const auto foreign = [&] {
        make("old.qrbx", true);
        tarvo::testing::leaveJournal(file("old.qrbx"));
        std::filesystem::remove(file("old.qrbx"));
        std::filesystem::rename(file("old.qrbx-journal"), file("target.qrbx-journal"));
    };
    const std::function<void()> journals[] = {
        foreign, [&] { write("target.qrbx-journal", std::string(100'000, 'j')); },
        [&] { write("target.qrbx-journal", ""); }};
    for (const auto& leave : journals) {
        leave();
        core::NewDatabase target(m_context, file("target.qrbx"), false);
        target.create(settings());
        TransactionGuard transaction(target.cloud().transactions(), "Copy", "tests");
        copyDatabase(m_source, target.cloud(), everything());
        transaction.commit();
        const std::string made = target.cloud().getUuid();
        target.publish();
        EXPECT_EQ(names(), (std::set<std::string>{"source.qrbx", "target.qrbx"}));
        qrb::Pointcloud cloud(m_context);
        cloud.open(file("target.qrbx"), OpenSettings(m_context));
        EXPECT_EQ(cloud.getUuid(), made);
        EXPECT_TRUE(read(cloud) == m_table);
        cloud.close();
        std::filesystem::remove(file("target.qrbx"));
    }
}

TEST_F(NewDatabases, NoOutputTakesThePlaceOfADatabaseOrAnInput) {
    make("a.qrbx", false);
    std::filesystem::create_hard_link(file("a.qrbx"), file("hard"));
    std::filesystem::create_symlink("a.qrbx", file("soft"));
    const std::string input = write("input.csv", "x,y,z");
    std::filesystem::create_symlink("input.csv", file("link.csv"));
    const auto before = std::filesystem::file_size(file("a.qrbx"));
    for (const char* const name : {"a.qrbx", "hard", "soft", "source.qrbx"}) {
        EXPECT_NE(failure([&] { core::checkOutputPlace(m_context, file(name)); }, 0)
                      .find("is a database"),
                  std::string::npos);
        EXPECT_NE(
            failure([&] { m_source.changelog().exportToTextfile(file(name)); }, QRB_ERROR_FILE)
                .find("is a database"),
            std::string::npos);
        EXPECT_THROW(qrb::Context("TRACE", file(name)), qrb::Error);
    }
    const std::string first = write("first.csv", "x");
    for (const char* const name : {"input.csv", "link.csv"})
        EXPECT_NE(failure(
                      [&] {
                          core::checkOutputPlace(m_context, file(name), {first, input});
                      },
                      0)
                      .find("is being read"),
                  std::string::npos);
    EXPECT_NE(failure([&] { core::checkOutputPlace(m_context, file("a.qrbx-journal")); }, 0)
                  .find("belongs to a database"),
              std::string::npos);
    for (const char* begin : {"LASF", "ASTM-E57"}) {
        const std::string scan = write("scan", begin + std::string(400, '\0'));
        EXPECT_NE(failure([&] { core::checkOutputPlace(m_context, scan); }, 0).find("is a scan"),
                  std::string::npos);
    }
    core::checkOutputPlace(m_context, file("input.csv"));
    core::checkOutputPlace(m_context, file("new.csv"), {input});
    EXPECT_EQ(std::filesystem::file_size(file("a.qrbx")), before);
    EXPECT_EQ(read(m_source).size(), m_table.size());

    EXPECT_NE(
        failure([&] { m_source.changelog().exportToTextfile(file("no/file")); }, QRB_ERROR_FILE)
            .find("\nIts folder must be there"),
        std::string::npos);
    m_source.changelog().exportToTextfile(file("input.csv"));
    EXPECT_GT(std::filesystem::file_size(file("input.csv")), 5u);
}

}  // namespace
