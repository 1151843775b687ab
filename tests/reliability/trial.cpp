#include "tests/reliability/trial.h"

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace tarvo::trial {

namespace {

constexpr std::uint64_t enoughBad = 20;

std::uint64_t numberOf(const std::string& text) {
    std::size_t end = 0;
    const std::uint64_t number = std::stoull(text, &end);
    if (end != text.size())
        throw std::runtime_error("\"" + text + "\" is no number.");
    return number;
}

}  // namespace

Trial::Trial(std::string name, std::string unit, int argc, char** argv)
    : m_name(std::move(name)), m_unit(std::move(unit)) {
    const char* const given = std::getenv("QRB_SEED");
    m_seed = given ? numberOf(given) : std::random_device()();
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--control") {
            m_control = true;
            continue;
        }
        if (++i == argc)
            throw std::runtime_error("\"" + argument + "\" needs a number.");
        const std::uint64_t number = numberOf(argv[i]);
        if (argument == "--seed") {
            m_seed = number;
        } else if (argument == "--round") {
            m_onlyOne = true;
            m_round = number;
        } else if (argument == "--seconds") {
            m_time = std::chrono::seconds(number);
        } else {
            throw std::runtime_error("\"" + argument + "\" is not known.");
        }
    }
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

void Trial::bad(const std::string& what) {
    const std::lock_guard guard(m_mutex);
    ++m_bad;
    std::cout << "BAD: " << what << "\n     replay: " << m_name << " --seed " << m_seed
              << " --round " << m_round << (m_control ? " --control" : "") << std::endl;
}

void Trial::note(const std::string& figure) {
    const std::lock_guard guard(m_mutex);
    m_notes += "; " + figure;
}

int Trial::finish() {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(
        std::chrono::steady_clock::now() - m_start);
    std::ostringstream line;
    line << m_name << (m_control ? " (control)" : "") << ": " << m_tried << " " << m_unit << ", "
         << m_bad << " bad, " << seconds.count() << " s, seed " << m_seed << m_notes;
    std::cout << line.str() << std::endl;
    if (const char* const folder = std::getenv("QRB_FIGURES"))
        std::ofstream(std::string(folder) + "/" + m_name + (m_control ? "-control" : "") + ".txt")
            << line.str() << "\n";
    if (m_control)
        return m_bad > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
    return m_bad == 0 && m_tried > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

int guarded(int (*run)(int argc, char** argv), int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::cerr << "The trial itself failed: " << error.what() << std::endl;
        return EXIT_FAILURE;
    }
}

}  // namespace tarvo::trial
