#include "engine/base/threadpool.h"

#include <cstdint>
#include <exception>

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

namespace {

// Who comes takes the next piece; workers that come late find none left, and touch nothing else.
struct Pieces {
    std::mutex mutex;
    std::condition_variable done;
    std::size_t count = 0;
    std::size_t next = 0;
    std::size_t finished = 0;
    std::size_t firstFailed = SIZE_MAX;
    std::exception_ptr failure;
    const std::function<void(std::size_t)>* work = nullptr;

    void workOff() {
        std::unique_lock lock(mutex);
        while (next < count) {
            const std::size_t piece = next++;
            lock.unlock();
            std::exception_ptr thrown;
            try {
                (*work)(piece);
            } catch (...) {
                thrown = std::current_exception();
            }
            lock.lock();
            if (thrown && piece < firstFailed) {
                firstFailed = piece;
                failure = thrown;
            }
            if (++finished == count)
                done.notify_all();
        }
    }
};

}  // namespace

void ThreadPool::forEach(std::size_t count, const std::function<void(std::size_t)>& work) {
    const auto pieces = std::make_shared<Pieces>();
    pieces->count = count;
    pieces->work = &work;
    try {
        for (std::size_t i = 1; i < std::min<std::size_t>(count, threads()); ++i)
            post([pieces] { pieces->workOff(); });
    } catch (const std::exception&) {
        // No memory for more helpers: this thread does the work.
    }
    pieces->workOff();
    std::unique_lock lock(pieces->mutex);
    pieces->done.wait(lock, [&] { return pieces->finished == count; });
    if (pieces->failure)
        std::rethrow_exception(pieces->failure);
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
