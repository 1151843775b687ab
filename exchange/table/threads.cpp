#include "exchange/table/threads.h"

#include <algorithm>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace tarvo::exchange {

void onAllCores(std::size_t pieces, const std::function<void()>& work) {
    std::mutex mutex;
    std::exception_ptr failure;
    const auto guarded = [&] {
        try {
            work();
        } catch (...) {
            const std::lock_guard guard(mutex);
            failure = failure ? failure : std::current_exception();
        }
    };
    const std::size_t count =
        std::min<std::size_t>(pieces, std::min(8u, std::thread::hardware_concurrency()));
    std::vector<std::thread> others;
    try {
        others.reserve(count);
        while (others.size() + 1 < count) {
            others.emplace_back(guarded);
        }
    } catch (const std::exception&) {
        // No more threads or no memory for them: those that run do the work.
    }
    guarded();
    for (std::thread& other : others) {
        other.join();
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
}

}  // namespace tarvo::exchange
