// The log of a context: what is called and what fails, a line each, appended to a file.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace tarvo::engine::capi {

// TRACE writes every call and every failure; DEBUG, INFO, WARNING and ERROR write the failures, OFF
// writes nothing.
class Log {
public:
    // level: one of these names, in any case; empty: OFF. path: empty writes nothing.
    // Throws Failure(Argument) for another level, Failure(File) when the file can't be written.
    Log(std::string_view level, const std::string& path);

    // function: as the compiler names it.
    void called(const char* function) noexcept;
    void failed(const char* function, const char* text) noexcept;

private:
    void write(const char* kind, const char* function, const char* text) noexcept;

    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    std::unique_ptr<std::FILE, Close> m_file;
    bool m_calls = false;
    bool m_failures = false;
};

}  // namespace tarvo::engine::capi
