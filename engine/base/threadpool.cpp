#include "engine/base/threadpool.h"

namespace tarvo::engine {

ThreadPool::ThreadPool(unsigned threads) {
    const unsigned count = std::max(1u, threads);
    m_threads.reserve(count);
    try {
        while (m_threads.size() < count)
            m_threads.emplace_back([this] { work(); });
    } catch (const std::exception&) {
        // No more threads or no memory for them: those that run do the work.
    }
}

ThreadPool::~ThreadPool() {
    {
        const std::lock_guard guard(m_mutex);
        m_stop = true;
    }
    m_wake.notify_all();
    for (std::thread& thread : m_threads)
        thread.join();
}

void ThreadPool::post(std::function<void()> job) {
    if (m_threads.empty()) {
        job();
        return;
    }
    {
        const std::lock_guard guard(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_wake.notify_one();
}

void ThreadPool::work() {
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock lock(m_mutex);
            m_wake.wait(lock, [this] { return m_stop || !m_jobs.empty(); });
            if (m_jobs.empty())
                return;
            job = std::move(m_jobs.front());
            m_jobs.pop_front();
        }
        job();
    }
}

}  // namespace tarvo::engine
