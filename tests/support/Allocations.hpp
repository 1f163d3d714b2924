#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <new>
#include <string>

// An operator new that counts blocks and can be made to fail. Only one source file of a program may include it.
namespace support {

inline std::atomic<long> s_liveBlocks = 0;

inline thread_local long s_remaining = -1;  // allocations of the thread that still succeed; negative: unlimited
inline thread_local bool s_lasting = false, s_failed = false;

// Runs an operation that may run out of memory. Returns what() of the std::exception that it throws, or the empty text.
using Attempt = std::function<std::string(const std::function<void()>&)>;

inline std::string attempt(long successes, const std::function<void()>& operation) {
    s_failed = false;
    s_remaining = successes;
    try {
        operation();
        s_remaining = -1;
        return {};
    } catch (const std::exception& e) {
        s_remaining = -1;
        return e.what();
    }
}

// Calls `test` with unlimited memory, then fails each allocation of its attempt in turn, first alone, then together
// with all later ones. `test` makes one attempt each time, on the thread it is called on. Expects every call but the
// first to free the blocks that it allocates. Returns how many attempts ran out of memory.
inline long failEachAllocation(const std::function<void(const Attempt&)>& test) {
    long failures = -2;
    test([](const auto& operation) { return attempt(-1, operation); });  // builds what is built once and kept
    for (const bool lasting : {false, true}) {
        s_lasting = lasting;
        s_failed = true;
        for (long successes = 0; s_failed && !testing::Test::HasFailure(); ++successes, ++failures) {
            const long before = s_liveBlocks;
            test([successes](const auto& operation) { return attempt(successes, operation); });
            EXPECT_EQ(s_liveBlocks, before) << "blocks lost or freed twice after " << successes << lasting;
        }
    }
    return failures;
}

}  // namespace support

// Not inlined: g++ would warn about free() on memory from operator new.
[[gnu::noinline]] void* operator new(std::size_t size) {
    using namespace support;
    s_failed = s_failed || s_remaining == 0;
    const bool fails = s_remaining == 0;
    s_remaining -= s_remaining > 0 || (fails && !s_lasting) ? 1 : 0;
    void* const memory = fails ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    s_liveBlocks.fetch_add(1, std::memory_order_relaxed);
    return memory;
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    support::s_liveBlocks.fetch_sub(memory == nullptr ? 0 : 1, std::memory_order_relaxed);
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
