#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace app {

// The text in a form that is safe to show: control characters (C0, DEL, C1), the separators U+2028 and U+2029,
// U+FEFF, the bidirectional controls, and bytes that aren't part of valid UTF-8 become \xNN, byte by byte. The rest
// stays.
std::string printable(std::string_view text);

// The columns that the text takes as it stands: two for a wide character, none for a combining one.
std::size_t displayWidth(std::string_view text);

// Calls `visit` with the printable form of each part of the text in turn, so that a long text needs no copy as long.
void forEachPrintablePart(std::string_view text, const std::function<void(const std::string&)>& visit);

}  // namespace app
