#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>

#include "support.hpp"

namespace {

// The command as argv: pointers to the characters of its arguments, and a null pointer at the end.
std::vector<char*> pointersTo(bench::Arguments& command) {
    std::vector<char*> pointers;
    std::transform(command.begin(), command.end(), std::back_inserter(pointers),
                   [](std::string& argument) { return argument.data(); });
    pointers.push_back(nullptr);
    return pointers;
}

// True if the program ran and ended with status 0.
bool runToEnd(char* const* command, const posix_spawn_file_actions_t& actions) {
    pid_t child = 0;
    int status = 0;
    return ::posix_spawn(&child, command[0], &actions, nullptr, command, ::environ) == 0 &&
           ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

void measure(benchmark::State& state, bench::Arguments command) {
    const std::vector<char*> pointers = pointersTo(command);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    for (auto _ : state) {
        if (!runToEnd(pointers.data(), actions)) {
            state.SkipWithError(("Failed: " + command[0]).c_str());
            break;
        }
    }
    ::posix_spawn_file_actions_destroy(&actions);
}

}  // namespace

// The arguments are the program to run and its own arguments.
int main(int argc, char** argv) {
    return bench::run(argc, argv, [](const bench::Arguments& command) {
        benchmark::RegisterBenchmark("process", measure, command)->UseRealTime();
    });
}
