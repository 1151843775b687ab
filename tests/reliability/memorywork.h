// The kinds of work that the library is asked for while it runs out of memory, through its C
// functions.
#pragma once

#include "qrb/loader.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tarvo::trial {

// A context with an open database. Work goes on in steps, of which the first that fails ends it.
class Bench {
public:
    explicit Bench(const std::string& file)
        : m_file(file), m_other(file + ".prepared"), m_textFile(file + ".txt") {}

    const qrb::FunctionTable& t = qrb::functions();
    qrb_context* c = nullptr;
    qrb_pointcloud* cloud = nullptr;
    bool failed = false;
    std::int32_t code = 0;
    const char* text = nullptr;

    // The names of another database that is there, and of a text file to write.
    const std::string& other() const { return m_other; }
    const std::string& textFile() const { return m_textFile; }
    // Throw std::runtime_error: they have all memory.
    void start();
    void end();

    // Returns whether the work goes on.
    bool step(qrb_status status);

    void create();
    void open();
    void begin();
    void commit();
    void insert(std::uint32_t count);
    // What the open file holds, all values and texts; without what depends on the time.
    std::string contents();

private:
    std::string m_file;
    std::string m_other;
    std::string m_textFile;
};

struct Work {
    const char* name;
    bool withFile;  // else there is none at first
    std::function<void(Bench&)> prepare;
    std::function<void(Bench&)> run;
};
const std::vector<Work>& allWork();

}  // namespace tarvo::trial
