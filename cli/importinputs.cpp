#include "cli/importinputs.h"

#include "cli/inputs.h"
#include "cli/terminal.h"
#include "files/identity.h"

#include <memory>
#include <optional>

namespace tarvo::cli {

namespace {

struct StepLine {
    std::string label;
    std::optional<ProgressLine> line;
};

}  // namespace

void refuseAsInput(const std::string& database, const std::vector<std::string>& fileNames) {
    for (const std::string& fileName : fileNames) {
        if (files::sameFile(fileName, database)) {
            throw UsageError("\"" + database + "\" is an input and the output.");
        }
    }
}

exchange::PointSources openSources(const std::vector<std::string>& fileNames,
                                   const std::string& format) {
    exchange::PointSources sources;
    for (const std::string& fileName : fileNames) {
        noteInput(fileName);
        sources.push_back(exchange::openSource(fileName, format));
    }
    return sources;
}

exchange::ImportProgress importProgress() {
    return [step = std::make_shared<StepLine>()](const std::string& label, double fraction) {
        if (!step->line || step->label != label) {
            step->label = label;
            step->line.emplace(label);
        }
        step->line->update(fraction);
    };
}

}  // namespace tarvo::cli
