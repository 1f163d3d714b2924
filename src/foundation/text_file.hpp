#pragma once

#include <string>

namespace foundation {

// The bytes of a file from first to last, unchanged. `path` is the narrow form. A file that can't be opened reads as
// empty, and whatever stops the reading, as with a folder, ends the text there; only a lack of memory throws.
std::string read_text_file(const std::string& path);

// Removes from both ends what the global locale's std::ctype<char> classes as space. A byte with the top bit set is
// never space, whatever the locale says, so UTF-8 stays whole.
void trim(std::string& text);

}  // namespace foundation
