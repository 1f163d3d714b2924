#include "json/parse.hpp"
#include "support.hpp"

namespace {

void measure(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(foundation::json::parse(text, 0));
    }
}

}  // namespace

int main(int argc, char** argv) {
    return bench::runOnText(argc, argv, measure);
}
