#include <nlohmann/json.hpp>

#include "support.hpp"

namespace {

void measure(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(nlohmann::json::parse(text));
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::AddCustomContext("nlohmann", RIVAL_VERSION);
    return bench::runOnText(argc, argv, measure);
}
