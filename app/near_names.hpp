#pragma once

#include <string>
#include <vector>

namespace app {

// The candidates that `name` may be a misspelling of: at most three, nearest first, each once, and never `name` itself.
// Those that differ only in case come first, then those one or two edits away. An edit inserts, removes or replaces a
// character, or swaps two neighbours. There may be no more edits than half the length of the shorter text.
std::vector<std::string> nearNames(const std::string& name, const std::vector<std::string>& candidates);

// The end of a message that suggests the names, " (did you mean "a", "b" or "c"?)"; empty if there are none. The names
// aren't made printable.
std::string suggestion(const std::vector<std::string>& names);

}  // namespace app
