#include "core/outputplace.h"

#include "files/identity.h"
#include "files/path.h"
#include "qrb/error.h"

#include <filesystem>
#include <fstream>

namespace tarvo::core {

namespace {

// Whether the file begins as those of scanners do; a table or report is never meant to replace one.
bool isScan(const std::string& fileName) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(files::pathOf(fileName), error))
        return false;
    std::string begin(8, '\0');
    std::ifstream(files::pathOf(fileName), std::ios::binary).read(begin.data(), 8);
    return begin.starts_with("LASF") || begin == "ASTM-E57";
}

const char* const advice = "Give the output another name.";

// In lower case, with its dot.
std::string extensionOf(const std::string& fileName) {
    std::string extension = files::nameOf(files::pathOf(fileName).extension());
    for (char& c : extension)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return extension;
}

}  // namespace

void checkPromise(const std::string& fileName, OutputKind kind) {
    if (kind == OutputKind::Scan || kind == OutputKind::Unknown)
        return;
    const std::string extension = extensionOf(fileName);
    std::vector<std::string> others = {".las", ".laz", ".ply", ".e57", ".ptx", ".pts", ".pcd"};
    if (kind == OutputKind::Database)
        others.insert(others.end(), {".csv", ".xyz", ".txt", ".json", ".html"});
    else
        others.push_back(".qrbx");
    for (const std::string& other : others)
        if (extension == other)
            throw qrb::ErrorImpl(0,
                                 "The output can't go to \"" + fileName +
                                     "\": a file of that name "
                                     "promises to be " +
                                     other.substr(1) + ".",
                                 advice);
}

void checkOutputPlace(const qrb::Context& context, const std::string& fileName,
                      const std::vector<std::string>& reads, OutputKind kind) {
    for (const std::string& read : reads)
        if (files::sameFile(fileName, read))
            throw qrb::ErrorImpl(
                0, "The output can't go to \"" + fileName + "\": that file is being read.", advice);
    if (context.databaseFileTypeCheck(fileName))
        throw qrb::ErrorImpl(
            0, "The output can't go to \"" + fileName + "\": that file is a database.", advice);
    if (const std::string journal = "-journal";
        fileName.ends_with(journal) &&
        context.databaseFileTypeCheck(fileName.substr(0, fileName.size() - journal.size())))
        throw qrb::ErrorImpl(
            0, "The output can't go to \"" + fileName + "\": that file belongs to a database.",
            advice);
    if (kind != OutputKind::Scan && isScan(fileName))
        throw qrb::ErrorImpl(0, "The output can't go to \"" + fileName + "\": that file is a scan.",
                             advice);
    checkPromise(fileName, kind);
}

}  // namespace tarvo::core
