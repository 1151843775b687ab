// The subcommands of a command that works on a database.
#pragma once

#include "cli/commands.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <utility>

namespace tarvo::cli {

// They share one set of options, which lives as long as the command line.
template <typename Options>
class Actions {
public:
    // Both must outlive the parsing of the command line.
    Actions(CLI::App& command, Invocation& invocation)
        : m_command(command), m_invocation(invocation), m_options(std::make_shared<Options>()) {}

    // To bind words of the command line to.
    Options* operator->() const { return m_options.get(); }

    // work: is called with the open Database& and the const Options&.
    template <typename Work>
    CLI::App* add(const char* name, const char* description, Work work) const {
        CLI::App* const action = m_command.add_subcommand(name, description);
        action->callback([run = withOptions(std::move(work)), &invocation = m_invocation] {
            invocation.work = run;
        });
        return action;
    }

    // What the command does where none of them is named.
    template <typename Work>
    void otherwise(Work work) const {
        m_command.require_subcommand(0, 1);
        m_command.callback(
            [run = withOptions(std::move(work)), &command = m_command, &invocation = m_invocation] {
                if (command.get_subcommands().empty()) {
                    invocation.work = run;
                }
            });
    }

private:
    template <typename Work>
    auto withOptions(Work work) const {
        return [work = std::move(work), options = m_options](Database& database) {
            work(database, std::as_const(*options));
        };
    }

    CLI::App& m_command;
    Invocation& m_invocation;
    std::shared_ptr<Options> m_options;
};

}  // namespace tarvo::cli
