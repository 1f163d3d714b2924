#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

#include "check/examine.hpp"
#include "doc_products_shared/DocSetJsonParser.hpp"
#include "fl/i18n.hpp"
#include "json/parse.hpp"
#include "support.hpp"

namespace {

// The bytes allocated and not yet freed, as the allocator rounds them, and their maximum since s_peak was last set. For
// a single thread.
std::size_t s_inUse = 0;
std::size_t s_peak = 0;

}  // namespace

// Not inlined: g++ would warn about free() on memory from operator new.
[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    s_inUse += ::malloc_usable_size(block);
    s_peak = std::max(s_peak, s_inUse);
    return block;
}

[[gnu::noinline]] void operator delete(void* block) noexcept {
    s_inUse -= ::malloc_usable_size(block);
    std::free(block);
}

[[gnu::noinline]] void operator delete(void* block, std::size_t /*size*/) noexcept {
    operator delete(block);
}

namespace {

// "peak_bytes" is the maximum in use while the text is parsed. "kept_bytes" is the text and a copy of the tree; the
// copy's arrays have no spare capacity.
void measure(benchmark::State& state, const std::string& path) {
    for (auto _ : state) {
        const std::size_t before = s_inUse;
        const std::string text = bench::readText(path);
        s_peak = s_inUse;
        const std::size_t ofText = s_inUse - before;
        const foundation::json::Value value = foundation::json::parse(text, 0);
        const std::size_t peak = s_peak - before;
        const std::size_t parsed = s_inUse;
        const foundation::json::Value copy = value;
        state.counters["peak_bytes"] = static_cast<double>(peak);
        state.counters["kept_bytes"] = static_cast<double>(ofText + s_inUse - parsed);
    }
}

// "peak_bytes" is the maximum in use while `examine` works on the file.
template <class Examine>
void measurePeak(benchmark::State& state, Examine examine) {
    for (auto _ : state) {
        const std::size_t before = s_peak = s_inUse;
        examine();
        state.counters["peak_bytes"] = static_cast<double>(s_peak - before);
    }
}

void check(benchmark::State& state, const std::string& path) {
    const app::check::Policy policy;
    measurePeak(state, [&] { app::check::examine(path, bench::readText(path), "", policy); });
}

void parseFile(benchmark::State& state, const std::string& path) {
    measurePeak(state, [&] { doc_products_shared::DocSetJsonParser().parse(fl::i18n::to_ustring(path)); });
}

}  // namespace

int main(int argc, char** argv) {
    return bench::run(argc, argv, [](const bench::Arguments& arguments) {
        benchmark::RegisterBenchmark("heap", measure, arguments.at(0))->Iterations(1);
        benchmark::RegisterBenchmark("check", check, arguments.at(0))->Iterations(1);
        benchmark::RegisterBenchmark("parseFile", parseFile, arguments.at(0))->Iterations(1);
    });
}
