#include "output.hpp"

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace app {

namespace {

void require(bool success) {
    if (!success) {
        throw std::system_error(errno, std::generic_category(), "Can't write to standard output");
    }
}

}  // namespace

void print(std::string_view text) {
    require(std::fwrite(text.data(), 1, text.size(), stdout) == text.size());
}

void flushOutput() {
    require(std::fflush(stdout) == 0);
}

}  // namespace app
