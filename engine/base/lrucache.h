// Keeps what was used last within a budget of bytes. Any thread may use it. A value stays alive as
// long as somebody holds it, also after the cache let it go.
#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <mutex>
#include <unordered_map>

namespace tarvo::engine {

template <typename Key, typename Value, typename Hash = std::hash<Key>>
class LruCache {
public:
    explicit LruCache(std::size_t budget) : m_budget(budget) {}

    std::shared_ptr<const Value> get(const Key& key) {
        const std::lock_guard guard(m_mutex);
        const auto found = m_entries.find(key);
        if (found == m_entries.end())
            return nullptr;
        m_order.splice(m_order.begin(), m_order, found->second);
        return found->second->value;
    }
    // cost: bytes that the value takes.
    void put(const Key& key, std::shared_ptr<const Value> value, std::size_t cost) {
        const std::lock_guard guard(m_mutex);
        if (cost > m_budget || m_entries.count(key))
            return;
        m_order.push_front({key, std::move(value), cost});
        m_entries[key] = m_order.begin();
        m_used += cost;
        while (m_used > m_budget) {
            m_used -= m_order.back().cost;
            m_entries.erase(m_order.back().key);
            m_order.pop_back();
        }
    }
    void clear() {
        const std::lock_guard guard(m_mutex);
        m_entries.clear();
        m_order.clear();
        m_used = 0;
    }

private:
    struct Entry {
        Key key;
        std::shared_ptr<const Value> value;
        std::size_t cost;
    };
    std::mutex m_mutex;
    std::size_t m_budget;
    std::size_t m_used = 0;
    std::list<Entry> m_order;  // latest first
    std::unordered_map<Key, typename std::list<Entry>::iterator, Hash> m_entries;
};

}  // namespace tarvo::engine
