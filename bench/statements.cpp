#include <exception>

#include "foundation/diagnostic.hpp"
#include "foundation/function_trace.hpp"
#include "support.hpp"

// A diagnostic and a trace scope while their levels are off: initially only `error` is on. DoNotOptimize makes the
// compiler assume that the logger's mask changes, in the loops to compare with too.

namespace {

foundation::log::basic_diagnostic_logger<char> s_logger("bench");

void emptyLoop(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(s_logger);
    }
}

void diagnosticOff(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(s_logger);
        DIAGNOSTIC(note, "a piece");
    }
}

void uncaughtExceptions(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(s_logger);
        benchmark::DoNotOptimize(std::uncaught_exceptions());
    }
}

void traceOff(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(s_logger);
        FUNCTION_TRACE("void (anonymous namespace)::traceOff(benchmark::State &)");
    }
}

}  // namespace

BENCHMARK(emptyLoop);
BENCHMARK(diagnosticOff);
BENCHMARK(uncaughtExceptions);
BENCHMARK(traceOff);

int main(int argc, char** argv) {
    return bench::run(argc, argv, [](const bench::Arguments& /*arguments*/) {});
}
