#pragma once

#include <string>
#include <string_view>

#include "json/ParseResult.hpp"
#include "json/Value.hpp"
#include "json/byte_scan.hpp"
#include "json/parse.hpp"

// The token level of the reader: white space, strings, numbers and literals. Each reader takes its result object, the
// cursor, the end of the text and the flags of parse. On success the cursor is after the token, and nothing
// looks at the byte there; on failure the result object is untouched. Where the cursor stands after a failure is told
// at each reader: a value picks its failure by it, and it is what the user is shown. Every reader gives UnexpectedEnd
// where the text ends too early. The text is only read, so any number of threads may share it; only memory exhaustion
// throws.
namespace foundation::json {

// Steps over comments and the white space after each. Stops at a "/" that starts no comment.
void skip_comments(Position& position, Position end);

// Steps over white space, and with ALLOW_COMMENTS over comments.
inline void skip_whitespace(Position& position, Position end, unsigned int flags) {
    position = detail::skip_spaces(position, end);
    if ((flags & ALLOW_COMMENTS) != 0) {
        skip_comments(position, end);
    }
}

// A string in double quotes, decoded. Without an opening quote the cursor stays; it stops on the backslash of a
// broken escape, or at the end of the text.
ParseResult parse_string(std::string& out, Position& position, Position end, unsigned int flags);

// The same without a copy where none is needed: a view of the text, or of `decoded` for a string with escapes.
ParseResult read_string(std::string_view& out, std::string& decoded, Position& position, Position end);

// One plain byte, whatever it is, or one escape, appended to `buffer`. StringEndReached on the closing quote. The
// cursor stays unless it succeeds.
ParseResult parse_string_char(std::string& buffer, Position& position, Position end);

// Four hexadecimal digits in either case. The cursor stays unless it succeeds.
ParseResult parse_hex4(char16_t& out, Position& position, Position end);

// A number. After a failure the cursor stands on the byte that was refused.
ParseResult parse_number(double& out, Position& position, Position end, unsigned int flags);

// Steps over a number without converting it. Leading zeros belong to it, but then no decimal point does: "01.5" ends
// before the point. After a failure the cursor stands on the byte that was refused.
ParseResult scan_number(Position& position, Position end);

// "true" or "false". The cursor stays unless it succeeds; UnexpectedEnd for a literal that the end of the text cuts.
ParseResult parse_bool(Value& out, Position& position, Position end, unsigned int flags);

// "null", by the same rules.
ParseResult parse_null(Value& out, Position& position, Position end);

}  // namespace foundation::json
