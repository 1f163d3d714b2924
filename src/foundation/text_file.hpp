#pragma once

#include <locale>
#include <string>

namespace foundation {

// The bytes of a file from first to last, unchanged. `path` is the narrow form. A file that can't be opened reads as
// empty, and whatever stops the reading, as with a folder, ends the text there; only a lack of memory throws.
std::string read_text_file(const std::string& path);

// Removes from both ends of a text what the global locale's std::ctype<char> classes as space, going by the locale
// that is global when the trimmer is made. A byte with the top bit set is never space, whatever the locale says, so
// UTF-8 stays whole.
class trimmer {
public:
    void operator()(std::string& text) const;

private:
    std::locale m_locale;  // keeps the classes alive
    const std::ctype<char>& m_classes = std::use_facet<std::ctype<char>>(m_locale);
};

}  // namespace foundation
