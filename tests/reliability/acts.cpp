#include "tests/reliability/acts.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <random>
#include <stdexcept>

// The main function of qrbtool.
int qrbtoolMain(int argc, char** argv);

namespace tarvo::trial {

namespace {

void writePoints(const std::string& file, int count, unsigned seed) {
    std::mt19937 random(seed);
    std::ofstream stream(file);
    stream << "x,y,z,tarvo.intensity,tarvo.class,quality\n";
    for (int i = 0; i < count; ++i)
        stream << random() % 20000 / 100.0 << "," << random() % 20000 / 100.0 << ","
               << random() % 500 / 100.0 << "," << random() % 4000 << "," << random() % 9 << ","
               << random() % 1000 / 1000.0 << "\n";
}

// Takes as many bytes in the database.
void writeLargeItem(const std::string& file, std::size_t size, unsigned seed) {
    std::mt19937 random(seed);
    std::string text(size, '"');
    for (std::size_t i = 1; i + 1 < size; ++i)
        text[i] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+-"[random() % 64];
    std::ofstream(file) << text;
}

}  // namespace

std::vector<Act> actsIn(const std::string& folder, const std::string& inputs) {
    const std::string a = inputs + "/a.csv";
    const std::string b = inputs + "/b.csv";
    writePoints(a, 700, 1);
    writePoints(b, 500, 2);
    writeLargeItem(inputs + "/large1.json", 13'000'000, 3);
    writeLargeItem(inputs + "/large2.json", 12'000'000, 4);
    const std::string file = folder + "/survey.qrbx";
    const std::string other = folder + "/other.qrbx";
    const std::string table = folder + "/points.csv";

    const CommandLine import{"import", a, file};
    const CommandLine append{"import", b, file, "--append"};
    const CommandLine classify{"update",        file,       "--set",
                               "tarvo.class=2", "--filter", "tarvo.xyz[2] < 2"};
    // More than a quarter of what the import has stored is dead once that is forgotten.
    const CommandLine refill{"update",         file, "--set", "tarvo.intensity=7", "--set",
                             "csv.quality=0.5"};
    const CommandLine note{"metadata", file, "set", "note", "{\"text\": \"checked\"}"};
    const CommandLine restore{"transactions", file, "restore", "3"};
    const CommandLine discard{"transactions", file, "discard", "3", "4"};
    const CommandLine detail{"lod", file, "set", "--mode", "thinout", "--size", "20"};
    const CommandLine vacuum{"vacuum", file};
    const CommandLine largeItems{"transactions",
                                 "run",
                                 file,
                                 "--title",
                                 "large",
                                 "metadata set large1 @" + inputs + "/large1.json",
                                 "metadata set large2 @" + inputs + "/large2.json"};
    const std::vector<CommandLine> history{import, append, classify, note};
    return {
        {"create", {}, {{"schema", "create", file, "--schema", "sdcx"}}},
        {"import", {}, {import}},
        {"append", {import}, {append}},
        {"update", {import}, {classify}},
        {"remove points", {import}, {{"remove", file, "--filter", "tarvo.class == 3"}}},
        {"metadata", {import}, {note, {"metadata", file, "remove", "note"}}},
        {"attributes",
         {import},
         {{"attributes", file, "duplicate", "csv.quality", "quality2"},
          {"attributes", file, "remove", "csv.quality"}}},
        {"several batches", {import}, {largeItems}, true},
        {"discard", history, {discard, {"finalize", file}}},
        {"restore", history, {restore, {"transactions", file, "restore", "5"}}},
        {"vacuum", {import, append, classify, note, discard}, {vacuum}},
        {"vacuum of parts",
         {import, refill, {"finalize", file}},
         {vacuum, {"update", file, "--set", "csv.quality=0.25"}, {"finalize", file}, vacuum}},
        {"vacuum of batches",
         {import,
          largeItems,
          {"transactions", file, "restore", "1"},
          {"transactions", file, "discard", "3"}},
         {vacuum},
         true},
        {"level of detail", {import, append}, {detail, {"lod", file, "off"}}},
        {"overwrite", {import, note}, {{"import", b, file, "--overwrite"}}},
        {"copy", {import, note, {"import", b, other}}, {{"copy", file, other, "--overwrite"}}},
        {"export",
         {import, {"select", file, "--format", "csv", "-o", table}},
         {{"select", file, "--format", "csv", "-o", table, "--filter", "tarvo.class == 3"}}},
        {"changelog",
         {import},
         {{"changelog", file, "append", "Checked."},
          {"changelog", file, "export", folder + "/changelog.txt"}}},
        {"a day's work", {import}, {append, classify, note, discard, vacuum, detail, note, vacuum}},
    };
}

int runTool(const CommandLine& words, std::string& output) {
    std::vector<std::string> texts{"qrbtool", "--library", QRBLIB_FILE};
    texts.insert(texts.end(), words.begin(), words.end());
    std::vector<char*> argv;
    for (std::string& text : texts)
        argv.push_back(text.data());
    argv.push_back(nullptr);

    static const int file = ::memfd_create("output", MFD_CLOEXEC);
    if (::ftruncate(file, 0) != 0 || ::lseek(file, 0, SEEK_SET) != 0)
        throw std::runtime_error("The file for outputs can't be used.");
    std::fflush(nullptr);
    const int out = ::dup(STDOUT_FILENO);
    const int error = ::dup(STDERR_FILENO);
    ::dup2(file, STDOUT_FILENO);
    ::dup2(file, STDERR_FILENO);
    const int code = qrbtoolMain(static_cast<int>(texts.size()), argv.data());
    std::fflush(nullptr);
    ::dup2(out, STDOUT_FILENO);
    ::dup2(error, STDERR_FILENO);
    ::close(out);
    ::close(error);

    output.resize(static_cast<std::size_t>(::lseek(file, 0, SEEK_END)));
    if (::pread(file, output.data(), output.size(), 0) != static_cast<ssize_t>(output.size()))
        throw std::runtime_error("The output can't be read.");
    return code;
}

void runTools(const std::vector<CommandLine>& lines) {
    std::string output;
    for (const CommandLine& line : lines)
        if (runTool(line, output) != 0)
            throw std::runtime_error("qrbtool " + line.front() + ": " + output);
}

}  // namespace tarvo::trial
