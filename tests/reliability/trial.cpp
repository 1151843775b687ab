#include "tests/reliability/trial.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>

namespace tarvo::trial {

namespace {

constexpr std::uint64_t enoughBad = 20;

constexpr const char* usage =
    "Arguments: [--seed N] [--round N] [--seconds N] [--control]\n"
    "  --seed N     the random numbers; else those of QRB_SEED, else others in each run\n"
    "  --round N    only this round\n"
    "  --seconds N  go on for so long\n"
    "  --control    take a protection away: succeeds when that is found\n"
    "QRB_FIGURES=FOLDER writes the figures of the run into a file in it.\n";

// what: where the text was given.
std::uint64_t numberOf(const std::string& what, const std::string& text) {
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || next != end)
        throw UsageError(what + " needs a number from 0 to " + std::to_string(UINT64_MAX) +
                         ", not \"" + text + "\".");
    return number;
}

}  // namespace

Trial::Trial(std::string name, std::string unit, int argc, char** argv)
    : m_name(std::move(name)), m_unit(std::move(unit)) {
    std::optional<std::uint64_t> seed;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--control") {
            m_control = true;
            continue;
        }
        if (argument != "--seed" && argument != "--round" && argument != "--seconds")
            throw UsageError("\"" + argument + "\" is not known.");
        const std::uint64_t number = numberOf(argument, ++i < argc ? argv[i] : "");
        if (argument == "--seed") {
            seed = number;
        } else if (argument == "--round") {
            m_onlyOne = true;
            m_round = number;
        } else {
            // A longer time can't be added to the clock's.
            m_time = std::chrono::seconds(std::min<std::uint64_t>(number, UINT32_MAX));
        }
    }
    const char* const given = std::getenv("QRB_SEED");
    m_seed = seed ? *seed : given ? numberOf("QRB_SEED", given) : std::random_device()();
    std::cout << m_name << (m_control ? " (control)" : "") << ": seed " << m_seed << std::endl;
}

bool Trial::next(std::uint64_t least) {
    if (m_started) {
        const bool timeLeft = std::chrono::steady_clock::now() - m_start < m_time;
        if (m_onlyOne || m_bad >= enoughBad || (m_control && m_bad > 0) ||
            (m_tried >= least && !timeLeft))
            return false;
        ++m_round;
    }
    m_started = true;
    // Seeds beside each other shall not give the same rounds.
    std::seed_seq mixed{static_cast<std::uint32_t>(m_seed),
                        static_cast<std::uint32_t>(m_seed >> 32),
                        static_cast<std::uint32_t>(m_round)};
    m_random.seed(mixed);
    return true;
}

void Trial::tried(std::uint64_t count) {
    const std::lock_guard guard(m_mutex);
    m_tried += count;
}

void Trial::tell(const char* word, const std::string& what) const {
    std::cout << word << ": " << what << "\n     replay: " << m_name << " --seed " << m_seed
              << " --round " << m_round << (m_control ? " --control" : "") << std::endl;
}

void Trial::bad(const std::string& what) {
    const std::lock_guard guard(m_mutex);
    ++m_bad;
    tell("BAD", what);
}

void Trial::badInControlsToo(const std::string& what) {
    if (!m_control) {
        bad(what);
        return;
    }
    const std::lock_guard guard(m_mutex);
    m_unfit = true;
    tell("UNFIT", what);
}

void Trial::note(std::uint64_t count, const std::string& what) {
    const std::lock_guard guard(m_mutex);
    m_notes += "; " + std::to_string(count) + " " + what;
}

void Trial::noteNeeded(std::uint64_t count, const std::string& what) {
    note(count, what);
    need(count, what);
}

void Trial::need(std::uint64_t count, const std::string& what) {
    const bool whole = !m_control && !m_onlyOne && m_bad < enoughBad;
    if (count == 0 && whole)
        bad("there were none of these: " + what);
}

int Trial::finish() {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(
        std::chrono::steady_clock::now() - m_start);
    std::ostringstream line;
    line << m_name << (m_control ? " (control)" : "") << ": " << m_tried << " " << m_unit << ", "
         << m_bad << " bad, " << seconds.count() << " s, seed " << m_seed << m_notes;
    std::cout << line.str() << std::endl;
    if (const char* const folder = std::getenv("QRB_FIGURES")) {
        const std::string file =
            std::string(folder) + "/" + m_name + (m_control ? "-control" : "") + ".txt";
        std::ofstream stream(file);
        stream << line.str() << "\n";
        stream.close();
        if (!stream) {
            std::cerr << "The figures can't be written to \"" << file << "\".\n";
            return EXIT_FAILURE;
        }
    }
    if (m_control)
        return m_bad > 0 && !m_unfit ? EXIT_SUCCESS : EXIT_FAILURE;
    return m_bad == 0 && m_tried > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

int guarded(int (*run)(int argc, char** argv), int argc, char** argv) {
    if (argc == 2 && std::string(argv[1]) == "--help") {
        std::cout << usage;
        return EXIT_SUCCESS;
    }
    try {
        return run(argc, argv);
    } catch (const UsageError& error) {
        std::cerr << error.what() << "\n" << usage;
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "The trial itself failed: " << error.what() << std::endl;
        return EXIT_FAILURE;
    }
}

}  // namespace tarvo::trial
