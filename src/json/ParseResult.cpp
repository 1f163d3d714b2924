#include "json/ParseResult.hpp"

namespace foundation::json {

const char* get_parse_result_description(ParseResult result) noexcept {
    switch (result) {
        case ParseResult::Ok:
            return "No error";
        case ParseResult::ExpectedNull:
            return "Expected null";
        case ParseResult::ExpectedBoolean:
            return "Expected true or false";
        case ParseResult::InvalidUnicodeEscape:
            return "Invalid \\u escape: four hexadecimal digits are needed, and a second \\u escape after a high "
                   "surrogate";
        case ParseResult::InvalidEscape:
            return "Invalid escape: only \" \\ / b f n r t u may follow a backslash";
        case ParseResult::StringEndReached:
            return "The closing quote of the string has been reached";
        case ParseResult::ExpectedString:
            return "Expected a value, or a key in double quotes";
        case ParseResult::ExpectedDigit:
            return "Expected a digit";
        case ParseResult::ExpectedFractionDigit:
            return "Expected a digit after the decimal point";
        case ParseResult::ExpectedExponentDigit:
            return "Expected a digit in the exponent";
        case ParseResult::ExpectedArray:
            return "Expected an array";
        case ParseResult::ExpectedArrayDelimiter:
            return "Expected \",\" or \"]\" after an array element";
        case ParseResult::ExpectedObject:
            return "Expected an object";
        case ParseResult::ExpectedObjectDelimiter:
            return "Expected \",\" or \"}\" after an object member";
        case ParseResult::ExpectedColon:
            return "Expected \":\" after a key";
        case ParseResult::UnexpectedEnd:
            return "The text ends too early";
        case ParseResult::InvalidInteger:
            return "Expected an integer as the element of a typed array";
        case ParseResult::NestingTooDeep:
            return "Arrays and objects are nested more than 256 deep";
    }
    return "Unknown error";
}

}  // namespace foundation::json
