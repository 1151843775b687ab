// Threads that work on databases at the same time, each with a context of its own: no data race is
// found by the thread sanitizer, and no answer is damage or a fault of the library. A round is a
// process of its own. In the control its threads share a number without a lock.
#include "core/databasecopy.h"
#include "core/newdatabase.h"
#include "qrb/error.h"
#include "qrb/loader.h"
#include "qrb/pointcloud.h"
#include "tests/reliability/trial.h"
#include "tests/reliability/workfolder.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <algorithm>
#include <atomic>
#include <filesystem>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <thread>
#include <vector>

// Nothing here is to survive a power cut.
extern "C" __attribute__((visibility("default"))) int fsync(int) {
    return 0;
}
extern "C" __attribute__((visibility("default"))) int fdatasync(int) {
    return 0;
}

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;
using trial::Random;
namespace fs = std::filesystem;

constexpr std::uint32_t pointCount = 2000;
constexpr int turns = 6;  // of each thread in a round

// All threads work on either.
const char* const files[] = {"one.qrbx", "two.qrbx"};

// One of many contexts, on one file or another.
class User {
public:
    explicit User(std::uint64_t seed) : m_random(seed) {}

    std::uint64_t pick(std::uint64_t below) { return m_random() % below; }
    qrb::Pointcloud open() {
        qrb::Pointcloud cloud(m_context);
        OpenSettings settings(m_context);
        settings.cacheSize = pick(2) ? 1u << 16 : 8u << 20;
        cloud.open(files[pick(4) == 0], settings);
        return cloud;
    }
    void insert(const qrb::Pointcloud& cloud, std::uint32_t count) {
        std::vector<double> xyz(3 * count);
        for (double& value : xyz)
            value = static_cast<double>(pick(200'000)) / 1000 - 100;
        QueryInsert query = cloud.insert();
        query.bind("xyz", DataType::DOUBLE, xyz.data(), 24);
        query.next(count);
    }
    // Ends its work early, one time in some.
    Progress progress() {
        return [this](int) {
            if (pick(20) == 0)
                throw std::runtime_error("stop");
        };
    }

    void scan() {
        const qrb::Pointcloud cloud = open();
        std::vector<double> x(97);
        QuerySelect query = cloud.select(pick(2) ? "xyz[0] * 2 > xyz[1]" : "");
        query.bind("xyz[0]", DataType::DOUBLE, x.data(), 8);
        while (query.next(static_cast<std::uint32_t>(x.size())) > 0) {
        }
        IndexNode root;
        cloud.stat().index(root);
    }
    // Begins, changes and discards beside a scan of the same handle.
    void scanBesideChange() {
        const qrb::Pointcloud cloud = open();
        std::vector<double> x(97);
        QuerySelect query = cloud.select("xyz[2] > 0");
        query.bind("xyz[2]", DataType::DOUBLE, x.data(), 8);
        for (int page = 0; page < 4; ++page) {
            query.next(static_cast<std::uint32_t>(x.size()));
            try {
                TransactionGuard transaction(cloud.transactions(), "beside", "race");
                query.next(static_cast<std::uint32_t>(x.size()));
                insert(cloud, 50);
                (void)cloud.select("").next(1000);
                if (pick(2))
                    transaction.commit({}, progress());
            } catch (const qrb::Error&) {
                // Somebody else is writing.
            }
        }
    }
    void change() {
        const qrb::Pointcloud cloud = open();
        TransactionGuard transaction(cloud.transactions(), "change", "race");
        insert(cloud, 300);
        if (pick(2)) {
            cloud.management().setLodMode(static_cast<std::uint32_t>(1 + pick(2)));
            cloud.management().setChunkSizeLOD(static_cast<std::uint32_t>(pick(8)));
        }
        if (pick(2)) {
            const std::uint8_t value = 7;
            QueryFill fill = cloud.fill("xyz[0] > 50");
            fill.bind("kind", DataType::UINT8, &value);
            fill.next(1000);
        }
        transaction.commit({}, progress());
    }
    void keepUp() {
        const qrb::Pointcloud cloud = open();
        const std::vector<std::uint32_t> ids = cloud.transactions().list();
        if (pick(2))
            cloud.transactions().restore(ids[pick(ids.size())]);
        if (pick(3) == 0)
            cloud.management().finalize();
        cloud.management().vacuum(progress());
    }
    void describe() {
        const qrb::Pointcloud cloud = open();
        (void)cloud.inspect(static_cast<std::uint8_t>(1 + pick(5)));
        (void)cloud.metaData().list();
        (void)cloud.changelog();
    }
    void copyAll() {
        const qrb::Pointcloud cloud = open();
        core::NewDatabase made(m_context, "copy-" + std::to_string(m_random()) + ".qrbx", false);
        CreateSettings settings(m_context);
        settings.primaryAttribute = cloud.pointAttributes().get("xyz");
        settings.chunkSize = 100;
        made.create(settings);
        {
            TransactionGuard transaction(made.cloud().transactions(), "copy", "race");
            core::copyDatabase(cloud, made.cloud(), {"", {}, {"xyz", "kind"}, {}}, progress());
            transaction.commit();
        }
        made.publish();
    }
    void useRecords() {
        PointAttribute attribute;
        attribute.name = "a";
        for (int i = 0; i < 20; ++i) {
            PointAttribute other;
            other.fromJson(attribute.toJson());
            const qrb::Context context("", "");
            (void)qrb::Pointcloud(context).isOpen();
        }
    }

private:
    Random m_random;
    qrb::Context m_context{"", ""};
};

struct Work {
    const char* name;
    void (User::*run)();
};
constexpr Work works[] = {
    {"scan", &User::scan},        {"scan beside a change", &User::scanBesideChange},
    {"change", &User::change},    {"restore and vacuum", &User::keepUp},
    {"second scan", &User::scan}, {"reports", &User::describe},
    {"copy", &User::copyAll},     {"records", &User::useRecords}};

// How often each came to its end; in memory that the processes of the rounds share.
using Done = std::atomic<std::uint64_t>[std::size(works)];

void makeDatabase(const char* file) {
    const qrb::Context context("", "");
    CreateSettings settings(context);
    PointAttribute& xyz = settings.primaryAttribute;
    xyz.name = "xyz";
    xyz.length = 3;
    xyz.minimumValue = -100;
    xyz.maximumValue = 100;
    xyz.resolution = 0.001;
    xyz.storageClass = PointAttribute::VARIABLE;
    settings.chunkSize = 100;
    qrb::Pointcloud cloud(context);
    cloud.create(file, settings);
    TransactionGuard transaction(cloud.transactions(), "points", "race");
    PointAttribute kind;
    kind.name = "kind";
    kind.length = 1;
    kind.maximumValue = 9;
    kind.storageClass = PointAttribute::VARIABLE;
    cloud.pointAttributes().add(kind);
    User(1).insert(cloud, pointCount);
    transaction.commit();
}

// What is refused because others are at work is no fault.
bool isFault(const qrb::Error& error) {
    return error.code() == QRB_ERROR_DAMAGED || error.code() == QRB_ERROR_INTERNAL ||
           error.code() == QRB_ERROR_FORMAT || error.code() == QRB_ERROR_ARGUMENT;
}

int runThreads(const fs::path& folder, Random& random, Done& done, bool control) {
    fs::create_directories(folder);
    fs::current_path(folder);
    qrb::loadLibrary(QRBLIB_FILE);
    for (const char* const file : files)
        makeDatabase(file);
    std::atomic<bool> bad = false;
    std::uint64_t unguarded = 0;
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < std::size(works); ++i)
        threads.emplace_back([&, i, seed = random()] {
            User user(seed);
            for (int turn = 0; turn < turns; ++turn) {
                // Often: the locks of the library order most of what threads do.
                for (int i = 0; control && i < 2000; ++i) {
                    ++unguarded;
                    std::this_thread::yield();
                }
                try {
                    (user.*works[i].run)();
                    ++done[i];
                } catch (const qrb::Error& error) {
                    if (isFault(error)) {
                        bad = true;
                        std::cout << std::string(works[i].name) + ": " + error.what() + "\n" +
                                         error.details() + "\n"
                                  << std::flush;
                    }
                } catch (const std::runtime_error&) {
                    // Stopped by its own progress.
                }
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    fs::current_path("/");
    fs::remove_all(folder);
    qrb::freeLibrary();
    return bad ? 1 : 0;
}

int run(int argc, char** argv) {
    trial::Trial trial("race_trial", "works of threads", argc, argv);
    const trial::WorkFolder work("race");
    const fs::path folder = work.path();
    Done& done = *static_cast<Done*>(
        ::mmap(nullptr, sizeof(Done), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    while (trial.next(300)) {
        std::cout.flush();
        const ::pid_t child = ::fork();
        if (child == 0)
            std::exit(runThreads(folder, trial.random(), done, trial.isControl()));
        int status = 0;
        ::waitpid(child, &status, 0);
        trial.tried(std::size(works) * turns);
        if (WIFSIGNALED(status))
            trial.badInControlsToo("a process was ended by signal " +
                                   std::to_string(WTERMSIG(status)));
        else if (status != 0)
            trial.bad("a process ended with status " + std::to_string(status));
        fs::remove_all(folder);
    }
    for (std::size_t i = 0; i < std::size(works); ++i)
        trial.noteNeeded(done[i], std::string("x ") + works[i].name);
    return trial.finish();
}

}  // namespace

int main(int argc, char** argv) {
    return tarvo::trial::guarded(run, argc, argv);
}
