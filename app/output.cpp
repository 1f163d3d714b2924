#include "output.hpp"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>

namespace app {

namespace {

void require(bool success) {
    if (!success) {
        throw std::system_error(errno, std::generic_category(), "Can't write to standard output");
    }
}

// Empty if the variable is unset.
std::string_view environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

}  // namespace

void print(std::string_view text) {
    require(std::fwrite(text.data(), 1, text.size(), stdout) == text.size());
}

void flushOutput() {
    require(std::fflush(stdout) == 0);
}

bool showsColor(std::string_view when) {
    const std::string_view terminal = environment("TERM");
    const bool isAble = isatty(STDOUT_FILENO) != 0 && !terminal.empty() && terminal != "dumb";
    return when == "always" || (when == "auto" && isAble && environment("NO_COLOR").empty());
}

std::size_t terminalWidth() {
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

}  // namespace app
