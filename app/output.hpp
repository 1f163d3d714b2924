#pragma once

#include <string_view>

namespace app {

// Writes to standard output. Throws std::system_error if that fails, which may show as late as at the flush.
void print(std::string_view text);
void flushOutput();

}  // namespace app
