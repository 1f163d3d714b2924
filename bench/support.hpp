#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

// What the programs of the benchmark have in common. Each is a main on Google Benchmark, which takes its own options
// from the command line and leaves the program its arguments. Nothing is skipped silently: a benchmark that fails,
// and a program that runs none, say so by report and exit status.
namespace bench {

using Arguments = std::vector<std::string>;

// Runs the benchmarks that are registered by then and that the command line selects. `prepare` is called first, to
// register some, or to set the scene for them; it gets the program's own arguments. Returns the exit status.
int run(int argc, char** argv, const std::function<void(const Arguments&)>& prepare);

// The whole body of a main whose one benchmark, "text", works on the text of a file. A std::exception that leaves
// `measure` is reported as the benchmark's failure.
int runOnText(int argc, char** argv, void (*measure)(benchmark::State&, const std::string& text));

// The bytes of a file, in a string without spare capacity. Throws std::runtime_error where there are none to read.
std::string readText(const std::string& path);

}  // namespace bench
