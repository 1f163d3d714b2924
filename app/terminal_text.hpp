#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace app {

// The text in a form that is safe to show on a terminal. Control characters (C0, DEL, C1), the separators U+2028 and
// U+2029, U+FEFF, bidirectional controls, and bytes that aren't part of valid UTF-8 become \xNN, byte by byte. All else
// is unchanged.
std::string printable(std::string_view text);

// The number of columns that the text takes, unescaped: two for a wide character, none for a combining one.
std::size_t displayWidth(std::string_view text);

// The longest beginning of the text's printable form that leaves one of `width` columns for the "…" at its end.
// `width` is at least 1, and less than the text's.
std::string truncated(std::string_view text, std::size_t width);

// Calls `visit` with the printable form of successive parts of the text, so that no long text is ever copied whole.
void forEachPrintablePart(std::string_view text, const std::function<void(const std::string&)>& visit);

}  // namespace app
