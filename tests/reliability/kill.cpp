// Programs that are killed: one changes a database and logs each commit before it begins and when
// it is acknowledged; it is killed at any time. Then the database must hold what the last
// acknowledged commit made, or the one in hand, and take changes. The control acknowledges before
// it commits.
#include "tests/reliability/contents.h"
#include "tests/reliability/processes.h"
#include "tests/reliability/survey.h"
#include "tests/reliability/trial.h"
#include "tests/reliability/workfolder.h"

#include "qrb/error.h"
#include "qrb/loader.h"

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <thread>

namespace {

using namespace tarvo::trial;

constexpr std::uint64_t least = 100;
constexpr std::uint64_t killsOfFile = 20;
constexpr auto longestLife = std::chrono::milliseconds(120);
// More than one batch of what the library writes before the commit.
constexpr std::size_t largeItem = 17'000'000;

void tell(const char* word, std::uint64_t step, std::uint64_t groups) {
    std::cout << word << " " << step << " " << groups << std::endl;
}

// Changes the file until it is killed. Step n leaves the number n and what was told before it.
int write(const std::string& file, std::uint64_t seed, bool control) {
    Random random(seed);
    Survey survey(file);
    auto& transactions = survey.cloud().transactions();
    auto& management = survey.cloud().management();
    for (;;) {
        const std::uint64_t step = survey.number("step") + 1;
        std::uint64_t groups = survey.number("groups");
        const std::uint64_t oldest = survey.number("oldest");
        transactions.begin("step", "trial");
        const std::uint64_t kind = random() % 10;
        if (kind < 5 || groups == 0) {
            survey.addGroup(static_cast<std::uint32_t>(oldest + groups));
            ++groups;
        } else if (kind == 5) {
            survey.removeGroup(static_cast<std::uint32_t>(oldest));
            survey.setNumber("oldest", oldest + 1);
            --groups;
        } else if (kind == 6) {
            management.setChunkSizeLOD(management.getChunkSizeLOD() == 0 ? 20 : 0);
        } else if (kind == 7) {
            survey.setLargeItem(largeItem, random());
        } else if (survey.cloud().metaData().exists("large")) {
            survey.cloud().metaData().remove("large");
        }
        survey.setNumber("step", step);
        survey.setNumber("groups", groups);
        tell("try", step, groups);
        if (control)
            tell("did", step, groups);
        transactions.commit();
        tell("did", step, groups);
        if (random() % 4 == 0)
            survey.forgetOld();
        if (random() % 6 == 0)
            management.vacuum();
        if (random() % 5 == 0) {
            // What a restore brings back is a state that was acknowledged, too.
            const std::uint32_t current = transactions.current();
            transactions.restore(transactions.list().front());
            transactions.restore(current);
        }
    }
}

struct State {
    std::uint64_t step = 0;
    std::uint64_t groups = 0;
};

void check(Trial& trial, const std::string& file, State& known, const State& tried) {
    try {
        Survey survey(file);
        std::string wrong;
        State found{survey.number("step"), survey.number("groups")};
        // Killed between two restores.
        if (found.step == 0 && survey.cloud().transactions().current() == 1 && known.step > 0) {
            survey.cloud().transactions().restore(survey.cloud().transactions().list().back());
            found = {survey.number("step"), survey.number("groups")};
        }
        if (found.step != known.step && found.step != tried.step)
            wrong = "step " + std::to_string(found.step) + " in place of " +
                    std::to_string(known.step) + " or " + std::to_string(tried.step);
        const State& expected = found.step == known.step ? known : tried;
        const std::uint64_t groups = survey.groups(wrong);
        if (wrong.empty() && (found.groups != expected.groups || groups != expected.groups))
            wrong =
                std::to_string(groups) + " groups in place of " + std::to_string(expected.groups);
        wrong += faultsOf(survey.cloud());
        if (!wrong.empty())
            trial.bad(wrong);
        known = found;
        // Nobody holds the lock any more.
        survey.cloud().transactions().begin("after", "trial");
        survey.cloud().transactions().rollback();
    } catch (const tarvo::qrb::Error& error) {
        trial.bad(std::string("after a kill: ") + error.what() + " " +
                  (error.details() ? error.details() : ""));
    }
}

// Returns how many commits were acknowledged.
std::uint64_t killOften(Trial& trial, const std::string& folder) {
    const std::string file = folder + "/survey.qrbx";
    clear(folder);
    Survey::create(file);
    State known;
    std::uint64_t commits = 0;
    for (std::uint64_t i = 0; i < killsOfFile; ++i) {
        State tried = known;
        Process writer(
            {"writer", file, std::to_string(trial.random()()), trial.isControl() ? "1" : "0"});
        const auto life =
            std::chrono::microseconds(trial.pick(std::chrono::microseconds(longestLife).count()));
        std::thread killer([&] {
            std::this_thread::sleep_for(life);
            writer.kill();
        });
        std::string line;
        while (writer.readLine(line)) {
            std::istringstream words(line);
            std::string word;
            State state;
            words >> word >> state.step >> state.groups;
            if (word == "did") {
                known = tried = state;
                ++commits;
            } else if (word == "try") {
                tried = state;
            } else {
                trial.badInControlsToo("the writer failed: " + line);
            }
        }
        killer.join();
        if (const std::string end = writer.wait(); !end.empty())
            trial.badInControlsToo("the writer " + end);
        trial.tried();
        check(trial, file, known, tried);
    }
    return commits;
}

int run(int argc, char** argv) {
    tarvo::qrb::loadLibrary(QRBLIB_FILE);
    if (argc == 5 && std::string(argv[1]) == "writer") {
        try {
            return write(argv[2], std::stoull(argv[3]), std::string(argv[4]) == "1");
        } catch (const tarvo::qrb::Error& error) {
            std::cout << error.what() << " " << error.details() << std::endl;
            return EXIT_FAILURE;
        }
    }
    Trial trial("kill_trial", "kills", argc, argv);
    const WorkFolder work("kill");
    std::uint64_t commits = 0;
    while (trial.next(least))
        commits += killOften(trial, work.folder("disk"));
    trial.noteNeeded(commits, "acknowledged commits");
    return trial.finish();
}

}  // namespace

int main(int argc, char** argv) {
    return tarvo::trial::guarded(run, argc, argv);
}
