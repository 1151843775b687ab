// The files that an import is told to read.
#pragma once

#include "cli/errors.h"
#include "exchange/import/importrun.h"
#include "exchange/table/columnmap.h"

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tarvo::cli {

// What the words after the command tell of the inputs.
struct InputOptions {
    std::vector<std::string> names;    // files, folders, "-" for standard input
    std::string format;                // one of exchange::formatNames(), or empty
    std::vector<std::string> columns;  // names, for texts without a header line
    exchange::ColumnMap map;

    // Adds --format, --columns and --map to a command.
    void add(CLI::App& command);
};

// Throws UsageError if one of the files is the database, by whatever name.
void refuseAsInput(const std::string& database, const std::vector<std::string>& fileNames);

// Refuses inputs that are not there or no point clouds, as far as their beginnings show. Throws
// Failure.
void checkInputs(const InputOptions& inputs);

// Opens the files, and of a folder those that are point clouds by their content, in the order of
// their names; what is passed over there is told on standard error. Throws Failure if one can't be
// read or there are none, UsageError for standard input named twice.
exchange::PointSources openSources(const InputOptions& inputs);

// A progress line for each step of an import; the last one is gone with the function and its
// copies.
exchange::ImportProgress importProgress();
// The same, and notes on standard error.
exchange::ImportListener importListener();

}  // namespace tarvo::cli
