// What a power cut leaves of a folder. A write counts as done when its file was synced, a name when
// the folder was; of all else any part can be there: each sector of 512 bytes the old, the new, or
// torn between them; a file as long as it was or grown, by what was written, zeros or rubbish;
// names as they were, or with changes of which an earlier one is missing.
#pragma once

#include "tests/reliability/disk.h"
#include "tests/reliability/trial.h"

#include <map>
#include <string>
#include <vector>

namespace tarvo::trial {

class Platter {
public:
    // What is in the folder now is on the disk; the files have the numbers that disk::watch gives.
    explicit Platter(const std::string& folder);

    void apply(const Operation& operation);
    // The disk of the control: what is synced isn't.
    void ignoreSyncs() { m_ignoreSyncs = true; }

    // How much of what was not synced is there after the cut.
    enum class Remains { Nothing, Everything, NamesOnly, DataOnly, Some };
    static constexpr int kindsOfRemains = 5;
    // Fills a folder, whose files are removed before, with what is there after a cut now.
    void cut(const std::string& folder, Remains remains, Random& random) const;

private:
    struct File {
        std::string synced;
        std::vector<Operation> unsynced;
    };
    std::string contentOf(const File& file, Remains remains, Random& random) const;
    static void change(std::map<std::string, int>& names, const Operation& operation);

    std::map<int, File> m_files;
    std::map<std::string, int> m_names;
    std::vector<Operation> m_unsyncedNames;
    bool m_ignoreSyncs = false;
};

}  // namespace tarvo::trial
