#pragma once

#include <locale>
#include <string>

namespace foundation {

// The bytes of a file, unchanged. `path` is in narrow form. A file that can't be opened reads as empty; a read error
// (a folder, say) ends the text at that point. Throws only std::bad_alloc.
std::string read_text_file(const std::string& path);

// Removes white space from both ends of a text: what std::ctype<char> classifies as space, using the global locale at
// the time of construction. A byte from 0x80 on is never space, whatever the locale says, so UTF-8 stays intact.
class trimmer {
public:
    void operator()(std::string& text) const;

private:
    std::locale m_locale;  // keeps the classes alive
    const std::ctype<char>& m_classes = std::use_facet<std::ctype<char>>(m_locale);
};

}  // namespace foundation
