#pragma once

#include <map>
#include <string>
#include <vector>

#include "json/ParseResult.hpp"
#include "json/Value.hpp"
#include "json/lexical_reader.hpp"

// The structure level of the reader: values, arrays, objects, and the typed arrays that an object announces with the
// keys "zqtype" and "zqdata". The readers have the shape of the token readers and their rules: a result object that
// only success touches, UnexpectedEnd where the text ends too early, no state but arguments and locals. `depth`
// counts the arrays and objects that are open around the cursor; a bracket that would open one more than MAX_NESTING
// gives NestingTooDeep, with the cursor after it. Unless told otherwise the cursor stands on the byte that was
// refused.
namespace foundation::json {

// A value of any kind, which its first byte decides. What opens no value gives ExpectedString.
ParseResult parse_value(Value& out, Position& position, Position end, unsigned int flags, unsigned int depth);

// An object. The first of two members with one key stays. A "zqdata" that was read before its "zqtype" is read again
// under that type; a failure of this second reading leaves the cursor after the value of "zqtype". An exception out
// of the first reading gives UnexpectedEnd where the data starts, one out of the second goes unnoticed.
ParseResult parse_object(std::map<std::string, Value>& out, Position& position, Position end, unsigned int flags,
                         unsigned int depth);

// An array of values of any kind.
ParseResult parse_array(std::vector<Value>& out, Position& position, Position end, unsigned int flags,
                        unsigned int depth);

// The value of a "zqdata": of any kind under an empty `element_type`, otherwise an array of integers of the class
// that the type names.
ParseResult parse_typed_data(const std::string& element_type, Value& out, Position& position, Position end,
                             unsigned int flags, unsigned int depth);

// A flat array of integer tokens. Anything else in it gives InvalidInteger.
ParseResult parse_signed_array(std::vector<Value>& out, Position& position, Position end, unsigned int flags,
                               unsigned int depth);
ParseResult parse_unsigned_array(std::vector<Value>& out, Position& position, Position end, unsigned int flags,
                                 unsigned int depth);

}  // namespace foundation::json
