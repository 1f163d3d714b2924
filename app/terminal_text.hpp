#pragma once

#include <cstddef>
#include <string>

namespace app {

// The text as a terminal may show it: a control character (C0, DEL, C1) and a byte that is no part of valid UTF-8
// become \xNN, byte by byte; the rest stays.
std::string printable(const std::string& text);

// The columns that a printable text takes: two for a wide character, none for a combining one.
std::size_t displayWidth(const std::string& text);

}  // namespace app
