#include <simdjson.h>

#include "support.hpp"

namespace {

// The parser owns its document, so each parse takes a new one. The padded text is allocated beforehand.
void measure(benchmark::State& state, const std::string& text) {
    const simdjson::padded_string padded(text);
    for (auto _ : state) {
        simdjson::dom::parser parser;
        const auto result = parser.parse(padded);
        if (result.error() != simdjson::SUCCESS) {
            return state.SkipWithError(simdjson::error_message(result.error()));
        }
        benchmark::DoNotOptimize(parser);
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::AddCustomContext("simdjson", RIVAL_VERSION);
    return bench::runOnText(argc, argv, measure);
}
