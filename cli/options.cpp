#include "cli/options.h"

#include "cli/number.h"

namespace tarvo::cli {

CLI::Option* addFilter(CLI::App& command, std::string& filter) {
    return command
        .add_option("-f,--filter", filter,
                    "Expression that the points satisfy (default: all points)")
        ->type_name("EXPRESSION")
        ->check(notEmpty());
}

CLI::Option* addNodes(CLI::App& command, std::string& nodes, const std::string& description) {
    return command.add_option("--nodes", nodes, description + ", for example \"1,3-5\"")
        ->type_name("IDS")
        ->check(notEmpty());
}

}  // namespace tarvo::cli
