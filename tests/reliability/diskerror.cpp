// Disks that fail: any call of what people do with databases goes wrong, once or with all that
// follow, by an error or because the disk is full. The command must say so and leave what was there
// before, and must work when the disk is well again; no command is done whose file or new name
// could not be synced. The control takes an error for a success.
#include "tests/reliability/acts.h"
#include "tests/reliability/contents.h"
#include "tests/reliability/disk.h"
#include "tests/reliability/trial.h"
#include "tests/reliability/workfolder.h"

#include <map>
#include <vector>

namespace {

using namespace tarvo::trial;

constexpr std::uint64_t least = 3000;
// Of each act in a round.
constexpr int faultsOfSmall = 50;
constexpr int faultsOfLarge = 3;

class DiskErrors {
public:
    explicit DiskErrors(Trial& trial)
        : m_trial(trial),
          m_work("diskerror"),
          m_disk(m_work.folder("disk")),
          m_prepared(m_work.folder("prepared")),
          m_acts(actsIn(m_disk, m_work.folder("inputs"))) {}

    std::uint64_t acts() const { return m_acts.size(); }
    const Act& act() const { return m_acts[m_trial.turnOf(m_acts.size())]; }

    void tellFigures() const {
        m_trial.note(m_harmless, "of them did no harm");
        m_trial.noteNeeded(m_fileSyncs, "failing syncs of files");
        m_trial.noteNeeded(m_folderSyncs, "failing syncs of folders");
        m_trial.note(m_harmlessFolderSyncs, "of these did no harm");
        for (const Act& act : m_acts) {
            const auto done = m_done.find(act.name);
            m_trial.need(done == m_done.end() ? 0 : done->second, "failures of: " + act.name);
        }
    }

    void tryAct(const Act& act) {
        clear(m_disk);
        runTools(act.before);
        copyFolder(m_disk, m_prepared);
        std::vector<std::string> states{contentsOf(m_disk)};
        Calls calls;
        for (const CommandLine& step : act.steps) {
            disk::watch(m_disk);
            runTools({step});
            for (const std::uint64_t sync : disk::syncs())
                calls.syncs.push_back(calls.count + sync);
            calls.count += disk::calls();
            disk::unwatch();
            states.push_back(contentsOf(m_disk));
        }
        for (int i = 0; i < (act.large ? faultsOfLarge : faultsOfSmall); ++i)
            tryFault(act, states, calls);
    }

private:
    // Those of an act.
    struct Calls {
        std::uint64_t count = 0;
        std::vector<std::uint64_t> syncs;  // which of them are
    };

    void tryFault(const Act& act, const std::vector<std::string>& states, const Calls& calls) {
        const bool atSync = !calls.syncs.empty() && m_trial.pick(3) == 0;
        const std::uint64_t call =
            atSync ? calls.syncs[m_trial.pick(calls.syncs.size())] : 1 + m_trial.pick(calls.count);
        const auto fault = atSync || m_trial.pick(2) == 0 ? disk::Fault::Error : disk::Fault::Full;
        const bool forGood = m_trial.pick(2) == 0;
        const std::string what = act.name + ", call " + std::to_string(call) + " of " +
                                 std::to_string(calls.count) +
                                 (fault == disk::Fault::Full ? ", disk full" : ", error") +
                                 (forGood ? " for good" : " once");
        copyFolder(m_prepared, m_disk);
        disk::watch(m_disk);
        disk::failAt(call, fault, forGood);
        std::size_t step = 0;
        std::string output;
        int code = 0;
        while (step < act.steps.size() && (code = runTool(act.steps[step], output)) == 0)
            ++step;
        const std::uint64_t failures = disk::failures();
        const disk::Unsynced unsynced = disk::unsynced();
        disk::unwatch();
        if (failures == 0)
            return;
        m_trial.tried();
        ++m_done[act.name];
        m_fileSyncs += unsynced.files > 0;
        m_folderSyncs += unsynced.folders > 0;
        if (m_trial.isControl())
            code = 0;
        const std::string contents = contentsOf(m_disk);
        if (code == 0) {
            ++m_harmless;
            m_harmlessFolderSyncs += unsynced.folders > 0;
            if (unsynced.files > 0 || unsynced.names)
                m_trial.bad(what + ": told as done, but " +
                            (unsynced.names ? "a new name" : "a file") + " was not synced");
            if (contents != states.back())
                m_trial.bad(what + ": told as done, but it holds\n" + contents + "in place of\n" +
                            states.back());
            return;
        }
        if (!isClear(output))
            m_trial.bad(what + ": no clear error: " + output);
        // What is done but not sure to last is told so.
        const bool told = output.find("could not be synced") != output.npos;
        if (contents != states[step] && !(told && contents == states[step + 1])) {
            m_trial.bad(what + ": " + output + "and it holds\n" + contents + "in place of\n" +
                        states[step]);
            return;
        }
        if (contents == states[step] && m_trial.pick(3) == 0) {
            if (runTool(act.steps[step], output) != 0)
                m_trial.bad(what + ", tried again: " + output);
            else if (contentsOf(m_disk) != states[step + 1])
                m_trial.bad(what + ", tried again it makes\n" + contentsOf(m_disk) +
                            "in place of\n" + states[step + 1]);
        }
    }

    // One that says what is wrong, and does not call well files damaged or the program wrong.
    static bool isClear(const std::string& output) {
        for (const char* const wrong : {"damaged", "nternal", "unknown", "not a point-cloud"})
            if (output.find(wrong) != output.npos)
                return false;
        return output.starts_with("qrbtool: ") && output.size() > 20;
    }

    Trial& m_trial;
    WorkFolder m_work;
    std::string m_disk;
    std::string m_prepared;
    std::vector<Act> m_acts;
    std::map<std::string, std::uint64_t> m_done;  // failing calls of each act
    std::uint64_t m_harmless = 0;
    std::uint64_t m_fileSyncs = 0;
    std::uint64_t m_folderSyncs = 0;
    std::uint64_t m_harmlessFolderSyncs = 0;
};

int run(int argc, char** argv) {
    Trial trial("diskerror_trial", "failing calls", argc, argv);
    DiskErrors errors(trial);
    // Each act at least once.
    while (trial.next(trial.round() + 1 < errors.acts() ? UINT64_MAX : least))
        errors.tryAct(errors.act());
    errors.tellFigures();
    return trial.finish();
}

}  // namespace

int main(int argc, char** argv) {
    return tarvo::trial::guarded(run, argc, argv);
}
