#include "tests/reliability/platter.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace tarvo::trial {

namespace fs = std::filesystem;

namespace {

using Kind = Operation::Kind;

constexpr std::size_t sector = 512;

void write(std::string& content, std::size_t at, const char* bytes, std::size_t size) {
    if (content.size() < at + size)
        content.resize(at + size);
    content.replace(at, size, bytes, size);
}

void applyWhole(std::string& content, const Operation& operation) {
    if (operation.kind == Kind::Write)
        write(content, operation.at, operation.bytes.data(), operation.bytes.size());
    else
        content.resize(operation.at);
}

// What a part of one sector that was to be written is after the cut.
void writeTorn(std::string& content, std::size_t at, const char* bytes, std::size_t size,
               Random& random) {
    const std::size_t before = content.size();
    switch (random() % 8) {
        case 0:  // the first bytes only
            write(content, at, bytes, random() % size);
            break;
        case 1:  // the file has grown, but what is there was never written
            if (before < at + size) {
                content.resize(at + size);
                if (random() % 2)
                    std::generate(content.begin() + static_cast<std::ptrdiff_t>(before),
                                  content.end(), [&random] { return static_cast<char>(random()); });
            }
            break;
        default:
            break;
    }
}

}  // namespace

Platter::Platter(const std::string& folder) {
    for (const auto& entry : fs::directory_iterator(folder))
        m_names[entry.path().filename().string()] = 0;
    int last = 0;
    for (auto& [name, file] : m_names) {
        file = ++last;
        std::ifstream stream(fs::path(folder) / name, std::ios::binary);
        m_files[file].synced.assign(std::istreambuf_iterator<char>(stream), {});
    }
}

void Platter::change(std::map<std::string, int>& names, const Operation& operation) {
    switch (operation.kind) {
        case Kind::Create:
            names[operation.name] = operation.file;
            break;
        case Kind::Rename:
            names.erase(operation.name);
            names[operation.to] = operation.file;
            break;
        case Kind::Link:
            names[operation.to] = operation.file;
            break;
        default:
            names.erase(operation.name);
            break;
    }
}

void Platter::apply(const Operation& operation) {
    switch (operation.kind) {
        case Kind::Acknowledge:
            break;
        case Kind::Write:
        case Kind::Truncate:
            m_files[operation.file].unsynced.push_back(operation);
            break;
        case Kind::Sync:
            if (!m_ignoreSyncs) {
                File& file = m_files[operation.file];
                for (const Operation& each : file.unsynced)
                    applyWhole(file.synced, each);
                file.unsynced.clear();
            }
            break;
        case Kind::SyncFolder:
            if (!m_ignoreSyncs) {
                for (const Operation& each : m_unsyncedNames)
                    change(m_names, each);
                m_unsyncedNames.clear();
            }
            break;
        case Kind::Create:
            m_files[operation.file];
            [[fallthrough]];
        default:
            m_unsyncedNames.push_back(operation);
            break;
    }
}

std::string Platter::contentOf(const File& file, Remains remains, Random& random) const {
    std::string content = file.synced;
    const std::uint64_t part = 1 + random() % 9;  // of ten are there
    for (const Operation& each : file.unsynced) {
        if (remains == Remains::Everything || remains == Remains::DataOnly) {
            applyWhole(content, each);
        } else if (remains == Remains::Some && each.kind == Kind::Truncate) {
            if (random() % 10 < part)
                applyWhole(content, each);
        } else if (remains == Remains::Some) {
            for (std::size_t i = 0; i < each.bytes.size();) {
                const std::size_t at = each.at + i;
                const std::size_t size = std::min(sector - at % sector, each.bytes.size() - i);
                if (random() % 10 < part)
                    write(content, at, each.bytes.data() + i, size);
                else
                    writeTorn(content, at, each.bytes.data() + i, size, random);
                i += size;
            }
        }
    }
    return content;
}

void Platter::cut(const std::string& folder, Remains remains, Random& random) const {
    std::map<std::string, int> names = m_names;
    if (remains == Remains::Everything || remains == Remains::NamesOnly) {
        for (const Operation& each : m_unsyncedNames)
            change(names, each);
    } else if (remains == Remains::Some) {
        // A file system that keeps their order, or one that does not.
        const bool inOrder = random() % 2;
        for (const Operation& each : m_unsyncedNames) {
            if (random() % 3 != 0)
                change(names, each);
            else if (inOrder)
                break;
        }
    }
    for (const auto& entry : fs::directory_iterator(folder))
        fs::remove(entry.path());
    for (const auto& [name, file] : names) {
        const std::string content = contentOf(m_files.at(file), remains, random);
        std::ofstream(fs::path(folder) / name, std::ios::binary)
            .write(content.data(), static_cast<std::streamsize>(content.size()));
    }
}

}  // namespace tarvo::trial
