// A pool of worker threads that lives as long as its owner. Tasks must not wait for other tasks.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace tarvo::engine {

class ThreadPool {
public:
    // At least one worker, whatever is asked for.
    explicit ThreadPool(unsigned threads);
    ~ThreadPool();
    ThreadPool(const ThreadPool&) = delete;
    ThreadPool& operator=(const ThreadPool&) = delete;

    unsigned threads() const { return static_cast<unsigned>(m_threads.size()); }

    // Runs the function on a worker; the future gives its result or what it threw.
    template <typename Function>
    auto run(Function function) -> std::future<decltype(function())> {
        auto task =
            std::make_shared<std::packaged_task<decltype(function())()>>(std::move(function));
        auto future = task->get_future();
        post([task] { (*task)(); });
        return future;
    }

private:
    void post(std::function<void()> job);
    void work();

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::deque<std::function<void()>> m_jobs;
    bool m_stop = false;
    std::vector<std::thread> m_threads;
};

}  // namespace tarvo::engine
