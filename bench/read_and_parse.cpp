#include "foundation/text_file.hpp"
#include "json/parse.hpp"
#include "support.hpp"

namespace {

void measure(benchmark::State& state, const std::string& path) {
    // One untimed run, as in the benchmark that this is compared with.
    foundation::json::parse(foundation::read_text_file(path), 0);
    for (auto _ : state) {
        benchmark::DoNotOptimize(foundation::json::parse(foundation::read_text_file(path), 0));
    }
}

}  // namespace

int main(int argc, char** argv) {
    return bench::run(argc, argv, [](const bench::Arguments& arguments) {
        benchmark::RegisterBenchmark("readAndParse", measure, arguments.at(0));
    });
}
