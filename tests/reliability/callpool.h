// Arguments for calls of any kind: handles that live, are gone, or are of another kind, odd texts
// and numbers. Memory that the caller owns is always as large as the conventions of qrb.h want it.
#pragma once

#include "qrb/qrb.h"
#include "tests/reliability/trial.h"

#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <type_traits>
#include <typeindex>
#include <vector>

namespace tarvo::trial {

class CallPool {
public:
    explicit CallPool(Random& random) : m_random(random) {}

    std::uint64_t pick(std::uint64_t below) { return m_random() % below; }
    bool chance(unsigned perCent) { return pick(100) < perCent; }

    // A handle to pass.
    template <typename T>
    T* handle() {
        const std::vector<void*>& alive = m_alive[kindOf<T>()];
        const std::uint64_t dice = pick(100);
        if (dice < 4)
            return nullptr;
        if (dice < 8 && !m_all.empty())
            return static_cast<T*>(m_all[pick(m_all.size())]);  // gone, or of another kind
        if (dice < 9)
            return reinterpret_cast<T*>(static_cast<std::uintptr_t>(m_random()));
        if (alive.empty())
            return nullptr;
        return static_cast<T*>(dice < 70 ? alive.back() : alive[pick(alive.size())]);
    }
    template <typename T>
    void made(T* handle) {
        m_alive[typeid(T*)].push_back(handle);
        m_all.push_back(handle);
    }
    // Forgets a handle of whatever kind that was deleted.
    void gone(const void* handle) {
        for (auto& [type, handles] : m_alive)
            std::erase(handles, handle);
    }
    // What a context made is gone with it; records and results stay.
    void contextGone() {
        for (auto& [type, handles] : m_alive)
            if (type != typeid(qrb_context*) && type != typeid(qrb_create_settings*) &&
                type != typeid(qrb_open_settings*) && type != typeid(qrb_point_attribute*) &&
                type != typeid(qrb_result*))
                handles.clear();
    }
    template <typename T>
    std::vector<T*> alive() {
        std::vector<T*> result;
        for (void* const handle : m_alive[typeid(T*)])
            result.push_back(static_cast<T*>(handle));
        return result;
    }

    const char* text() {
        static const std::string longText(100'000, 'x');
        static const char* const texts[] = {
            nullptr,
            "",
            " ",
            "xyz",
            "xyz[0]",
            "xyz[7]",
            "tarvo.id",
            "amplitude",
            "own",
            "kept",
            "a.qrbx",
            "b.qrbx",
            "./a.qrbx",
            "absent/c.qrbx",
            ".",
            "log.txt",
            "xyz[0] > 0",
            "amplitude % 3 == 1 && !(xyz[2] < 1)",
            "find fullest leaf",
            "((((",
            "\xff\xfe\x80",
            "tarvo.xyz",
            "tarvo.class",
            "*",
            "#tag",
            "{}",
            "[]",
            "{\"type\": \"object\"}",
            "{\"a\": ",
            "TRACE",
            "OFF",
            "default",
            "single-pass",
            "[#1] Title\nSignature: 00",
            "{\"identifier\":\"a\",\"extension\":\"a\",\"attributes\":[\"xyz*\"],\"metadata\":[]}",
            "0=no\n1=yes",
            "{\"method\":\"average\"}"};
        constexpr std::size_t count = sizeof texts / sizeof *texts;
        const std::size_t at = pick(count + 1);
        return at == count ? longText.c_str() : texts[at];
    }
    // counted: says how much memory of the caller's is read.
    template <typename T>
    T number(bool counted) {
        if constexpr (std::is_floating_point_v<T>) {
            static const T numbers[] = {0,
                                        1,
                                        -1,
                                        T(0.001),
                                        T(0.5),
                                        100,
                                        -1000,
                                        T(1e300),
                                        -T(0),
                                        std::numeric_limits<T>::quiet_NaN(),
                                        std::numeric_limits<T>::infinity()};
            return numbers[pick(sizeof numbers / sizeof *numbers)];
        } else if constexpr (std::is_signed_v<T>) {
            static const T strides[] = {0, 8, 8, 24, 24, 1, 2, 13, 64, -8, -24, -64};
            return strides[pick(sizeof strides / sizeof *strides)];
        } else {
            static const std::uint64_t numbers[] = {0, 0, 1, 1, 2, 3, 4, 5, 7, 8, 9, 10, 50, 100};
            if (counted || chance(85))
                return static_cast<T>(numbers[pick(sizeof numbers / sizeof *numbers)]);
            static const std::uint64_t odd[] = {
                std::numeric_limits<T>::max(), T(-2), 255, 256, 1u << 31, 100'000};
            return static_cast<T>(odd[pick(sizeof odd / sizeof *odd)]);
        }
    }
    // Memory that any call may read and write: megabytes on both sides.
    template <typename T>
    T* memory() {
        if (chance(4))
            return nullptr;
        // One for the process: what a sequence leaves there is input of the next.
        static std::vector<std::uint8_t> memory(1u << 23, 1);
        return reinterpret_cast<T*>(memory.data() + memory.size() / 2 + 64 * pick(1000));
    }

private:
    // Records go by another name where they are locked.
    template <typename T>
    std::type_index kindOf() {
        if constexpr (!std::is_same_v<T, qrb_object>)
            return typeid(T*);
        const std::type_index records[] = {typeid(qrb_create_settings*), typeid(qrb_open_settings*),
                                           typeid(qrb_point_attribute*)};
        return records[pick(3)];
    }

    Random& m_random;
    std::map<std::type_index, std::vector<void*>> m_alive;
    std::vector<void*> m_all;
};

}  // namespace tarvo::trial
