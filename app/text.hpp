#pragma once

#include <boost/algorithm/string/trim.hpp>
#include <locale>
#include <string>

namespace app {

// True for any byte of a UTF-8 character but its first.
inline bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

// Trims a name like the library, which uses the global locale. This program never replaces the classic one.
inline std::string trimmed(const std::string& text) {
    return boost::algorithm::trim_copy(text, std::locale::classic());
}

}  // namespace app
