// qrbtool: makes, fills, describes and reads database files from the command line.

#include "cli/advice.h"
#include "cli/commands.h"
#include "cli/database.h"
#include "cli/errors.h"
#include "cli/key.h"
#include "cli/terminal.h"
#include "cli/text.h"
#include "qrb/error.h"
#include "qrb/loader.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace tarvo::cli {

namespace {

enum ExitCode { succeeded = 0, negative = 1, wrongUsage = 2 };

// "qrbtool: text", then the details, indented. Both may hold texts from files.
void reportError(const char* text, std::string_view unsafeDetails) {
    const std::string safeDetails = printable(unsafeDetails);
    std::string_view details = safeDetails;
    std::fprintf(stderr, "qrbtool: %s\n", oneLine(text ? text : "unknown").c_str());
    while (!details.empty()) {
        const std::size_t end = details.find('\n');
        const std::string_view line = details.substr(0, end);
        std::fprintf(stderr, "    %.*s\n", static_cast<int>(line.size()), line.data());
        details.remove_prefix(end == std::string_view::npos ? details.size() : end + 1);
    }
}

int runGuarded(const std::string& library, const Invocation& invocation) {
    try {
        if (const char* message = qrb::load(library.empty() ? nullptr : library.c_str())) {
            reportError(message, library.empty()
                                     ? "It was looked for beside the program, in the folder "
                                       "of libraries that it was\ninstalled with, then where the "
                                       "system looks for libraries.\nName it with --library."
                                     : "The file was \"" + library + "\".");
            return invocation.failureCode;
        }
        const qrb::Context context("OFF", "");
        const qrb::InterruptGuard interruptible(context, [] { return interruptSignal() == 0; });
        if (invocation.work) {
            Database database(context, invocation.file);
            invocation.work(database);
        } else {
            invocation.run(context);
        }
        return succeeded;
    } catch (const qrb::Error& error) {
        if (error.code() == QRB_ERROR_CANCELLED && interruptSignal() != 0) {
            reportError(Interrupted().what(), "");
        } else {
            reportError(error.what(), error.details() ? error.details() : "");
        }
    } catch (const UsageError& error) {
        reportError(error.what(), error.details());
        return wrongUsage;
    } catch (const NegativeAnswer&) {
        return negative;
    } catch (const Failure& error) {
        reportError(error.what(), error.details());
    } catch (const std::bad_alloc&) {
        reportError("Out of memory.", "");
    } catch (const std::exception& error) {
        reportError(error.what(), "");
    }
    return invocation.failureCode;
}

// Shows the name of the database where it stands: "qrbtool metadata FILE get [OPTIONS] name".
class UsageFormatter : public CLI::Formatter {
public:
    std::string make_option_usage(const CLI::Option* option) const override {
        return option->get_name() == "file" ? "FILE" : CLI::Formatter::make_option_usage(option);
    }
    std::string make_usage(const CLI::App* app, std::string name) const override {
        const CLI::App* const parent = app->get_parent();
        if (parent != nullptr && parent->get_option_no_throw("file") != nullptr &&
            app->get_option_no_throw("file") == nullptr) {
            const std::size_t last = name.rfind(' ');
            name.insert(last == std::string::npos ? 0 : last, " FILE");
        }
        return CLI::Formatter::make_usage(app, name);
    }
};

int run(int argc, char** argv) {
    CLI::App app("Makes, describes, reads and changes point-cloud database files.", "qrbtool");
    app.set_version_flag("--version", agentText());
    app.require_subcommand(1);
    app.fallthrough();
    app.formatter(std::make_shared<UsageFormatter>());
    app.get_formatter()->column_width(30);
    std::string library;
    app.add_option("--library", library, "Database library to work with (default: qrblib)")
        ->type_name("FILE");
    Invocation invocation;
    addCommands(app, invocation);
    // Now, so that the commands don't take it over.
    app.footer(
        "Examples:\n"
        "  qrbtool sample -n 1000000 scan.qrbx\n"
        "  qrbtool import flight.las flight.qrbx\n"
        "  qrbtool info flight.qrbx\n"
        "  qrbtool select flight.qrbx --filter \"tarvo.class == 2\" --count\n"
        "  qrbtool select flight.qrbx --format csv -o points.csv\n"
        "  qrbtool update flight.qrbx --set tarvo.class=2 --filter \"tarvo.xyz[2] < 1\"\n"
        "\n"
        "qrbtool COMMAND --help tells more. The program ends with 0 for success, 1 for a failure "
        "or\n"
        "the answer \"no\" (a file that does not agree with its schema, a signature that is not\n"
        "valid, two databases that differ), and 2 for a wrong command line, or where diff fails.");
    try {
        app.parse(argc, argv);
        if (invocation.work && invocation.file.empty()) {
            throw CLI::RequiredError("The name of the database");
        }
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) {
            return app.exit(error);  // help and version
        }
        std::string text = withoutKeys(error.what(), {argv, argv + argc});
        if (!text.empty() && text.back() != '.') {
            text += '.';
        }
        reportError(text.c_str(), "Run \"qrbtool --help\" for the commands and their options.");
        return wrongUsage;
    } catch (const UsageError& error) {
        reportError(error.what(), error.details());
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
