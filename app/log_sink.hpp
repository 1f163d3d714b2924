#pragma once

#include <string>
#include <vector>

namespace app {

// The names that --log takes, from silent to loudest.
std::vector<std::string> logNames();

// Sends the library's records to standard error, one line each, from the levels that the name stands for. Belongs
// before the first use of the library, silent or not: without a sink of ours the logging core writes to standard
// output.
void installLogSink(const std::string& logName);

}  // namespace app
