#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

// Shared by the benchmark's programs. Each is a main on Google Benchmark, which removes its own options from the
// command line and leaves the program its arguments. Nothing is skipped silently: a failure is part of the report, and
// a program that runs no benchmark returns 1.
namespace bench {

using Arguments = std::vector<std::string>;

// Calls `prepare` with the program's own arguments, to register benchmarks or to set the scene for them. Then runs the
// registered benchmarks that the command line selects. Returns the exit status.
int run(int argc, char** argv, const std::function<void(const Arguments&)>& prepare);

// The body of a main whose only benchmark, "text", measures the text of a file, which the first argument names. A
// std::exception thrown by `measure` is reported as the benchmark's failure.
int runOnText(int argc, char** argv, void (*measure)(benchmark::State&, const std::string& text));

// The bytes of a file, in a string without spare capacity. Throws std::runtime_error if there are none to read.
std::string readText(const std::string& path);

}  // namespace bench
