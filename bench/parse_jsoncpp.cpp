#include <json/reader.h>
#include <json/value.h>

#include <memory>

#include "support.hpp"

namespace {

// A reader can parse any number of texts, so it is built once.
void measure(benchmark::State& state, const std::string& text) {
    const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
    for (auto _ : state) {
        Json::Value value;
        std::string errors;
        if (!reader->parse(text.data(), text.data() + text.size(), &value, &errors)) {
            return state.SkipWithError(errors.c_str());
        }
        benchmark::DoNotOptimize(value);
    }
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::AddCustomContext("jsoncpp", RIVAL_VERSION);
    return bench::runOnText(argc, argv, measure);
}
