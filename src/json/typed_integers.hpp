#pragma once

#include <charconv>
#include <limits>
#include <string>
#include <system_error>

#include "json/ParseResult.hpp"
#include "json/byte_scan.hpp"
#include "json/token_text.hpp"

// The elements of typed arrays: integer tokens, and the names of their types.
namespace foundation::json {

// An integer token: an optional "-", then "0" alone or a run of digits. A number that doesn't fit 64 bits becomes the
// nearest limit; with a "-" an unsigned one becomes 0.
ParseResult parse_signed_integer(long long& out, Position& position, Position end, unsigned int flags);
ParseResult parse_unsigned_integer(unsigned long long& out, Position& position, Position end, unsigned int flags);

// True if the name is an element type: int64, int32, int16 or int8 (signed), or the same with a leading "u"
// (unsigned). Case-sensitive.
bool is_supported_type(const std::string& name);
bool is_signed_type(const std::string& name);
bool is_unsigned_type(const std::string& name);

namespace detail {

// Inline: called for each element.
inline ParseResult scan_integer(Position& position, Position end) {
    if (position != end && *position == '-') {
        ++position;
    }
    if (position == end) {
        return ParseResult::UnexpectedEnd;
    }
    if (!is_digit(*position)) {
        return ParseResult::InvalidInteger;
    }
    position = *position == '0' ? position + 1 : skip_digits(position, end);
    return ParseResult::Ok;
}

template <class Integer>
Integer to_integer(const std::string& token) {
    using Limits = std::numeric_limits<Integer>;
    const bool negative = token.front() == '-';
    if (negative && !Limits::is_signed) {
        return 0;
    }
    Integer number = 0;
    const auto outcome = std::from_chars(token.data(), token.data() + token.size(), number);
    if (outcome.ec == std::errc::result_out_of_range) {
        return negative ? Limits::min() : Limits::max();
    }
    return number;
}

template <class Integer>
ParseResult parse_integer(Integer& out, Position& position, Position end) {
    const Position start = position;
    const ParseResult result = scan_integer(position, end);
    if (result == ParseResult::Ok) {
        out = to_integer<Integer>(get_utf8_string(start, position));
    }
    return result;
}

// True for a byte that, after an integer token, shows that the element isn't an integer.
bool shows_no_integer(char byte);

}  // namespace detail

}  // namespace foundation::json
