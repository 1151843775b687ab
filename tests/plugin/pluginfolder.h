// Plugins in a temporary folder.
#pragma once

#include "core/error.h"
#include "files/temporaryfolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace tarvo::plugintests {

// What the function throws as core::Failure, in one text.
template <typename Function>
std::string failureOf(Function&& function) {
    try {
        function();
    } catch (const core::Failure& failure) {
        return std::string(failure.what()) + "\n" + failure.details();
    }
    return {};
}

class PluginFolder {
public:
    std::string path(const std::string& name = ".") const { return m_folder.file(name); }
    // Makes the folders above it, too.
    std::string write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories(
            std::filesystem::path(m_folder.file(name)).parent_path());
        std::ofstream(m_folder.file(name), std::ios::binary) << text;
        return m_folder.file(name);
    }
    // A plugin in a folder of its own; returns its place.
    std::string add(const std::string& name, const std::string& script,
                    const std::string& members = "") const {
        write(name + "/plugin.json", R"({"name": ")" + name + R"(", "title": ")" + name +
                                         R"(", "version": "1")" + members + "}");
        write(name + "/plugin.py", script);
        return path(name);
    }

private:
    files::TemporaryFolder m_folder;
};

}  // namespace tarvo::plugintests
