#include "tests/qrb/allocations.h"

#include <dlfcn.h>
#include <pthread.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>

extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
}

namespace {

std::atomic<bool> s_armed{false};
std::atomic<bool> s_forGood{false};
std::atomic<long> s_made{0};
std::atomic<long> s_failing{0};
std::atomic<int> s_threadsLeft{-1};
std::atomic<int> s_threadsStarted{0};

bool fails() {
    if (!s_armed)
        return false;
    const long number = ++s_made;
    if (number < s_failing || (number > s_failing && !s_forGood))
        return false;
    errno = ENOMEM;
    return true;
}

}  // namespace

extern "C" {
void* malloc(std::size_t size) {
    return fails() ? nullptr : __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
    return fails() ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size) {
    return fails() ? nullptr : __libc_realloc(memory, size);
}
__attribute__((visibility("default"))) int pthread_create(pthread_t* thread,
                                                          const pthread_attr_t* attributes,
                                                          void* (*start)(void*),
                                                          void* argument) noexcept {
    using Create = int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static auto* const original = reinterpret_cast<Create*>(dlsym(RTLD_NEXT, "pthread_create"));
    if (s_threadsLeft == 0)
        return EAGAIN;
    if (s_threadsLeft > 0)
        --s_threadsLeft;
    ++s_threadsStarted;
    return original(thread, attributes, start, argument);
}
}

namespace allocations {

void fail(long number, bool forGood) {
    s_made = 0;
    s_failing = number;
    s_forGood = forGood;
    s_armed = true;
}

long stop() {
    s_armed = false;
    return s_made;
}

void limitThreads(int count) {
    s_threadsStarted = 0;
    s_threadsLeft = count;
}

int threadsStarted() {
    return s_threadsStarted;
}

}  // namespace allocations
