// What comes from a plugin, for a terminal or a script.
#pragma once

#include "cli/terminal.h"
#include "plugin/run.h"

#include <string>
#include <vector>

namespace tarvo::cli {

// The scripts that this program runs plugins with.
std::vector<plugin::Script> embeddedScripts();

// Writes texts and tables to standard output, or all results into a folder as files
// "1 Title.csv"; prints what the script prints to standard error, and shows progress there.
class PluginAnswer : public plugin::Listener {
public:
    // folder: empty for none. Throws Failure where it can't be made.
    PluginAnswer(const std::string& title, const std::string& folder);

    void printed(std::string_view text) override;
    void progressed(double fraction, const std::string& text) override;
    void resulted(plugin::Result result) override;
    bool cancelled() override { return interruptSignal() != 0; }

    // What kept a result from being written, in lines; empty: nothing.
    const std::string& problem() const { return m_problem; }

private:
    void keep(const plugin::Result& result);
    void show(const plugin::Result& result);

    std::string m_folder;
    ProgressLine m_progress;
    int m_number = 0;
    std::string m_problem;
};

}  // namespace tarvo::cli
