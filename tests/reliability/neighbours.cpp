// Programs beside each other: two writers that know one file by different names, a vacuum, and two
// readers that look whether what they see is whole and of one moment. Nobody may be disturbed but
// by the words that the file is in use, or that what is being read was discarded by somebody, and
// every acknowledged commit must be there in the end. In every other round the file is one of
// version 1, which stays one, and a writer holds the lock of the first release: what it has open
// must not change. The control does without the writers' locks.
#include "tests/reliability/contents.h"
#include "tests/reliability/disk.h"
#include "tests/reliability/processes.h"
#include "tests/reliability/survey.h"
#include "tests/reliability/trial.h"
#include "tests/reliability/workfolder.h"

#include "qrb/error.h"
#include "qrb/loader.h"
#include "qrb/qrb.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace {

using namespace tarvo::trial;
namespace fs = std::filesystem;

constexpr auto roundTime = std::chrono::seconds(5);
constexpr std::uint64_t rounds = 4;

// Works on the file until the time is over; opens it anew now and then. What is done and what was
// wrong goes to the standard output.
class Neighbour {
public:
    Neighbour(std::string file, std::uint64_t seed) : m_file(std::move(file)), m_random(seed) {}

    template <typename Work>
    void run(Work work) {
        const auto end = std::chrono::steady_clock::now() + roundTime;
        std::optional<Survey> survey;
        while (std::chrono::steady_clock::now() < end) {
            try {
                if (!survey)
                    survey.emplace(m_file);
                work(*survey);
                if (m_random() % 8 == 0)
                    survey.reset();
            } catch (const tarvo::qrb::Error& error) {
                if (error.code() == QRB_ERROR_BUSY)
                    std::cout << "busy" << std::endl;
                else if (survey && wasDiscarded(error, *survey))
                    std::cout << "overtaken" << std::endl;
                else
                    std::cout << "wrong: " << error.what() << " " << error.details() << std::endl;
                survey.reset();
            }
        }
    }

    void write(std::uint32_t firstGroup) {
        run([&, group = firstGroup](Survey& survey) mutable {
            auto& transactions = survey.cloud().transactions();
            tarvo::qrb::pointcloud::TransactionGuard guard(transactions, "group", "trial");
            survey.addGroup(group);
            survey.setNumber("groups", survey.number("groups") + 1);
            guard.commit();
            ++group;
            std::cout << "did" << std::endl;
            if (m_random() % 5 == 0)
                survey.forgetOld();
        });
    }

    void read() {
        run([&](Survey& survey) {
            auto& transactions = survey.cloud().transactions();
            const std::uint32_t before = transactions.current();
            const std::uint64_t told = survey.number("groups");
            std::string wrong;
            const std::uint64_t groups = survey.groups(wrong);
            if (wrong.empty() && transactions.current() == before && groups != told)
                wrong = std::to_string(groups) + " groups in place of " + std::to_string(told);
            if (m_random() % 16 == 0)
                wrong += faultsOf(survey.cloud());
            std::cout << (wrong.empty() ? "saw" : "wrong: " + wrong) << std::endl;
        });
    }

    void vacuum() {
        run([&](Survey& survey) {
            survey.cloud().management().vacuum();
            std::cout << "cleaned" << std::endl;
            std::this_thread::sleep_for(std::chrono::milliseconds(m_random() % 50));
        });
    }

    // Changes a file of version 1 in its own format: which state is the current one.
    void restore() {
        run([&](Survey& survey) {
            auto& transactions = survey.cloud().transactions();
            const std::vector<std::uint32_t> kept = transactions.list();
            transactions.restore(kept[m_random() % kept.size()]);
            std::cout << "restored" << std::endl;
        });
    }

    // Does with the locks what the first release does, and changes nothing.
    void holdFormerLock() {
        const std::string name = m_file + "-writer";
        run([&](Survey& survey) {
            std::this_thread::sleep_for(std::chrono::milliseconds(m_random() % 5));
            const int lock = ::open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
            struct stat opened, named;
            const bool held = lock >= 0 && ::flock(lock, LOCK_EX | LOCK_NB) == 0 &&
                              ::fstat(lock, &opened) == 0 && ::stat(name.c_str(), &named) == 0 &&
                              opened.st_ino == named.st_ino;
            if (held) {
                const std::uint32_t before = survey.cloud().transactions().current();
                std::this_thread::sleep_for(std::chrono::milliseconds(m_random() % 5));
                const std::uint32_t after = survey.cloud().transactions().current();
                ::unlink(name.c_str());
                std::cout << (after == before ? "held" : "wrong: changed under the former lock")
                          << std::endl;
            }
            ::close(lock);
        });
    }

private:
    // Whether an error says that the state being read is gone, and this is so.
    bool wasDiscarded(const tarvo::qrb::Error& error, Survey& survey) const {
        const std::string text = error.what();
        const std::string begin = "Transaction ";
        if (text.rfind(begin, 0) != 0 ||
            text.find(", which is being read, was discarded") == std::string::npos)
            return false;
        const auto id = static_cast<std::uint32_t>(std::stoul(text.substr(begin.size())));
        const auto kept = survey.cloud().transactions().list();
        return std::find(kept.begin(), kept.end(), id) == kept.end();
    }

    std::string m_file;
    Random m_random;
};

int take(const std::string& part, const std::string& file, std::uint64_t seed) {
    Neighbour neighbour(file, seed);
    if (part == "vacuum")
        neighbour.vacuum();
    else if (part == "reader")
        neighbour.read();
    else if (part == "restorer")
        neighbour.restore();
    else if (part == "former writer")
        neighbour.holdFormerLock();
    else
        neighbour.write(part == "writer1" ? 1 : 1'000'000);
    return EXIT_SUCCESS;
}

struct Figures {
    std::atomic<std::uint64_t> commits{0}, looks{0}, vacuums{0}, busy{0}, overtaken{0};
    std::atomic<std::uint64_t> restores{0}, formerLocks{0};

    void add(const Figures& other) {
        commits += other.commits;
        looks += other.looks;
        vacuums += other.vacuums;
        busy += other.busy;
        overtaken += other.overtaken;
        restores += other.restores;
        formerLocks += other.formerLocks;
    }
};

void listen(Trial& trial, Process& process, Figures& figures) {
    std::string line;
    while (process.readLine(line)) {
        if (line == "busy") {
            ++figures.busy;
            continue;
        }
        if (line == "overtaken") {
            ++figures.overtaken;
            continue;
        }
        trial.tried();
        if (line == "did")
            ++figures.commits;
        else if (line == "saw")
            ++figures.looks;
        else if (line == "cleaned")
            ++figures.vacuums;
        else if (line == "restored")
            ++figures.restores;
        else if (line == "held")
            ++figures.formerLocks;
        else
            trial.bad(line);
    }
    if (const std::string end = process.wait(); !end.empty())
        trial.badInControlsToo("a program " + end);
}

// Parts, and by which name they know the file.
using Parts = std::vector<std::pair<std::string, std::string>>;

void runTogether(Trial& trial, const Parts& parts, Figures& figures) {
    std::vector<std::unique_ptr<Process>> processes;
    std::vector<std::thread> listeners;
    for (const auto& [part, name] : parts)
        processes.push_back(std::make_unique<Process>(
            std::vector<std::string>{"neighbour", part, name, std::to_string(trial.random()()),
                                     trial.isControl() ? "1" : "0"}));
    for (const std::unique_ptr<Process>& process : processes)
        listeners.emplace_back([&] { listen(trial, *process, figures); });
    for (std::thread& listener : listeners)
        listener.join();
}

void liveTogether(Trial& trial, const std::string& folder, Figures& all) {
    clear(folder);
    const std::string file = folder + "/survey.qrbx";
    Survey::create(file);
    const std::string second = folder + "/other.qrbx";
    if (trial.pick(2) == 0)
        fs::create_symlink("survey.qrbx", second);
    else
        fs::create_hard_link(file, second);

    Figures figures;
    runTogether(trial,
                {{"writer1", file},
                 {"writer2", second},
                 {"reader", file},
                 {"reader", second},
                 {"vacuum", file}},
                figures);

    std::string wrong;
    Survey survey(file);
    const std::uint64_t groups = survey.groups(wrong);
    if (!wrong.empty())
        trial.bad("in the end " + wrong);
    if (groups != figures.commits || survey.number("groups") != groups)
        trial.bad("in the end there are " + std::to_string(groups) + " groups after " +
                  std::to_string(figures.commits) + " commits");
    all.add(figures);
}

void liveWithFirstRelease(Trial& trial, const std::string& folder, Figures& all) {
    clear(folder);
    const std::string file = folder + "/survey.qrbx";
    fs::copy_file(QRB_GOLDEN "/release1-history.qrbx", file);
    fs::permissions(file, fs::perms::owner_all);
    const auto kept = Survey(file).cloud().transactions().list();
    Figures figures;
    runTogether(trial,
                {{"former writer", file}, {"restorer", file}, {"restorer", file}, {"vacuum", file}},
                figures);
    Survey survey(file);
    if (const std::string faults = faultsOf(survey.cloud()); !faults.empty())
        trial.bad("in the end " + faults);
    if (survey.cloud().transactions().list() != kept)
        trial.bad("in the end other transactions are kept");
    if (fs::exists(file + "-writer"))
        trial.bad("the former lock is left");
    all.add(figures);
}

int run(int argc, char** argv) {
    tarvo::qrb::loadLibrary(QRBLIB_FILE);
    if (argc == 6 && std::string(argv[1]) == "neighbour") {
        if (std::string(argv[5]) == "1")
            disk::ignoreFileLocks();
        return take(argv[2], argv[3], std::stoull(argv[4]));
    }
    Trial trial("neighbours_trial", "commits, looks and vacuums", argc, argv);
    const WorkFolder work("neighbours");
    Figures figures;
    while (trial.next(trial.round() + 1 < rounds ? UINT64_MAX : 0))
        (trial.turnOf(2) == 0 ? liveTogether : liveWithFirstRelease)(trial, work.folder("disk"),
                                                                     figures);
    trial.noteNeeded(figures.commits, "commits");
    trial.noteNeeded(figures.looks, "looks");
    trial.noteNeeded(figures.vacuums, "vacuums");
    trial.noteNeeded(figures.restores, "restores in files of version 1");
    trial.noteNeeded(figures.formerLocks, "locks of the first release");
    trial.note(figures.busy, "times busy");
    trial.note(figures.overtaken, "times the state read was discarded");
    return trial.finish();
}

}  // namespace

int main(int argc, char** argv) {
    return tarvo::trial::guarded(run, argc, argv);
}
