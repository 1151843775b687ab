#include "cli/manner.h"

#include "numbers/sizetext.h"

#include <CLI/CLI.hpp>

namespace tarvo::cli {

namespace {

Manner s_manner;

}  // namespace

const char* const generalGroup = "Options of all commands";

const Manner& manner() {
    return s_manner;
}

MannerScope::MannerScope(const Manner& manner) : m_before(s_manner) {
    s_manner = manner;
}

MannerScope::~MannerScope() {
    s_manner = m_before;
}

Manner added(const Manner& all, const Manner& own) {
    Manner both = all;
    both.quiet = all.quiet || own.quiet;
    both.verbose = (all.verbose || own.verbose) && !both.quiet;
    both.json = all.json || own.json;
    both.bytes = all.bytes || own.bytes;
    return both;
}

void addMannerOptions(CLI::App& app, Manner& manner) {
    app.add_flag("-q,--quiet", manner.quiet,
                 "Write neither notes nor progress, only results and errors")
        ->group(generalGroup);
    app.add_flag("-v,--verbose", manner.verbose, "Tell what is being done, and how long it takes")
        ->group(generalGroup);
    app.add_flag("--json", manner.json, "Write JSON, for programs: results, notes and errors")
        ->group(generalGroup);
    app.add_flag("--bytes", manner.bytes, "Write sizes in bytes, to the last one")
        ->group(generalGroup);
}

void addCacheOption(CLI::App& app, Manner& manner) {
    app.add_option_function<std::string>(
           "--cache",
           [&manner](const std::string& text) {
               manner.cacheSize = numbers::sizeOfText(text);
               if (!manner.cacheSize) {
                   throw CLI::ValidationError(
                       "--cache", "\"" + text + "\" is no size; it is written as 64M, 1G or bytes");
               }
           },
           "Memory for what is read of each database that is opened, for example 64M or 1G; a new\n"
           "one has that of its settings (default: as the library proposes)")
        ->type_name("SIZE")
        ->group(generalGroup);
}

}  // namespace tarvo::cli
