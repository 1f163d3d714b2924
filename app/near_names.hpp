#pragma once

#include <string>
#include <vector>

namespace app {

// The candidates that `name` may have been meant for, the nearest first, at most three and each once, without `name`
// itself: those that differ in case alone, then those one or two edits away (a character inserted, removed or
// replaced, or two neighbours swapped). At most half of the longer text may be edited.
std::vector<std::string> nearNames(const std::string& name, const std::vector<std::string>& candidates);

// The names as the end of a message: " (did you mean a, b or c?)", or nothing if there are none. Not made printable.
std::string suggestion(const std::vector<std::string>& names);

}  // namespace app
