#pragma once

#include <string>

#include "fl/ustring.hpp"

// Text conversions between UTF-16 and narrow text, which is UTF-8. All of them are total: bad text never throws. What
// is not valid in the one form has a stand-in in the other, chosen so that every file name that a POSIX system allows
// survives the way there and back.
namespace fl::i18n {

// The narrow form, good for opening a file and for messages. An unpaired U+DC80..U+DCFF becomes the byte that it
// stands for; any other unpaired surrogate becomes U+FFFD.
std::string to_string(const ustring& text);

// The reverse of to_string: each byte that is no part of valid UTF-8 becomes the unit U+DC00 + byte.
ustring to_ustring(const std::string& text);

// The UTF-16 form of UTF-8 bytes; bytes that are none are kept as to_ustring keeps them.
ustring utf8_to_ustring(const std::string& text);

}  // namespace fl::i18n
