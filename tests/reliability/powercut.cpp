// Power cuts: what people do with databases is written down call by call, and the power is cut at
// each of them, also while what an earlier cut left is put right. After the cut the folder must
// hold what it held before the step in hand or after it; after a step that was acknowledged, what
// it made. The control is a disk that does not sync.
#include "tests/reliability/acts.h"
#include "tests/reliability/contents.h"
#include "tests/reliability/disk.h"
#include "tests/reliability/platter.h"
#include "tests/reliability/trial.h"
#include "tests/reliability/workfolder.h"

#include "qrb/error.h"

#include <filesystem>
#include <set>

namespace {

using namespace tarvo::trial;
using Remains = Platter::Remains;
namespace fs = std::filesystem;

// Of an act with tens of megabytes only so many cuts are tried.
constexpr std::uint64_t cutsOfLarge = 60;
constexpr std::uint64_t least = 5000;

class PowerCuts {
public:
    explicit PowerCuts(Trial& trial)
        : m_trial(trial),
          m_work("powercut"),
          m_folder(m_work.folder("disk")),
          m_acts(actsIn(m_folder, m_work.folder("inputs"))) {}

    std::uint64_t acts() const { return m_acts.size(); }

    void tryAct(const Act& act) {
        m_act = act.name;
        clear(m_folder);
        runTools(act.before);
        Platter platter(m_folder);
        if (m_trial.isControl())
            platter.ignoreSyncs();
        std::vector<std::string> states{contentsOf(m_folder)};
        disk::watch(m_folder);
        for (const CommandLine& step : act.steps) {
            runTools({step});
            disk::acknowledge();
            states.push_back(contentsOf(m_folder));
        }
        const std::vector<Operation> operations = disk::unwatch();

        const std::uint64_t stride = act.large ? operations.size() / cutsOfLarge + 1 : 1;
        std::size_t acknowledged = 0;
        for (std::size_t i = 0; i <= operations.size(); ++i) {
            // Where something is synced or named, what comes before counts most.
            const bool counts =
                i < operations.size() && operations[i].kind != Operation::Kind::Write;
            // What was cut off is gone for whoever is sent back to before it.
            const bool isCutOff = i > 0 && operations[i - 1].kind == Operation::Kind::Truncate;
            if (m_trial.pick(stride) == 0 || (counts && !act.large) || isCutOff) {
                m_allowed = {states[acknowledged]};
                if (acknowledged + 1 < states.size())
                    m_allowed.insert(states[acknowledged + 1]);
                m_place = "after " + std::to_string(i) + " of " +
                          std::to_string(operations.size()) + " calls";
                cutAt(platter, act.large, isCutOff ? Remains::DataOnly : Remains::Some);
            }
            if (i < operations.size()) {
                acknowledged += operations[i].kind == Operation::Kind::Acknowledge;
                platter.apply(operations[i]);
            }
        }
    }

    const Act& act() const { return m_acts[m_trial.turnOf(m_acts.size())]; }

    std::uint64_t recoveries() const { return m_recoveries; }

private:
    // ofLarge: what remains where the act is too large for trying all kinds.
    void cutAt(const Platter& platter, bool large, Remains ofLarge) {
        const std::string after = m_work.folder("after");
        const int kinds = large ? 1 : Platter::kindsOfRemains;
        for (int kind = 0; kind < kinds; ++kind) {
            const Remains remains = large ? ofLarge : static_cast<Remains>(kind);
            platter.cut(after, remains, m_trial.random());
            const bool journal = fs::exists(after + "/survey.qrbx-journal");
            if (journal && m_trial.pick(large ? 4 : 2) == 0)
                cutRecovery(after, large);
            else
                check(after, remains);
        }
    }

    // Cuts the power again while the first one who opens the files puts them right.
    void cutRecovery(const std::string& after, bool large) {
        Platter platter(after);
        if (m_trial.isControl())
            platter.ignoreSyncs();
        disk::watch(after);
        contentsOf(after);
        const std::vector<Operation> operations = disk::unwatch();
        check(after, Remains::Nothing);
        const std::string again = m_work.folder("again");
        const std::uint64_t stride = operations.size() / (large ? 2 : 6) + 1;
        for (const Operation& operation : operations) {
            if (m_trial.pick(stride) == 0) {
                platter.cut(again, Remains::Some, m_trial.random());
                ++m_recoveries;
                check(again, Remains::Some);
            }
            platter.apply(operation);
        }
    }

    void check(const std::string& folder, Remains remains) {
        m_trial.tried();
        const std::string contents = contentsOf(folder);
        if (!m_allowed.contains(contents)) {
            std::string text = m_act + ", cut " + m_place +
                               ", what remains: " + std::to_string(static_cast<int>(remains)) +
                               "\n" + contents + "     in place of";
            for (const std::string& allowed : m_allowed)
                text += "\n" + allowed;
            m_trial.bad(text);
            return;
        }
        // What survived is of use.
        if (m_trial.pick(16) != 0)
            return;
        for (const auto& entry : fs::directory_iterator(folder)) {
            if (entry.path().extension() != ".qrbx")
                continue;
            try {
                addPoints(entry.path().string());
                contentsOfDatabase(entry.path().string());
            } catch (const tarvo::qrb::Error& error) {
                m_trial.bad(m_act + ", cut " + m_place +
                            ", then points can't be added: " + error.what());
            }
            return;
        }
    }

    Trial& m_trial;
    WorkFolder m_work;
    std::string m_folder;
    std::vector<Act> m_acts;
    std::string m_act;
    std::string m_place;
    std::set<std::string> m_allowed;
    std::uint64_t m_recoveries = 0;
};

int run(int argc, char** argv) {
    Trial trial("powercut_trial", "cuts", argc, argv);
    PowerCuts cuts(trial);
    // Each act at least once.
    while (trial.next(trial.round() + 1 < cuts.acts() ? UINT64_MAX : least))
        cuts.tryAct(cuts.act());
    trial.noteNeeded(cuts.recoveries(), "of them while recovering");
    return trial.finish();
}

}  // namespace

int main(int argc, char** argv) {
    return tarvo::trial::guarded(run, argc, argv);
}
