#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include "support.hpp"

namespace {

void measure(benchmark::State& state, const std::string& text) {
    for (auto _ : state) {
        rapidjson::Document document;
        if (document.Parse(text.c_str()).HasParseError()) {
            return state.SkipWithError(rapidjson::GetParseError_En(document.GetParseError()));
        }
        benchmark::DoNotOptimize(document);
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::AddCustomContext("RapidJSON", RIVAL_VERSION);
    return bench::runOnText(argc, argv, measure);
}
