#include "plugin/package.h"

#include "core/error.h"
#include "files/listing.h"
#include "files/path.h"

#include <openssl/evp.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <new>
#include <system_error>
#include <utility>

namespace tarvo::plugin {

namespace {

namespace fs = std::filesystem;
using core::Failure;

constexpr const char* manifestName = "plugin.json";

std::string bytesOf(const fs::path& file, std::size_t limit) {
    std::error_code error;
    // A pipe would wait for its writer.
    if (!fs::is_regular_file(file, error))
        throw Failure("\"" + files::nameOf(file) + "\" is no file.", error.message());
    const std::uintmax_t size = fs::file_size(file, error);
    std::ifstream stream(file, std::ios::binary);
    if (error || !stream)
        throw Failure("Failed to read \"" + files::nameOf(file) + "\".",
                      error ? error.message() : "It can't be opened.");
    if (size > limit)
        throw Failure("The plugin is too large.",
                      "It may have " + std::to_string(packageByteLimit >> 20) + " MiB in all.");
    std::string bytes(size, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(size));
    if (static_cast<std::uintmax_t>(stream.gcount()) != size)
        throw Failure("Failed to read \"" + files::nameOf(file) + "\".", "It became shorter.");
    return bytes;
}

class Reader {
public:
    void addFolder(const fs::path& folder, const std::string& prefix) {
        std::vector<std::string> names = files::namesIn(files::nameOf(folder));
        std::sort(names.begin(), names.end());
        for (const std::string& name : names) {
            const fs::path path = folder / files::pathOf(name);
            std::error_code error;
            const fs::file_status status = fs::symlink_status(path, error);
            if (name.starts_with('.') || name == "__pycache__" || error)
                continue;
            if (fs::is_directory(status))
                addFolder(path, prefix + name + "/");
            else if (fs::is_regular_file(status))
                addFile(path, prefix + name);
        }
    }

    void addFile(const fs::path& path, const std::string& name) {
        if (m_files.size() == packageFileLimit)
            throw Failure("The plugin is too large.",
                          "It may have " + std::to_string(packageFileLimit) + " files.");
        m_files.push_back({name, bytesOf(path, packageByteLimit - m_bytes)});
        m_bytes += m_files.back().bytes.size();
    }

    std::vector<PackageFile> take() { return std::move(m_files); }

private:
    std::vector<PackageFile> m_files;
    std::size_t m_bytes = 0;
};

const PackageFile* find(const std::vector<PackageFile>& files, const std::string& name) {
    const auto file = std::find_if(files.begin(), files.end(),
                                   [&name](const PackageFile& one) { return one.name == name; });
    return file == files.end() ? nullptr : &*file;
}

// The JSON between "# /// plugin" and "# ///"; none where a script does not begin with it, behind
// other comments and empty lines.
std::optional<std::string> manifestInScript(const std::string& script) {
    std::string json;
    bool within = false;
    for (std::string_view rest = script; !rest.empty();) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (within && line == "# ///")
            return json;
        if (line == "# /// plugin")
            within = true;
        else if (within && line.starts_with('#'))
            json.append(line.substr(1)).push_back('\n');
        else if (within || (!line.empty() && !line.starts_with('#')))
            break;
    }
    return std::nullopt;
}

// Of each file the length of its name, its name, the length of its bytes and its bytes, so that no
// two packages have the same.
std::string fingerprintOf(const std::vector<PackageFile>& files) {
    const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> digest(EVP_MD_CTX_new(),
                                                                         EVP_MD_CTX_free);
    const auto require = [](int good) {
        if (good != 1)
            throw std::bad_alloc();
    };
    require(digest ? 1 : 0);
    require(EVP_DigestInit_ex(digest.get(), EVP_sha256(), nullptr));
    const auto add = [&](const std::string& bytes) {
        const std::string length = std::to_string(bytes.size()) + ":";
        require(EVP_DigestUpdate(digest.get(), length.data(), length.size()));
        require(EVP_DigestUpdate(digest.get(), bytes.data(), bytes.size()));
    };
    for (const PackageFile& file : files) {
        add(file.name);
        add(file.bytes);
    }
    unsigned char result[EVP_MAX_MD_SIZE];
    unsigned length = 0;
    require(EVP_DigestFinal_ex(digest.get(), result, &length));
    std::string text;
    for (unsigned i = 0; i < length; ++i)
        for (const int digit : {result[i] >> 4, result[i] & 15})
            text += "0123456789abcdef"[digit];
    return text;
}

Package readScript(const fs::path& path) {
    Package package;
    Reader reader;
    const std::string name = files::nameOf(path.filename());
    reader.addFile(path, name);
    package.files = reader.take();
    const std::optional<std::string> json = manifestInScript(package.files.front().bytes);
    if (!json)
        throw Failure("The script has no manifest.",
                      "It should begin with the comment \"# /// plugin\".");
    package.manifest = readManifest(*json);
    package.manifest.script = name;
    return package;
}

Package readFolder(const fs::path& path) {
    Package package;
    Reader reader;
    reader.addFolder(path, {});
    package.files = reader.take();
    const PackageFile* const manifest = find(package.files, manifestName);
    if (manifest == nullptr)
        throw Failure("The folder has no manifest.", "A file \"plugin.json\" is missing.");
    package.manifest = readManifest(manifest->bytes);
    if (find(package.files, package.manifest.script) == nullptr)
        throw Failure("The plugin has no script.",
                      "A file \"" + package.manifest.script + "\" is missing.");
    return package;
}

bool looksLikePlugin(const fs::path& path) {
    std::error_code error;
    if (fs::is_directory(path, error))
        return fs::exists(path / manifestName, error);
    if (path.extension() != ".py" || !fs::is_regular_file(path, error))
        return false;
    std::ifstream stream(path, std::ios::binary);
    std::string head(4096, '\0');
    stream.read(head.data(), static_cast<std::streamsize>(head.size()));
    return head.find("# /// plugin") != std::string::npos;
}

}  // namespace

Package readPackage(const std::string& place) {
    const fs::path path = fs::absolute(files::pathOf(place)).lexically_normal();
    std::error_code error;
    Package package = fs::is_directory(path, error) ? readFolder(path) : readScript(path);
    package.place = files::nameOf(path);
    package.fingerprint = fingerprintOf(package.files);
    return package;
}

std::vector<Found> findPlugins(const std::string& folder) {
    const fs::path path = files::pathOf(folder);
    std::error_code error;
    if (!fs::is_directory(path, error))
        throw Failure("There is no folder \"" + folder + "\".", "Plugins are looked for in it.");
    std::vector<Found> found;
    for (const std::string& name : files::namesIn(folder)) {
        const fs::path place = path / files::pathOf(name);
        if (name.starts_with('.') || !looksLikePlugin(place))
            continue;
        Found one{files::nameOf(place), std::nullopt, {}};
        try {
            one.manifest = readPackage(one.place).manifest;
        } catch (const Failure& failure) {
            one.problem = std::string(failure.what()) + " " + failure.details();
        }
        found.push_back(std::move(one));
    }
    const auto order = [](const Found& one) {
        return std::make_tuple(!one.manifest, one.manifest ? one.manifest->title : std::string(),
                               one.place);
    };
    std::sort(found.begin(), found.end(),
              [&order](const Found& a, const Found& b) { return order(a) < order(b); });
    std::map<std::string, std::string> places;
    for (Found& one : found) {
        if (!one.manifest)
            continue;
        const auto [first, added] = places.emplace(one.manifest->name, one.place);
        if (!added) {
            one.problem =
                "\"" + first->second + "\" has the name \"" + one.manifest->name + "\", too.";
            one.manifest.reset();
        }
    }
    std::stable_sort(found.begin(), found.end(), [](const Found& a, const Found& b) {
        return a.manifest.has_value() > b.manifest.has_value();
    });
    return found;
}

std::string pluginFolder(const std::string& pluginPath) {
    const fs::path path = files::pathOf(pluginPath);
    if (path.is_absolute())
        return pluginPath;
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error).parent_path();
    const fs::path beside = program / path;
    const fs::path shared = program.parent_path() / "share" / "qrbadmin" / path;
    return files::nameOf(
        !fs::is_directory(beside, error) && fs::is_directory(shared, error) ? shared : beside);
}

}  // namespace tarvo::plugin
