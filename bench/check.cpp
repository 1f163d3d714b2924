#include "check/examine.hpp"

#include "doc_products_shared/DocSetJsonParser.hpp"
#include "fl/i18n.hpp"
#include "support.hpp"

// A catalogue file, examined as the command's check does without looking for files, and read by the library.

namespace {

void check(benchmark::State& state, const std::string& path) {
    const app::check::Policy policy;
    for (auto _ : state) {
        benchmark::DoNotOptimize(app::check::examine(path, bench::readText(path), "", policy));
    }
}

void parse(benchmark::State& state, const std::string& path) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(doc_products_shared::DocSetJsonParser().parse(fl::i18n::to_ustring(path)));
    }
}

}  // namespace

int main(int argc, char** argv) {
    return bench::run(argc, argv, [](const bench::Arguments& arguments) {
        benchmark::RegisterBenchmark("check", check, arguments.at(0));
        benchmark::RegisterBenchmark("parse", parse, arguments.at(0));
    });
}
