// qrbtool: makes, fills, describes and reads database files from the command line.

#include "cli/advice.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errorreport.h"
#include "cli/errors.h"
#include "cli/help.h"
#include "cli/output.h"
#include "cli/parsefault.h"
#include "cli/terminal.h"
#include "cli/wordorder.h"
#include "qrb/error.h"
#include "qrb/loader.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::cli {

namespace {

enum ExitCode { succeeded = 0, negative = 1, wrongUsage = 2 };

void report(std::string_view text, std::string_view details = {},
            std::optional<std::int32_t> code = std::nullopt) {
    reportError(text, details, manner().json, code);
}

void loadLibrary(const std::string& library) {
    if (const char* const message = qrb::load(library.empty() ? nullptr : library.c_str())) {
        throw Failure(message, library.empty()
                                   ? "It was looked for beside the program, in the folder of "
                                     "libraries that it was\ninstalled with, then where the "
                                     "system looks for libraries.\nName it with --library."
                                   : "The file was \"" + library + "\".");
    }
}

void perform(const std::string& library, const Invocation& invocation) {
    if (invocation.alone) {
        invocation.alone();
        return;
    }
    loadLibrary(library);
    const qrb::Context context("OFF", "");
    if (manner().verbose) {
        note("Library: " + context.libraryVersion() + ", \"" + context.libraryFilename() + "\"");
    }
    const qrb::InterruptGuard interruptible(context, [] { return interruptSignal() == 0; });
    if (invocation.work) {
        Database database(context, invocation.file);
        invocation.work(database);
    } else {
        invocation.run(context);
    }
}

int runGuarded(const std::string& library, const Invocation& invocation) {
    const auto begin = std::chrono::steady_clock::now();
    try {
        perform(library, invocation);
        noteStep("Done", begin);
        return succeeded;
    } catch (const qrb::Error& error) {
        if (error.code() == QRB_ERROR_CANCELLED && interruptSignal() != 0) {
            report(Interrupted().what());
        } else {
            report(error.what(), error.details() ? error.details() : "", error.code());
        }
    } catch (const UsageError& error) {
        report(error.what(), error.details());
        return wrongUsage;
    } catch (const NegativeAnswer&) {
        noteStep("Done", begin);
        return negative;
    } catch (const Failure& error) {
        report(error.what(), error.details());
    } catch (const std::bad_alloc&) {
        report("Out of memory.");
    } catch (const std::exception& error) {
        report(error.what());
    }
    return invocation.failureCode;
}

// Whether the words ask for JSON. Where the parser gave up before it came to the word it is looked
// for; some subcommands have another option of this name.
bool asksForJson(const CLI::App& app, const std::vector<std::string>& words) {
    if (app.get_option("--json")->count() > 0) {
        return true;
    }
    const CLI::App* const last = parsedCommands(app).back();
    const bool isTaken = last != &app && last->get_option_no_throw("--json") != nullptr;
    const auto end = std::find(words.begin(), words.end(), "--");
    return !isTaken && std::find(words.begin(), end, "--json") != end;
}

// Where the command line asks for nothing but help or the version, answers and returns true.
bool answered(const CLI::App& app, const CLI::ParseError& error) {
    if (dynamic_cast<const CLI::CallForHelp*>(&error) != nullptr) {
        printText(helpOf(*parsedCommands(app).back()));
        return true;
    }
    if (dynamic_cast<const CLI::CallForVersion*>(&error) != nullptr) {
        printText(agentText() + "\n");
        return true;
    }
    return false;
}

void parse(CLI::App& app, const std::vector<std::string>& words, const Invocation& invocation) {
    std::vector<std::string> ordered =
        inParserOrder(app, std::vector<std::string>(words.begin() + 1, words.end()));
    std::ranges::reverse(ordered);
    app.parse(std::move(ordered));
    if (invocation.manner.quiet && invocation.manner.verbose) {
        throw CLI::ExcludesError("--quiet", "--verbose");
    }
    if (invocation.work && invocation.file.empty()) {
        throw CLI::RequiredError("The name of the database");
    }
    refuseMistypedSubcommand(app);
}

int run(int argc, char** argv) {
    CLI::App app("Makes, describes, reads and changes point-cloud database files.", "qrbtool");
    Invocation invocation;
    std::string library;
    describeProgram(app, invocation, library);
    const std::vector<std::string> words(argv, argv + argc);
    try {
        parse(app, words, invocation);
    } catch (const CLI::ParseError& error) {
        invocation.manner.json = asksForJson(app, words);
        const MannerScope scope(invocation.manner);
        if (answered(app, error)) {
            return succeeded;
        }
        const UsageError fault = faultOf(app, error, words);
        report(fault.what(), fault.details());
        return wrongUsage;
    } catch (const UsageError& error) {
        reportError(error.what(), error.details(), asksForJson(app, words));
        return wrongUsage;
    }
    const MannerScope scope(invocation.manner);
    if (app.get_subcommands().empty()) {
        // As other programs do that have commands: the help is no answer to anything.
        manner().json ? report("No command is given.", "Run \"qrbtool help\" for the commands.")
                      : static_cast<void>(std::fputs(helpOf(app).c_str(), stderr));
        return wrongUsage;
    }
    watchInterrupts();
#if defined(SIGPIPE)
    // A reader that has seen enough ends the output, not the program in the middle of its work.
    std::signal(SIGPIPE, SIG_IGN);
#endif
#if defined(SIGXFSZ)
    // A limit of the file size is an error of the write that meets it.
    std::signal(SIGXFSZ, SIG_IGN);
#endif
    return runGuarded(library, invocation);
}

}  // namespace

}  // namespace tarvo::cli

int main(int argc, char** argv) {
    tarvo::cli::takeStandardFiles();
    tarvo::cli::setAdvice();
    const int code = tarvo::cli::run(argc, argv);
    if (const int number = tarvo::cli::interruptSignal(); number != 0 && code != 0) {
        // End as the signal would have ended it, so that the caller sees that.
        std::signal(number, SIG_DFL);
        std::raise(number);
    }
    return code;
}
