#pragma once

#include <string>

#include "json/Value.hpp"

namespace foundation::json {

// A flag of parse: /* ... */ and // ... count as white space. A block comment that never closes runs to the end.
constexpr unsigned int ALLOW_COMMENTS = 1;

// The number of arrays and objects that may be open at once. A document at this bound is parsed, copied and destroyed
// on a stack of 256 KiB, or of 384 KiB on s390x, whose frames are larger.
constexpr unsigned int MAX_NESTING = 256;

// Reads one JSON document: any kind of value, with nothing but white space around it. Differences from RFC 8259:
//
// - Leading zeros are accepted ("007"), and form feed and vertical tab are white space. A byte order mark is refused.
// - Control characters and bytes from 0x80 on are kept in strings, valid UTF-8 or not.
// - Every number is a double; one out of range becomes an infinity or a zero.
// - An escaped surrogate that isn't part of a pair becomes U+FFFD.
// - Of two members with the same key the first is kept. "zqdata" is the exception: the first "zqtype" after it that
//   names an element type has the latest "zqdata" read again, and that result is kept.
// - An object whose "zqtype" is one of int8 to int64 or uint8 to uint64 is a typed array: its "zqdata" must then be a
//   flat array of integers and is read exactly, as long long or unsigned long long, whichever key comes first. The
//   width isn't checked; a number that doesn't fit 64 bits becomes the nearest limit, and a negative element of an
//   unsigned type becomes 0.
//
// `flags` is 0 or ALLOW_COMMENTS. Throws ParserException for any other text. Throws std::bad_alloc, with two
// exceptions: out of memory while reading a "zqdata" is reported as UnexpectedEnd, and out of memory while reading it
// again for a later "zqtype" is ignored and leaves the member undefined. Any number of threads may call this.
Value parse(const std::string& text, unsigned int flags);

}  // namespace foundation::json
