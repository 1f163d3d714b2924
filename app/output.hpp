#pragma once

#include <cstddef>
#include <string_view>

namespace app {

// Write to standard output, and flush it. Both throw std::system_error on failure. Output is buffered, so a failure may
// show only at the flush.
void print(std::string_view text);
void flushOutput();

// True if standard output gets colour: `when` is "always", or "auto" and standard output is a terminal, which TERM
// names and doesn't call dumb, and NO_COLOR is unset or empty.
bool showsColor(std::string_view when);

// The number of columns of the terminal that standard output goes to. 0 if it goes elsewhere or the number is unknown.
std::size_t terminalWidth();

}  // namespace app
