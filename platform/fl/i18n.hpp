#pragma once

#include <string>

#include "fl/ustring.hpp"

// Conversions between UTF-16 and narrow text, which is UTF-8. All accept any text: invalid text never throws. What is
// invalid in one form has a substitute in the other, chosen so that every POSIX file name survives the round trip.
namespace fl::i18n {

// The narrow form, for opening files and for messages. An unpaired U+DC80..U+DCFF becomes the byte that it stands
// for; any other unpaired surrogate becomes U+FFFD.
std::string to_string(const ustring& text);

// The reverse of to_string: each byte that isn't part of valid UTF-8 becomes the unit U+DC00 + byte.
ustring to_ustring(const std::string& text);

// The UTF-16 form of UTF-8 text; invalid bytes are kept as in to_ustring.
ustring utf8_to_ustring(const std::string& text);

}  // namespace fl::i18n
