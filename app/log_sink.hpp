#pragma once

#include <string>
#include <vector>

namespace app {

// The names that --log takes, from the quietest on.
std::vector<std::string> logNames();

// Sends the library's records of the levels that the name stands for to standard error, a line each. Call before the
// first use of the library, with "off" too: without a sink the logging core writes to standard output.
void installLogSink(const std::string& logName);

}  // namespace app
