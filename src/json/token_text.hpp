#pragma once

#include <string>

// Converts tokens to values, independently of any locale.
namespace foundation::json::detail {

// The bytes from `first` up to `last`.
std::string get_utf8_string(std::string::const_iterator first, std::string::const_iterator last);

// The double nearest to a JSON number token; out of range, an infinity or a zero with the token's sign.
double string_to_double(const char* token);

// The UTF-8 form of `count` UTF-16 units. A surrogate that isn't part of a pair becomes U+FFFD.
std::string u16_to_u8(const char16_t* units, int count);

}  // namespace foundation::json::detail
