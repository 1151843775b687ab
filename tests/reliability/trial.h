// What the trials of reliability have in common: rounds that each have random numbers of their own,
// the count of what was tried and what was bad, and how to replay what was found.
//
// Arguments of each trial: --seed N (else the environment's QRB_SEED, else a random one), --round N
// (only that one), --seconds N (go on for so long, and not less than the short form), --control
// (see Trial::isControl). Where the environment names a folder in QRB_FIGURES, the figures of the
// run are written to NAME.txt in it; a run that can't write them fails.
#pragma once

#include <chrono>
#include <cstdint>
#include <mutex>
#include <random>
#include <stdexcept>
#include <string>

namespace tarvo::trial {

using Random = std::mt19937_64;

// Arguments or an environment that a trial can't make sense of.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Trial {
public:
    // name: of the program; unit: of what is tried, for example "cuts". Throws UsageError.
    Trial(std::string name, std::string unit, int argc, char** argv);

    // Whether there is a further round: fewer than `least` were tried, or there is time left. Ends
    // early after 20 bad ones.
    bool next(std::uint64_t least);
    std::uint64_t round() const { return m_round; }
    std::uint64_t seed() const { return m_seed; }
    // The random numbers of this round.
    Random& random() { return m_random; }
    // below: at least 1.
    std::uint64_t pick(std::uint64_t below) { return m_random() % below; }
    // Which of so many takes its turn in this round: one after the other, from one that the seed
    // chooses.
    std::size_t turnOf(std::size_t count) const {
        return static_cast<std::size_t>((m_seed % count + m_round % count) % count);
    }

    // In a control the trial takes one protection away from what it tries, and succeeds only when
    // it finds something bad.
    bool isControl() const { return m_control; }

    // These from any thread.
    void tried(std::uint64_t count = 1);
    // Tells what broke the promise, and how to replay it.
    void bad(const std::string& what);
    // The same for what no protection that a control takes away explains, a crash: a control fails.
    void badInControlsToo(const std::string& what);
    std::uint64_t badOnes() const { return m_bad; }

    // A further figure of the run, "12 commits".
    void note(std::uint64_t count, const std::string& what);
    // The same for what the run proves nothing without: none is bad, but in controls, single rounds
    // and runs that ended early.
    void noteNeeded(std::uint64_t count, const std::string& what);
    // Judges in the same way, and keeps it out of the figures.
    void need(std::uint64_t count, const std::string& what);

    // Tells the figures; returns the exit code of the program.
    int finish();

private:
    void tell(const char* word, const std::string& what) const;

    std::string m_name;
    std::string m_unit;
    std::uint64_t m_seed = 0;
    std::uint64_t m_round = 0;
    bool m_started = false;
    bool m_onlyOne = false;
    bool m_control = false;
    std::chrono::seconds m_time{0};
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    Random m_random;
    std::mutex m_mutex;
    std::uint64_t m_tried = 0;
    std::uint64_t m_bad = 0;
    bool m_unfit = false;
    std::string m_notes;
};

// Runs the main function of a trial, and tells what it throws: an error of the trial itself. With
// --help tells the arguments.
int guarded(int (*run)(int argc, char** argv), int argc, char** argv);

}  // namespace tarvo::trial
