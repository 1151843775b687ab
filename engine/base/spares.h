// Objects that are dear to make, kept for the next use by whatever thread. Takes the place of
// thread_local, whose first use ends the program when there is no memory.
#pragma once

#include <exception>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace tarvo::engine {

template <typename T>
class Spares {
public:
    // One of them for as long as this lives.
    class Loan {
    public:
        explicit Loan(Spares& spares) : m_spares(spares), m_object(spares.take()) {}
        ~Loan() { m_spares.give(std::move(m_object)); }
        Loan(const Loan&) = delete;
        Loan& operator=(const Loan&) = delete;
        T& operator*() const { return *m_object; }
        T* operator->() const { return m_object.get(); }

    private:
        Spares& m_spares;
        std::unique_ptr<T> m_object;
    };

private:
    std::unique_ptr<T> take() {
        {
            const std::lock_guard guard(m_mutex);
            if (!m_spares.empty()) {
                std::unique_ptr<T> object = std::move(m_spares.back());
                m_spares.pop_back();
                return object;
            }
        }
        return std::make_unique<T>();
    }
    void give(std::unique_ptr<T> object) noexcept {
        try {
            const std::lock_guard guard(m_mutex);
            m_spares.push_back(std::move(object));
        } catch (const std::exception&) {
            // No memory to keep it.
        }
    }

    std::mutex m_mutex;
    std::vector<std::unique_ptr<T>> m_spares;  // as many as were in use at the same time
};

}  // namespace tarvo::engine
