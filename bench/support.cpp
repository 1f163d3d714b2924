#include "support.hpp"

#include <boost/config.hpp>
#include <exception>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace bench {

int run(int argc, char** argv, const std::function<void(const Arguments&)>& prepare) {
    benchmark::Initialize(&argc, argv);
    benchmark::AddCustomContext("compiler", BOOST_COMPILER);
    prepare(Arguments(argv + 1, argv + argc));
    const bool hasRun = benchmark::RunSpecifiedBenchmarks() > 0;
    benchmark::Shutdown();
    return hasRun ? 0 : 1;
}

int runOnText(int argc, char** argv, void (*measure)(benchmark::State&, const std::string&)) {
    return run(argc, argv, [measure](const Arguments& arguments) {
        benchmark::RegisterBenchmark("text", [measure, text = readText(arguments.at(0))](benchmark::State& state) {
            try {
                measure(state, text);
            } catch (const std::exception& e) {
                state.SkipWithError(e.what());
            }
        });
    });
}

std::string readText(const std::string& path) {
    std::string text(std::filesystem::file_size(path), '\0');
    std::ifstream file(path);
    if (text.empty() || !file.read(text.data(), static_cast<std::streamsize>(text.size()))) {
        throw std::runtime_error("Can't read " + path);
    }
    return text;
}

}  // namespace bench
