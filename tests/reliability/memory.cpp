// "Running out of memory is an error": an allocation of a piece of work fails, alone or with all
// that follow, those of the libraries beneath included. No call may crash; each tells an error with
// code and text, and the file holds what it held before or what the work makes of it. The work runs
// in processes of their own, so that a crash is seen. In the control operator new returns null in
// place of throwing.
#include "tests/qrb/allocations.h"
#include "tests/reliability/memorywork.h"
#include "tests/reliability/trial.h"
#include "tests/reliability/workfolder.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::atomic<bool> s_newGivesNull{false};

}  // namespace

void* operator new(std::size_t size) {
    void* volatile memory = std::malloc(size > 0 ? size : 1);
    if (!memory && !s_newGivesNull)
        throw std::bad_alloc();
    return memory;
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

// A power cut is not what is tried here.
extern "C" int fsync(int) {
    return 0;
}
extern "C" int fdatasync(int) {
    return 0;
}

namespace tarvo::trial {

namespace {

namespace fs = std::filesystem;

constexpr std::uint64_t shortForm = 5'000;  // failing allocations
constexpr int perProcess = 25;
constexpr int processes = 2;

// A file with transactions 2 and 4, whose points have a place and a number, and 3, an item.
void prepare(const std::string& file) {
    Bench bench(file);
    bench.start();
    bench.create();
    bench.begin();
    bench.insert(300);
    bench.commit();
    bench.begin();
    bench.step(bench.t.qrb_pointcloud_meta_data_set(bench.c, bench.cloud, "item", "[1]"));
    bench.commit();
    bench.begin();
    bench.step(
        bench.t.qrb_pointcloud_point_attributes_add_default(bench.c, bench.cloud, "tarvo.class"));
    bench.step(bench.t.qrb_pointcloud_point_attributes_duplicate(bench.c, bench.cloud,
                                                                 "tarvo.class", "n"));
    bench.step(bench.t.qrb_pointcloud_point_attributes_remove(bench.c, bench.cloud, "tarvo.class"));
    bench.insert(200);
    bench.commit();
    if (bench.failed)
        throw std::runtime_error(std::string("The file can't be prepared: ") + bench.text);
    bench.end();
}

// What a process has to say: lines, of which the last tells what it was at when it crashed.
class Tongue {
public:
    explicit Tongue(int handle) : m_handle(handle) {}
    void say(char kind, const std::string& what) const {
        const std::string line = kind + what + "\n";
        if (::write(m_handle, line.data(), line.size()) < 0)
            ::_exit(99);
    }

private:
    int m_handle;
};

// One kind of work, in a process of its own.
class Worker {
public:
    // The prepared database lies beside the file.
    Worker(const std::string& file, const Work& work)
        : m_prepared(file + ".prepared"), m_file(file), m_work(work) {}

    void run(Random random, const Tongue& tongue) {
        const std::string before = m_work.withFile ? contentsOf(m_prepared) : "";
        reset();
        const long all = runOnce(0, false);
        if (m_failed)
            throw std::runtime_error("it fails with all memory: " + m_text);
        const std::string after = contentsOf(m_file);
        for (int i = 0; i < perProcess; ++i) {
            // Often one of the first, where most calls begin.
            const long range = random() % 3 == 0 ? std::min(all, 40L) : all;
            const long number = 1 + static_cast<long>(random() % static_cast<unsigned long>(range));
            const bool forGood = random() % 2;
            const std::string what = std::string(m_work.name) + ", allocation " +
                                     std::to_string(number) + " of " + std::to_string(all) +
                                     (forGood ? " and all behind it" : "");
            tongue.say('@', what);
            reset();
            if (runOnce(number, forGood) < number)
                continue;  // the threads came together in another way
            tongue.say('+', "");
            if (m_failed && (m_code == 0 || m_text.empty()))
                tongue.say('!', what + ": an error without code or text");
            // Not even a file is to blame, but for what the system or the container say of it.
            if (m_failed && m_code != QRB_ERROR_MEMORY && m_code != QRB_ERROR_FILE)
                tongue.say('!', what + ": told as error " + std::to_string(m_code) + ": " + m_text);
            if (!m_work.withFile && m_failed) {
                if (fs::exists(m_file))
                    tongue.say('!', what + ": a failed creation left a file");
                continue;
            }
            std::string now;
            try {
                now = contentsOf(m_file);
            } catch (const std::exception& error) {
                tongue.say('!', what + ": " + error.what());
                continue;
            }
            if (now != after && (now != before || !m_failed))
                tongue.say('!', what + ": the file holds something else than before or after");
        }
    }

private:
    void reset() const {
        for (const auto& entry : fs::directory_iterator(fs::path(m_file).parent_path()))
            if (entry.path().string() != m_prepared)
                fs::remove(entry.path());
        if (m_work.withFile)
            fs::copy_file(m_prepared, m_file);
    }

    // With allocation `number` failing; 0: none. Returns how many there were.
    long runOnce(long number, bool forGood) {
        Bench bench(m_file);
        bench.start();
        if (m_work.withFile)
            bench.open();
        if (m_work.prepare)
            m_work.prepare(bench);
        if (bench.failed)
            throw std::runtime_error(std::string("it can't be prepared: ") + bench.text);
        allocations::fail(number > 0 ? number : -1, forGood);
        m_work.run(bench);
        const long made = allocations::stop();
        m_failed = bench.failed;
        m_code = bench.failed ? bench.code : 0;
        m_text = bench.failed && bench.text ? bench.text : "";
        bench.end();
        return made;
    }

    static std::string contentsOf(const std::string& file) {
        Bench bench(file);
        bench.start();
        bench.open();
        std::string contents;
        if (!bench.failed) {
            contents = bench.contents();
            bench.begin();  // nobody holds the lock any more
        }
        if (bench.failed)
            throw std::runtime_error(std::string("the file is not well afterwards: ") + bench.text);
        bench.end();
        return contents;
    }

    std::string m_prepared;
    std::string m_file;
    const Work& m_work;
    bool m_failed = false;
    std::int32_t m_code = 0;
    std::string m_text;
};

// A process that works; its lines are read when it has ended.
struct Process {
    ::pid_t id = 0;
    int handle = -1;

    Process(const std::string& prepared, const fs::path& folder, const Work& work, Random random,
            bool control) {
        int ends[2];
        if (::pipe(ends) != 0 || (id = ::fork()) < 0)
            throw std::runtime_error("A process can't be started.");
        if (id == 0) {
            const Tongue tongue(ends[1]);
            s_newGivesNull = control;
            try {
                const std::string file = (folder / "file.qrbx").string();
                fs::remove_all(folder);
                fs::create_directory(folder);
                fs::copy_file(prepared, file + ".prepared");
                Worker(file, work).run(random, tongue);
            } catch (const std::exception& error) {
                tongue.say('!', std::string(work.name) + ": " + error.what());
            }
            ::_exit(0);
        }
        ::close(ends[1]);
        handle = ends[0];
    }

    // Returns how many allocations have failed.
    std::uint64_t join(Trial& trial, const char* name) const {
        std::string lines;
        std::array<char, 4096> buffer;
        for (ssize_t got = 0; (got = ::read(handle, buffer.data(), buffer.size())) > 0;)
            lines.append(buffer.data(), static_cast<std::size_t>(got));
        ::close(handle);
        int status = 0;
        ::waitpid(id, &status, 0);
        std::istringstream in(lines);
        std::string at = name;
        std::uint64_t failures = 0;
        for (std::string line; std::getline(in, line);) {
            if (line[0] == '@')
                at = line.substr(1);
            else if (line[0] == '+')
                ++failures;
            else
                trial.bad(line.substr(1));
        }
        trial.tried(failures);
        if (status != 0)
            trial.bad(at + ": " +
                      (WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status))
                                           : "exit code " + std::to_string(status)));
        return failures;
    }
};

int run(int argc, char** argv) {
    Trial trial("memory_trial", "failing allocations", argc, argv);
    qrb::loadLibrary(QRBLIB_FILE);
    const WorkFolder place("memory");
    const fs::path folder = place.path();
    const std::string prepared = (folder / "prepared.qrbx").string();
    prepare(prepared);
    std::vector<std::uint64_t> failures(allWork().size());
    while (trial.next(shortForm)) {
        const std::size_t number = trial.turnOf(allWork().size());
        const Work& work = allWork()[number];
        std::vector<Process> running;
        for (int i = 0; i < processes; ++i)
            running.emplace_back(prepared, folder / std::to_string(i), work,
                                 Random(trial.random()()), trial.isControl());
        for (const Process& process : running)
            failures[number] += process.join(trial, work.name);
    }
    qrb::freeLibrary();
    for (std::size_t i = 0; i < failures.size(); ++i)
        trial.need(failures[i], std::string("failures of: ") + allWork()[i].name);
    trial.note(allWork().size() - std::count(failures.begin(), failures.end(), 0u),
               "kinds of work");
    return trial.finish();
}

}  // namespace

}  // namespace tarvo::trial

int main(int argc, char** argv) {
    return tarvo::trial::guarded(tarvo::trial::run, argc, argv);
}
