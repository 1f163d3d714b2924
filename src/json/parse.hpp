#pragma once

#include <string>

#include "json/Value.hpp"

namespace foundation::json {

// A flag of parse: /* ... */ and // ... count as white space. A block comment that never closes runs to the end.
constexpr unsigned int ALLOW_COMMENTS = 1;

// How many arrays and objects may be open at once. A document at this bound is parsed, copied and destroyed on a
// stack of 256 KiB.
constexpr unsigned int MAX_NESTING = 256;

// Reads one JSON document, of any kind of value, with nothing but white space around it. Where it differs from RFC
// 8259:
//
// - Leading zeros are read ("007"), and form feed and vertical tab are white space. A byte order mark is refused.
// - Control characters and bytes of 0x80 and above stand in strings as they are.
// - Every number is a double; one beyond the range is an infinity or a zero.
// - An escaped surrogate that makes no pair becomes U+FFFD.
// - Of two members with one key the first stays.
// - An object whose "zqtype" is one of int8 to int64 or uint8 to uint64 is a typed array: its "zqdata" must then be a
//   flat array of integers and is read as long long or unsigned long long, exactly, in whichever order the two keys
//   stand. The width is not checked; what no 64 bits can hold becomes the nearest limit, and a negative element of an
//   unsigned type becomes 0.
//
// Throws ParserException for a text that is no such document, and passes on std::bad_alloc, save where memory runs
// out in a "zqdata": in its first reading that is a ParserException with UnexpectedEnd; in a second one, under a late
// "zqtype", it goes unnoticed and leaves the member undefined. `flags` is 0 or ALLOW_COMMENTS. Safe on any number of
// threads at once.
Value parse(const std::string& text, unsigned int flags);

}  // namespace foundation::json
