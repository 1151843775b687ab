#include "cli/importinputs.h"

#include "cli/errors.h"
#include "cli/inputs.h"
#include "cli/terminal.h"
#include "exchange/format.h"
#include "exchange/inputfile.h"
#include "exchange/sourceopener.h"
#include "files/identity.h"
#include "files/listing.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>

namespace tarvo::cli {

namespace {

struct StepLine {
    std::string label;
    std::optional<ProgressLine> line;
};

bool isSameFormat(const std::string& found, const std::string& wanted) {
    return wanted.empty() || found == wanted || (found == "las" && wanted == "laz");
}

// Opens a file; what is wrong with one that only its folder named need not end an import.
std::unique_ptr<exchange::PointSource> openNamed(exchange::SourceOpener& opener,
                                                 const std::string& fileName, bool isNamed,
                                                 const exchange::OpenProgress& progress) {
    try {
        return opener.open(fileName, progress);
    } catch (const UsageError&) {
        throw;
    } catch (const Interrupted&) {
        throw;
    } catch (const Failure& failure) {
        if (isNamed) {
            throw;
        }
        throw Failure(failure.what(), failure.details() + (failure.details().empty() ? "" : "\n") +
                                          "To go without this file, name those that are wanted in "
                                          "place of their folder.");
    }
}

// The files of a folder that are point clouds, sorted by name.
std::vector<std::string> filesOf(const std::string& folder, const std::string& format) {
    std::vector<std::string> names = files::namesIn(folder);
    std::sort(names.begin(), names.end());
    std::vector<std::string> found;
    std::string passedOver;
    std::size_t passedOverCount = 0;
    constexpr std::size_t shown = 5;
    for (const std::string& name : names) {
        const std::string file = (std::filesystem::path(folder) / name).string();
        std::error_code error;
        if (std::filesystem::is_regular_file(file, error)) {
            const exchange::FileKind kind = exchange::kindOfFile(file);
            if (kind.isCertain && !kind.format.empty() && isSameFormat(kind.format, format)) {
                found.push_back(file);
                continue;
            }
        }
        if (++passedOverCount <= shown) {
            passedOver += (passedOver.empty() ? "" : ", ") + name;
        }
    }
    if (passedOverCount > shown) {
        passedOver += " and " + std::to_string(passedOverCount - shown) + " more";
    }
    if (found.empty()) {
        throw Failure("There is no point cloud in the folder \"" + folder + "\".",
                      passedOver.empty() ? "" : "Passed over: " + passedOver + ".");
    }
    if (!passedOver.empty()) {
        note("Passed over in \"" + folder + "\": " + passedOver + ".");
    }
    return found;
}

std::vector<std::string> filesOf(const InputOptions& inputs) {
    std::vector<std::string> fileNames;
    for (const std::string& name : inputs.names) {
        std::error_code error;
        if (name == exchange::standardInput) {
            if (std::count(fileNames.begin(), fileNames.end(), name) > 0) {
                throw UsageError("Standard input can be read once only.");
            }
            exchange::keepStandardInput(checkInterrupted);
        } else if (std::filesystem::is_directory(name, error)) {
            const std::vector<std::string> found = filesOf(name, inputs.format);
            fileNames.insert(fileNames.end(), found.begin(), found.end());
            continue;
        }
        fileNames.push_back(name);
    }
    return fileNames;
}

exchange::ColumnChoice choiceOf(const std::string& text) {
    try {
        return exchange::choiceFromText(text);
    } catch (const Failure& failure) {
        throw UsageError(failure.what(), failure.details());
    }
}

}  // namespace

void InputOptions::add(CLI::App& command) {
    const auto known = exchange::formatNames();
    command
        .add_option("--format", format, "Format of the inputs (default: what their content tells)")
        ->check(CLI::IsMember(std::vector<std::string>(known.begin(), known.end())));
    command
        .add_option("--columns", columns,
                    "Names of the columns of texts without a header line, separated by commas;\n"
                    "\"-\" passes one over")
        ->type_name("NAMES")
        ->delimiter(',')
        ->allow_extra_args(false);
    command
        .add_option_function<std::vector<std::string>>(
            "--map",
            [this](const std::vector<std::string>& texts) {
                for (const std::string& text : texts) {
                    map.push_back(choiceOf(text));
                }
            },
            "Attribute, or element of one, that a column of the files goes to; \"-\" leaves the\n"
            "column out; may stand several times")
        ->type_name("COLUMN=ATTRIBUTE")
        ->allow_extra_args(false);
}

void refuseAsInput(const std::string& database, const std::vector<std::string>& fileNames) {
    for (const std::string& fileName : fileNames) {
        if (files::sameFile(fileName, database)) {
            throw UsageError("\"" + database + "\" is an input and the output.");
        }
    }
}

void checkInputs(const InputOptions& inputs) {
    for (const std::string& name : inputs.names) {
        std::error_code error;
        if (name != exchange::standardInput && !std::filesystem::is_directory(name, error)) {
            (void)exchange::sourceFormat(name, inputs.format, inputs.columns);
        }
    }
}

exchange::PointSources openSources(const InputOptions& inputs) {
    std::vector<std::shared_ptr<exchange::PointSource>> sources;
    const exchange::ImportProgress progress = importProgress();
    exchange::SourceOpener opener(inputs.format, inputs.columns);
    for (const std::string& fileName : filesOf(inputs)) {
        noteInput(fileName);
        sources.push_back(openNamed(
            opener, fileName, std::ranges::find(inputs.names, fileName) != inputs.names.end(),
            [&](double fraction) { progress("Opening " + fileName, fraction); }));
    }
    return exchange::mapped(sources, inputs.map);
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

exchange::ImportListener importListener() {
    return {importProgress(), [](const std::vector<std::string>& notes) { note(notes); }};
}

}  // namespace tarvo::cli
