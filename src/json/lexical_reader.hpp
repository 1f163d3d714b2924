#pragma once

#include <string>
#include <string_view>

#include "json/ParseResult.hpp"
#include "json/Value.hpp"
#include "json/byte_scan.hpp"
#include "json/parse.hpp"

// The token level of the reader: white space, strings, numbers and literals. Each reader takes its result object, the
// cursor, the end of the text and the flags of parse. On success the cursor is after the token, and the byte there
// hasn't been examined. On failure the result object is unchanged. Each reader documents where it leaves the cursor
// on failure: that position is reported to the user, and `parse_value` uses it to choose between failures. A text
// that ends too early gives UnexpectedEnd. The text is only read, so any number of threads may share it. Only
// std::bad_alloc is thrown.
namespace foundation::json {

// Skips comments and the white space after each. Stops at a "/" that starts no comment.
void skip_comments(Position& position, Position end);

// Skips white space, and with ALLOW_COMMENTS comments.
inline void skip_whitespace(Position& position, Position end, unsigned int flags) {
    position = detail::skip_spaces(position, end);
    if ((flags & ALLOW_COMMENTS) != 0) {
        skip_comments(position, end);
    }
}

// A string in double quotes, decoded. On failure the cursor stays if there is no opening quote; otherwise it is on
// the backslash of an invalid escape, or at the end of the text.
ParseResult parse_string(std::string& out, Position& position, Position end, unsigned int flags);

// The same without a copy: `out` is a view of the text, or of `decoded` for a string with escapes.
ParseResult read_string(std::string_view& out, std::string& decoded, Position& position, Position end);

// Appends one byte, or one decoded escape, to `buffer`. StringEndReached on the closing quote. On failure the cursor
// stays.
ParseResult parse_string_char(std::string& buffer, Position& position, Position end);

// Four hexadecimal digits in either case. On failure the cursor stays.
ParseResult parse_hex4(char16_t& out, Position& position, Position end);

// A number. On failure the cursor is on the byte that was refused.
ParseResult parse_number(double& out, Position& position, Position end, unsigned int flags);

// Skips a number without converting it. Leading zeros are part of it, but no decimal point after them is: "01.5" ends
// before the point. On failure the cursor is on the byte that was refused.
ParseResult scan_number(Position& position, Position end);

// "true" or "false"; UnexpectedEnd if the text ends within one. On failure the cursor stays.
ParseResult parse_bool(Value& out, Position& position, Position end, unsigned int flags);

// "null", likewise.
ParseResult parse_null(Value& out, Position& position, Position end);

}  // namespace foundation::json
