#pragma once

#include <string_view>

namespace app {

// Write to standard output, and flush it. Both throw std::system_error on failure. Output is buffered, so a failure may
// show only at the flush.
void print(std::string_view text);
void flushOutput();

}  // namespace app
