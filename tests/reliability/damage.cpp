// "Damage is found": bits of a database are flipped, pages lost, swapped or put back, and whatever
// is read without an error must be what was stored. Commits and cleaning up on the damaged file
// must not make something wrong of what was right. The control takes the checksums away.
#include "tests/reliability/damagebase.h"
#include "tests/reliability/trial.h"
#include "tests/reliability/workfolder.h"

#include "engine/base/bytes.h"
#include "engine/report/check.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <thread>

namespace {

std::atomic<bool> s_withoutChecksums{false};

}  // namespace

// The linker leads every use of engine::checksum here (--wrap).
extern "C" {
std::uint64_t __real__ZN5tarvo6engine8checksumESt4spanIKhLm18446744073709551615EE(
    tarvo::engine::ByteSpan bytes);
std::uint64_t __wrap__ZN5tarvo6engine8checksumESt4spanIKhLm18446744073709551615EE(
    tarvo::engine::ByteSpan bytes);
std::uint64_t __wrap__ZN5tarvo6engine8checksumESt4spanIKhLm18446744073709551615EE(
    tarvo::engine::ByteSpan bytes) {
    return s_withoutChecksums
               ? 1
               : __real__ZN5tarvo6engine8checksumESt4spanIKhLm18446744073709551615EE(bytes);
}
}

namespace tarvo::trial {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t pageSize = 8192;
constexpr std::uint64_t shortForm = 80'000;  // flips
constexpr std::size_t share = 16;          // of the bytes are flipped in one round: one in so many
constexpr std::size_t pageHeader = 12;     // bytes at the beginning of each page, where its kind,
constexpr std::size_t fileHeader = 100;    // cells and free space stand; of the first behind this
constexpr std::uint64_t headerFlips = 40;  // of a thread in a round, each with a commit
constexpr auto longestStep = std::chrono::seconds(60);

// A database to be damaged, with what is true of it before and after a commit.
struct Subject {
    std::string name;
    DamageBase base;
    std::vector<std::uint32_t> ids;
    Picture truth;
    Picture afterCommit[2];  // without and with points

    std::uint32_t probe() const { return ids.back() + 1; }
};

// A file that is damaged and mended again. It stays open: closing would drop the library's locks.
class Patient {
public:
    Patient(std::string file, const FileImage& image) : m_file(std::move(file)), m_image(image) {
        m_handle = ::open(m_file.c_str(), O_RDWR | O_CREAT, 0600);
        if (m_handle < 0)
            throw std::runtime_error("The file can't be made.");
        heal();
    }
    ~Patient() { ::close(m_handle); }
    Patient(const Patient&) = delete;
    Patient& operator=(const Patient&) = delete;

    const std::string& file() const { return m_file; }
    void heal() { become(m_image); }
    void become(const FileImage& image) {
        std::error_code none;
        fs::remove(m_file + "-journal", none);
        put(0, image.data(), image.size());
        cut(image.size());
    }
    void put(std::size_t at, const char* bytes, std::size_t size) {
        if (::pwrite(m_handle, bytes, size, static_cast<off_t>(at)) != static_cast<ssize_t>(size))
            throw std::runtime_error("The file can't be written.");
    }
    void cut(std::size_t size) {
        if (::ftruncate(m_handle, static_cast<off_t>(size)) != 0)
            throw std::runtime_error("The file can't be cut.");
    }
    FileImage now() const {
        FileImage image(static_cast<std::size_t>(fs::file_size(m_file)));
        if (::pread(m_handle, image.data(), image.size(), 0) != static_cast<ssize_t>(image.size()))
            throw std::runtime_error("The file can't be read.");
        return image;
    }

private:
    std::string m_file;
    const FileImage& m_image;
    int m_handle;
};

// Ends the trial when something takes too long, with the figures so far: it may hang.
class Watchman {
public:
    Watchman(Trial& trial, const std::string& what)
        : m_thread([this, &trial, &what] {
              std::unique_lock guard(m_mutex);
              if (m_change.wait_for(guard, longestStep, [this] { return m_done; }))
                  return;
              trial.badInControlsToo(what + ": takes longer than a minute");
              trial.finish();
              std::_Exit(EXIT_FAILURE);
          }) {}
    ~Watchman() {
        {
            const std::lock_guard guard(m_mutex);
            m_done = true;
        }
        m_change.notify_one();
        m_thread.join();
    }
    Watchman(const Watchman&) = delete;
    Watchman& operator=(const Watchman&) = delete;

private:
    std::mutex m_mutex;
    std::condition_variable m_change;
    bool m_done = false;
    std::thread m_thread;
};

// Counts from all threads.
struct Figures {
    std::atomic<std::uint64_t> found{0};     // damage that gave an error
    std::atomic<std::uint64_t> harmless{0};  // no error was met, or hardly one
    std::atomic<std::uint64_t> headers{0};   // flips in them
    std::atomic<std::uint64_t> pages{0};
    std::atomic<std::uint64_t> commits{0};
    std::atomic<std::uint64_t> vacuums{0};
    std::atomic<std::uint64_t> sound{0};  // damaged files to be changed that the check calls so
    std::atomic<std::uint64_t> refusedOfSound{0};  // a commit or clean-up of these
    std::atomic<std::uint64_t> lost{0};  // read before a commit or clean-up, an error after it
};

class Damager {
public:
    Damager(Trial& trial, Figures& figures, const Subject& subject, const std::string& file,
            std::uint64_t seed)
        : m_trial(trial), m_figures(figures), m_subject(subject), m_file(file, subject.base.image) {
        m_random.seed(seed);
    }

    // Flips a random bit of each of these bytes in turn.
    void flip(std::size_t first, std::size_t step) {
        for (std::size_t at = first; at < m_subject.base.image.size() && !enough(); at += step)
            flipBit(at, m_random() % 4 == 0, m_random() % 100 == 0);
    }

    // Flips bits of what the container keeps about its pages, which no checksum guards.
    void flipHeaders(std::uint64_t count) {
        const FileImage& image = m_subject.base.image;
        const std::size_t pages = image.size() / pageSize;
        for (std::uint64_t i = 0; i < count && !enough(); ++i) {
            const std::size_t page = m_random() % pages;
            flipBit(page * pageSize + (page == 0 ? fileHeader : 0) + m_random() % pageHeader, true,
                    true);
            ++m_figures.headers;
        }
    }

    // Pages and ends of the file.
    void damagePages(std::size_t count) {
        const FileImage& image = m_subject.base.image;
        const std::size_t pages = image.size() / pageSize;
        for (std::size_t i = 0; i < count && !enough(); ++i) {
            const std::size_t page = m_random() % pages;
            const std::size_t other = m_random() % pages;
            const auto put = [&](std::size_t to, const char* from) {
                m_file.put(to * pageSize, from, pageSize);
            };
            const auto old = [&](std::size_t at) {
                const FileImage& version =
                    m_subject.base.older[m_random() % m_subject.base.older.size()];
                if (version.size() >= (at + 1) * pageSize)
                    put(at, version.data() + at * pageSize);
            };
            std::string what = "page " + std::to_string(page) + " ";
            switch (m_random() % 5) {
                case 0:
                    put(page, std::vector<char>(pageSize).data());
                    what += "zeroed";
                    break;
                case 1:
                    put(page, image.data() + other * pageSize);
                    put(other, image.data() + page * pageSize);
                    what += "swapped with " + std::to_string(other);
                    break;
                case 2:
                    put(page, image.data() + other * pageSize);
                    what += "a copy of " + std::to_string(other);
                    break;
                case 3:
                    m_file.cut(m_random() % image.size());
                    what = "cut";
                    break;
                default:
                    old(page);
                    what += "of an earlier time";
                    break;
            }
            examine(what, true, m_random() % 4 == 0);
            m_file.heal();
            ++m_figures.pages;
        }
    }

private:
    bool enough() const {
        return m_trial.badOnes() > 20 || (m_trial.isControl() && m_trial.badOnes() > 0);
    }

    // One, at random.
    void flipBit(std::size_t at, bool dear, bool change) {
        const char& right = m_subject.base.image[at];
        const char bit = static_cast<char>(1 << m_random() % 8);
        const char wrong = static_cast<char>(right ^ bit);
        m_file.put(at, &wrong, 1);
        examine("byte " + std::to_string(at) + ", bit " +
                    std::to_string(static_cast<unsigned char>(bit)),
                dear, change);
        m_file.put(at, &right, 1);
        m_trial.tried();
    }

    void badInternal(const std::string& what, const std::string& error) {
        m_trial.bad(m_subject.name + ", " + what + ": an internal error, " + error);
    }

    // Runs what may be refused; whether it was done.
    bool attempt(const std::string& what, const std::function<void()>& work) {
        try {
            work();
            return true;
        } catch (const std::exception& error) {
            if (isInternal(error))
                badInternal(what, error.what());
        }
        return false;
    }

    // Whether the check finds nothing wrong with the file.
    bool isCalledSound(const std::string& what) {
        bool sound = false;
        attempt(what + ", check", [&] {
            engine::session::Session session(m_file.file(), {}, "trial");
            sound = engine::report::check(session).faultCount == 0;
        });
        return sound;
    }

    // Whether all that was read is true.
    bool compare(const Picture& read, const Picture& truth, const std::string& what) {
        for (const auto& [name, value] : read) {
            if (name == internalError) {
                badInternal(what, value);
                return false;
            }
            const auto right = truth.find(name);
            if (right != truth.end() && right->second == value)
                continue;
            m_trial.bad(m_subject.name + ", " + what + ": \"" + name + "\" was believed" +
                        (right == truth.end() ? ", which is not there"
                                              : ": " + value.substr(0, 60) + " in place of " +
                                                    right->second.substr(0, 60)));
            return false;
        }
        return true;
    }

    void examine(const std::string& what, bool dear, bool change) {
        const std::string place = m_subject.name + ", " + what;
        const Watchman watchman(m_trial, place);
        const Picture before = readAll(m_file.file(), m_subject.ids, dear || change);
        ++(before.size() + 2 >= m_subject.truth.size() ? m_figures.harmless : m_figures.found);
        if (!compare(before, m_subject.truth, what) || !change)
            return;
        const bool sound = isCalledSound(what);
        m_figures.sound += sound;
        const bool withPoints = m_random() % 2;
        std::vector<std::uint32_t> ids = m_subject.ids;
        const Picture* truth = &m_subject.truth;
        const bool committed =
            attempt(what + ", commit", [&] { commitSomething(m_file.file(), withPoints); });
        if (committed) {
            ids.push_back(m_subject.probe());
            truth = &m_subject.afterCommit[withPoints];
            ++m_figures.commits;
        }
        const Picture after = readChanged(ids);
        compareAfter(before, after, *truth, sound,
                     what + (committed ? ", commit" : ", refused commit"));
        const bool cleaned = attempt(what + ", clean-up", [&] {
            engine::session::Session(m_file.file(), {}, "trial").history().vacuum();
        });
        m_figures.vacuums += cleaned;
        m_figures.refusedOfSound += sound && !(committed && cleaned);
        compareAfter(
            after, readChanged(ids), *truth, sound,
            what + (committed ? ", commit" : "") + (cleaned ? ", clean-up" : ", refused clean-up"));
        m_file.heal();
    }

    Picture readChanged(const std::vector<std::uint32_t>& ids) {
        return withoutTimes(readAll(m_file.file(), ids), m_subject.probe());
    }

    // sound: the check found nothing wrong, so that nothing may be lost.
    void compareAfter(const Picture& before, const Picture& after, const Picture& truth, bool sound,
                      const std::string& what) {
        compare(after, withoutTimes(truth, m_subject.probe()), what);
        std::string lost;
        for (const auto& [name, value] : withoutTimes(before, m_subject.probe()))
            if (truth.count(name) > 0 && after.count(name) == 0) {
                m_figures.lost += !sound;
                lost += " \"" + name + "\"";
            }
        if (sound && !lost.empty() && !m_trial.isControl())
            m_trial.bad(m_subject.name + ", " + what + ": the check calls the file sound, but" +
                        lost.substr(0, 200) + " can't be read any more");
    }

public:
    // Times and what depends on them differ from commit to commit.
    static Picture withoutTimes(Picture picture, std::uint32_t probe) {
        picture.erase("root of " + std::to_string(probe));
        picture.erase("details");
        if (const auto found = picture.find("changelog"); found != picture.end())
            if (const std::size_t at = found->second.find("\n[#" + std::to_string(probe) + "]");
                at != std::string::npos)
                found->second.resize(at);
        picture.erase("size");
        return picture;
    }

private:
    Trial& m_trial;
    Figures& m_figures;
    const Subject& m_subject;
    Patient m_file;
    Random m_random;
};

Subject makeSubject(const fs::path& folder, bool deep) {
    Subject subject;
    subject.name = deep ? "deep database" : "database";
    const std::string file = (folder / (deep ? "deep.qrbx" : "base.qrbx")).string();
    subject.base = makeDamageBase(file, deep);
    subject.ids = kept(file);
    subject.truth = readAll(file, subject.ids);
    for (const bool withPoints : {false, true}) {
        const std::string changed = (folder / "changed.qrbx").string();
        {
            Patient copy(changed, subject.base.image);
            commitSomething(changed, withPoints);
            std::vector<std::uint32_t> ids = subject.ids;
            ids.push_back(subject.probe());
            subject.afterCommit[withPoints] =
                Damager::withoutTimes(readAll(changed, ids), subject.probe());
        }
        fs::remove(changed);
    }
    return subject;
}

int run(int argc, char** argv) {
    Trial trial("damage_trial", "flips", argc, argv);
    s_withoutChecksums = trial.isControl();
    const WorkFolder work("damage");
    const fs::path folder = work.path();
    Figures figures;
    const Subject subjects[] = {makeSubject(folder, false), makeSubject(folder, true)};
    const unsigned threads = std::max(2u, std::thread::hardware_concurrency());
    while (trial.next(shortForm)) {
        // The deep one takes its time to be read: its index is one round in sixteen.
        const bool deep = trial.round() % 16 == 15;
        const Subject& subject = subjects[deep];
        const std::uint64_t before = deep ? trial.round() / 16 : trial.round() - trial.round() / 16;
        std::vector<std::thread> workers;
        const std::size_t first = before % share;
        for (unsigned t = 0; t < threads; ++t) {
            const std::uint64_t seed = trial.random()();
            const std::string file = (folder / ("worker" + std::to_string(t))).string();
            workers.emplace_back([&, seed, file, t] {
                try {
                    Damager damager(trial, figures, subject, file, seed);
                    damager.flip(first + t * share, share * threads);
                    damager.flipHeaders(headerFlips);
                    damager.damagePages(50);
                } catch (const std::exception& error) {
                    trial.bad(std::string("The trial itself failed: ") + error.what());
                }
            });
        }
        for (std::thread& worker : workers)
            worker.join();
    }
    trial.noteNeeded(figures.found, "found");
    trial.noteNeeded(figures.harmless, "without effect");
    trial.noteNeeded(figures.headers, "flips in page headers");
    trial.noteNeeded(figures.pages, "damaged pages");
    trial.noteNeeded(figures.commits, "commits");
    trial.noteNeeded(figures.vacuums, "clean-ups");
    trial.noteNeeded(figures.sound, "changes of damaged files that the check calls sound");
    trial.note(figures.refusedOfSound, "of them refused");
    trial.note(figures.lost, "values that changes of others left unreadable");
    return trial.finish();
}

}  // namespace

}  // namespace tarvo::trial

int main(int argc, char** argv) {
    return tarvo::trial::guarded(tarvo::trial::run, argc, argv);
}
