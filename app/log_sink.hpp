#pragma once

#include <functional>
#include <string>
#include <vector>

namespace app {

// The values of --log, quietest first.
std::vector<std::string> logNames();

using ObserveMessage = std::function<void(const std::string& message)>;

// Makes the library write its log records to standard error, one per line, in printable form. `logName` is one of
// logNames() and selects the levels. Call before the first use of the library, with "off" too: without a sink the
// logging core writes to standard output.
//
// Whatever the levels, the messages of notes are passed to `observeNotes` unless that is empty.
void installLogSink(const std::string& logName, const ObserveMessage& observeNotes);

}  // namespace app
