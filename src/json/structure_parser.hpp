#pragma once

#include <map>
#include <string>
#include <vector>

#include "json/ParseResult.hpp"
#include "json/Value.hpp"
#include "json/lexical_reader.hpp"

// The structure level of the reader: values, arrays, objects, and the typed arrays that an object announces with the
// keys "zqtype" and "zqdata". The readers follow the rules of the token readers in lexical_reader.hpp: the result
// object changes on success only, a text that ends too early gives UnexpectedEnd, and there is no state but arguments
// and locals. `depth` is the number of arrays and objects open around the cursor; a bracket that would open more than
// MAX_NESTING gives NestingTooDeep, with the cursor after it. On any other failure the cursor is on the byte that was
// refused, unless documented otherwise.
namespace foundation::json {

// A value, whose first byte decides its kind. A byte that starts no value gives ExpectedString.
ParseResult parse_value(Value& out, Position& position, Position end, unsigned int flags, unsigned int depth);

// An object. Of two members with the same key the first is kept. A "zqdata" before its "zqtype" is read again as that
// type; if this second reading fails, the cursor is after the value of "zqtype". An exception during the first
// reading gives UnexpectedEnd at the start of the data; one during the second is ignored.
ParseResult parse_object(std::map<std::string, Value>& out, Position& position, Position end, unsigned int flags,
                         unsigned int depth);

// An array of values.
ParseResult parse_array(std::vector<Value>& out, Position& position, Position end, unsigned int flags,
                        unsigned int depth);

// The value of a "zqdata": any value if `element_type` is empty, otherwise an array of integers, signed or unsigned
// as the type says.
ParseResult parse_typed_data(const std::string& element_type, Value& out, Position& position, Position end,
                             unsigned int flags, unsigned int depth);

// A flat array of integer tokens. Any other element gives InvalidInteger.
ParseResult parse_signed_array(std::vector<Value>& out, Position& position, Position end, unsigned int flags,
                               unsigned int depth);
ParseResult parse_unsigned_array(std::vector<Value>& out, Position& position, Position end, unsigned int flags,
                                 unsigned int depth);

}  // namespace foundation::json
