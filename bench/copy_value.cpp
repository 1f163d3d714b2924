#include "json/parse.hpp"
#include "support.hpp"

namespace {

using foundation::json::Value;

// The cost of the tree itself: allocating, filling and freeing its nodes, without reading any text.
void measure(benchmark::State& state, const std::string& text) {
    const Value value = foundation::json::parse(text, 0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(Value(value));
    }
}

}  // namespace

int main(int argc, char** argv) {
    return bench::runOnText(argc, argv, measure);
}
