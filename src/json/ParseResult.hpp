#pragma once

#include <cstdint>

namespace foundation::json {

// The outcome of a reader. Users see the number, as E0019. `parse` never reports four of them: StringEndReached
// passes between two readers, and a byte that starts no value gives ExpectedString, or UnexpectedEnd at the end of
// the text, instead of ExpectedNull, ExpectedBoolean or ExpectedObject.
enum class ParseResult : std::uint32_t {
    Ok = 0,
    ExpectedNull = 1,
    ExpectedBoolean = 2,
    InvalidUnicodeEscape = 5,     // no hexadecimal digit, or a high surrogate without a second \u escape
    InvalidEscape = 6,            // the byte after a backslash starts no escape
    StringEndReached = 7,         // the closing quote
    ExpectedString = 8,           // no opening quote: a bad key, or a byte that starts no value
    ExpectedDigit = 11,           // in a number's integer part
    ExpectedFractionDigit = 12,   // after the decimal point
    ExpectedExponentDigit = 13,   // after the "e" and its sign
    ExpectedArray = 14,           // no "[" at the start of a typed array's data
    ExpectedArrayDelimiter = 15,  // neither "," nor "]" after an element
    ExpectedObject = 16,
    ExpectedObjectDelimiter = 17,  // neither "," nor "}" after a member
    ExpectedColon = 18,            // after a key
    UnexpectedEnd = 19,            // the text ends where something must follow
    InvalidInteger = 20,           // an element of a typed array isn't an integer token
    NestingTooDeep = 21,           // a bracket opens a level beyond MAX_NESTING
};

// A sentence for users, without a full stop. Never null, whatever the value; a string literal.
const char* get_parse_result_description(ParseResult result) noexcept;

}  // namespace foundation::json
