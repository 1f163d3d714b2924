#pragma once

#include <string>

// From the bytes of a token to its content. No locale has a say in any of it.
namespace foundation::json::detail {

// The bytes from `first` up to `last`.
std::string get_utf8_string(std::string::const_iterator first, std::string::const_iterator last);

// The double nearest to a JSON number token. Beyond the range an infinity or a zero, with the sign of the token.
double string_to_double(const char* token);

// The UTF-8 form of `count` UTF-16 units. A surrogate that makes no pair becomes U+FFFD.
std::string u16_to_u8(const char16_t* units, int count);

}  // namespace foundation::json::detail
