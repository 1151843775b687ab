// Manual pages: texts in the man(7) macros.
#pragma once

#include "cli/description.h"

#include <string>
#include <vector>

namespace tarvo::cli {

// The page qrbtool(1): the commands, the options that all have, and the ends of the program.
std::string programPage(const DescribedCommand& program,
                        const std::vector<DescribedOption>& general);
// The page qrbtool-COMMAND(1): a command with its subcommands.
std::string commandPage(const DescribedCommand& command);

}  // namespace tarvo::cli
