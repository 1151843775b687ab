// Runs a plugin in a process of its own and tells what comes from it.
#pragma once

#include "plugin/interpreter.h"
#include "plugin/package.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::plugin {

struct Table {
    struct Column {
        std::string title;
        bool right = false;  // numbers stand right
    };
    std::vector<Column> columns;
    std::vector<std::vector<std::string>> rows;  // each as long as columns
};

// What a plugin gives as its answer, or a part of it.
struct Result {
    enum class Kind { TEXT, HTML, PICTURE, TABLE, FILE };
    Kind kind = Kind::TEXT;
    std::string title;
    std::string text;  // TEXT, HTML; PICTURE: the bytes of a PNG file; FILE: its name
    Table table;       // TABLE
};

// The table as CSV (RFC 4180, line breaks "\n").
std::string csvOf(const Table& table);

// Called on the thread that calls run().
class Listener {
public:
    virtual ~Listener() = default;
    // What the script prints, in pieces as they come; may be any bytes.
    virtual void printed(std::string_view text) = 0;
    // fraction: 0 to 1; text: what is being done, may be empty.
    virtual void progressed(double fraction, const std::string& text) = 0;
    virtual void resulted(Result result) = 0;
    // Asked several times a second; once true it has to stay so.
    virtual bool cancelled() = 0;
};

// A file of the scripts that programs bring along: the module "qrb" and the runner.
struct Script {
    std::string name;  // "qrb/__init__.py", "runner/main.py"
    std::string text;
};

// How long a plugin may take for what it was asked.
struct Patience {
    std::chrono::milliseconds cancel{5000};     // from being asked to stop until it is ended
    std::chrono::milliseconds terminate{3000};  // from then until it is killed
    std::chrono::milliseconds leave{5000};      // from its last word until it is gone
};

struct Request {
    const Package* package = nullptr;
    Interpreter interpreter;
    std::vector<Script> scripts;
    std::string library;    // the file of the database library
    std::string database;   // the file to work on
    std::string arguments;  // of argumentsOf()
    std::string agent;      // who runs it, for the transaction
    Patience patience = {};
};

struct Outcome {
    enum class End { DONE, FAILED, CANCELLED };
    End end = End::FAILED;
    std::string text;               // FAILED: what went wrong, one line
    std::string details;            // FAILED: further lines
    std::uint32_t transaction = 0;  // what was committed; 0 for nothing
};

// Runs the plugin and returns when its process is gone. The process opens the database itself; a
// plugin that writes does so in one transaction, which is committed when its function returns and
// rolled back otherwise, also when the process dies. Throws core::Failure and files::FileError
// where it can't be started.
Outcome run(const Request& request, Listener& listener);

}  // namespace tarvo::plugin
