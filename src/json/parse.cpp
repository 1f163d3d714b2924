#include "json/parse.hpp"

#include "json/ParserException.hpp"
#include "json/lexical_reader.hpp"
#include "json/structure_parser.hpp"

namespace foundation::json {

Value parse(const std::string& text, unsigned int flags) {
    Value value;
    Position position = text.begin();
    skip_whitespace(position, text.end(), flags);
    const ParseResult result = parse_value(value, position, text.end(), flags, 0);
    skip_whitespace(position, text.end(), flags);
    if (result != ParseResult::Ok) {
        throw ParserException(text.begin(), position, text.end(), result, get_parse_result_description(result));
    }
    if (position != text.end()) {
        throw ParserException(text.begin(), position, text.end(), ParseResult::Ok, "Parse incomplete");
    }
    return value;
}

}  // namespace foundation::json
