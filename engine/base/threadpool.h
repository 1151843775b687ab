// A pool of worker threads that lives as long as its owner. Tasks must not wait for other tasks.
#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace tarvo::engine {

// What a worker is to bring. Its end waits for the work, which may use what stands around it.
template <typename Result>
class Task {
public:
    explicit Task(std::future<Result> result) : m_result(std::move(result)) {}
    Task(Task&&) noexcept = default;
    Task& operator=(Task&&) = delete;
    ~Task() {
        if (m_result.valid())
            m_result.wait();
    }
    // Whether it is done, at the latest after this time.
    bool isReadyWithin(std::chrono::milliseconds time) const {
        return m_result.wait_for(time) == std::future_status::ready;
    }
    // Once: the result, or what the work threw.
    Result get() { return m_result.get(); }

private:
    std::future<Result> m_result;
};

class ThreadPool {
public:
    // At least one worker, whatever is asked for. Goes on with fewer when no more can be started;
    // with none, run() does the work itself.
    explicit ThreadPool(unsigned threads);
    ~ThreadPool();
    ThreadPool(const ThreadPool&) = delete;
    ThreadPool& operator=(const ThreadPool&) = delete;

    // How many tasks can be at work at the same time; at least 1.
    unsigned threads() const { return std::max(1u, static_cast<unsigned>(m_threads.size())); }

    // Runs the function on a worker.
    template <typename Function>
    auto run(Function function) -> Task<decltype(function())> {
        using Result = decltype(function());
        auto task = std::make_shared<std::packaged_task<Result()>>(std::move(function));
        std::future<Result> result = task->get_future();
        post([task] { (*task)(); });
        return Task<Result>(std::move(result));
    }

    // Calls work(0) to work(count - 1), on the workers and on this thread, and waits for all.
    // Throws what the first of those that failed threw.
    void forEach(std::size_t count, const std::function<void(std::size_t)>& work);

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
