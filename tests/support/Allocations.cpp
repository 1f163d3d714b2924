#include "support/Allocations.hpp"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> s_liveBlocks = 0;

thread_local long s_successes = -1;  // before the allocation that fails; negative: none is to fail
thread_local bool s_lasting = false;
thread_local bool s_struck = false;

bool isToFail() noexcept {
    const bool strikes = s_successes == 0 || (s_lasting && s_struck);
    s_successes -= s_successes >= 0 ? 1 : 0;
    s_struck = s_struck || strikes;
    return strikes;
}

}  // namespace

// Not inlined, for the compiler would then see a free of what a new gave.
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const memory = isToFail() ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++s_liveBlocks;
    return memory;
}

[[gnu::noinline]] void operator delete(void* memory) noexcept {
    s_liveBlocks -= memory == nullptr ? 0 : 1;
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace support {

long liveBlocks() noexcept {
    return s_liveBlocks;
}

void beginShortage(long successes, bool lasting) noexcept {
    s_successes = successes;
    s_lasting = lasting;
    s_struck = false;
}

bool endShortage() noexcept {
    s_successes = -1;
    s_lasting = false;
    return s_struck;
}

}  // namespace support
