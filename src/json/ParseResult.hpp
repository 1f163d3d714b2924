#pragma once

#include <cstdint>

namespace foundation::json {

// How a reader of this room ended. The numbers are visible to users: a message shows them as E0019. Four of them
// never leave the readers: StringEndReached is a signal between two of them, and a value that fits no kind at all
// reports ExpectedString or UnexpectedEnd, never ExpectedNull, ExpectedBoolean or ExpectedObject.
enum class ParseResult : std::uint32_t {
    Ok = 0,
    ExpectedNull = 1,
    ExpectedBoolean = 2,
    InvalidUnicodeEscape = 5,     // no hexadecimal digit, or a high surrogate without a second \u escape
    InvalidEscape = 6,            // the byte after a backslash starts no escape
    StringEndReached = 7,         // the closing quote
    ExpectedString = 8,           // no opening quote: a bad key, or anything that opens no value
    ExpectedDigit = 11,           // in a number's integer part
    ExpectedFractionDigit = 12,   // after the decimal point
    ExpectedExponentDigit = 13,   // after the "e" and its sign
    ExpectedArray = 14,           // no "[": seen where the data of a typed array should start
    ExpectedArrayDelimiter = 15,  // neither "," nor "]" after an element
    ExpectedObject = 16,
    ExpectedObjectDelimiter = 17,  // neither "," nor "}" after a member
    ExpectedColon = 18,            // after a key
    UnexpectedEnd = 19,            // the text ends where something must follow
    InvalidInteger = 20,           // an element of a typed array is no integer token
    NestingTooDeep = 21,           // a bracket opens a level beyond MAX_NESTING
};

// One plain sentence for people, without a full stop. Never null, whatever the value; the text lives for the whole
// process.
const char* get_parse_result_description(ParseResult result) noexcept;

}  // namespace foundation::json
