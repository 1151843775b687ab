// Whether the caller of the library still wants what it is waiting for.
#pragma once

#include <functional>

namespace tarvo::engine {

// While it lives, work of this thread asks the function whether to go on. Work that keeps nothing
// when it is given up calls check() wherever it has gone a few milliseconds; what has a progress
// function of its own is asked by that, too.
class Interruption {
public:
    // goOn: must outlive this. Empty: nobody is asked.
    explicit Interruption(const std::function<bool()>& goOn);
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    // Throws Failure(Cancelled) when the function of this thread says stop.
    static void check();
    static bool isWanted() noexcept;
    // Whether this thread is within the function: it may not call the library.
    static bool isAsking() noexcept;

private:
    const std::function<bool()>* m_before;
};

}  // namespace tarvo::engine
