#include "json/lexical_reader.hpp"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "json/token_text.hpp"

namespace foundation::json {

namespace {

using detail::is_digit;
using detail::skip_digits;
using detail::skip_plain;
using detail::skip_spaces;

bool accept(char byte, Position& position, Position end) {
    if (position == end || *position != byte) {
        return false;
    }
    ++position;
    return true;
}

// The terminator of the comment that starts here; empty if none does.
std::string_view comment_terminator(Position position, Position end) {
    if (end - position < 2 || *position != '/') {
        return {};
    }
    return position[1] == '*' ? "*/" : position[1] == '/' ? "\n" : "";
}

// The search starts after the opener: "/*/" is still open.
Position skip_comment(Position position, Position end, std::string_view terminator) {
    const Position found = std::search(position + 2, end, terminator.begin(), terminator.end());
    return found == end ? end : found + static_cast<std::ptrdiff_t>(terminator.size());
}

// The byte that the escape stands for; 0 if it isn't a simple escape.
char simple_escape(char selector) {
    switch (selector) {
        case '"':
        case '/':
        case '\\':
            return selector;
        case 'b':
            return '\b';
        case 'f':
            return '\f';
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        default:
            return 0;
    }
}

// -1 if the byte isn't a hexadecimal digit.
int hex_digit(char byte) {
    if (is_digit(byte)) {
        return byte - '0';
    }
    if (byte >= 'a' && byte <= 'f') {
        return byte - 'a' + 10;
    }
    return byte >= 'A' && byte <= 'F' ? byte - 'A' + 10 : -1;
}

bool is_high_surrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}

// The escape that must follow a high surrogate. Its unit needn't be a low surrogate.
ParseResult parse_second_unit(char16_t& out, Position& position, Position end) {
    if (end - position < 6) {
        return ParseResult::UnexpectedEnd;
    }
    if (position[0] != '\\' || position[1] != 'u') {
        return ParseResult::InvalidUnicodeEscape;
    }
    position += 2;
    return parse_hex4(out, position, end);
}

// The cursor stays on the backslash until the whole escape is read, so every failure is reported there.
ParseResult parse_unicode_escape(std::string& buffer, Position& position, Position end) {
    Position ahead = position + 2;
    std::array<char16_t, 2> units{};
    int count = 1;
    ParseResult result = parse_hex4(units[0], ahead, end);
    if (result == ParseResult::Ok && is_high_surrogate(units[0])) {
        count = 2;
        result = parse_second_unit(units[1], ahead, end);
    }
    if (result == ParseResult::Ok) {
        buffer += detail::u16_to_u8(units.data(), count);
        position = ahead;
    }
    return result;
}

ParseResult parse_escape(std::string& buffer, Position& position, Position end) {
    if (end - position < 2) {
        return ParseResult::UnexpectedEnd;
    }
    if (position[1] == 'u') {
        return parse_unicode_escape(buffer, position, end);
    }
    const char escaped = simple_escape(position[1]);
    if (escaped == 0) {
        return ParseResult::InvalidEscape;
    }
    buffer.push_back(escaped);
    position += 2;
    return ParseResult::Ok;
}

// One digit or more.
ParseResult expect_digit(ParseResult otherwise, Position& position, Position end) {
    if (position == end) {
        return ParseResult::UnexpectedEnd;
    }
    if (!is_digit(*position)) {
        return otherwise;
    }
    position = skip_digits(position, end);
    return ParseResult::Ok;
}

// After a leading zero reads nothing more: scan_fraction then takes a point, or further digits.
ParseResult scan_integer_part(Position& position, Position end) {
    accept('-', position, end);
    return accept('0', position, end) ? ParseResult::Ok : expect_digit(ParseResult::ExpectedDigit, position, end);
}

// Without a point, takes the digits after a leading zero ("007"); no point may follow those.
ParseResult scan_fraction(Position& position, Position end) {
    if (accept('.', position, end)) {
        return expect_digit(ParseResult::ExpectedFractionDigit, position, end);
    }
    position = skip_digits(position, end);
    return ParseResult::Ok;
}

ParseResult scan_exponent(Position& position, Position end) {
    if (!accept('e', position, end) && !accept('E', position, end)) {
        return ParseResult::Ok;
    }
    if (!accept('-', position, end)) {
        accept('+', position, end);
    }
    return expect_digit(ParseResult::ExpectedExponentDigit, position, end);
}

// Decodes from the first escape on; `start` is the byte after the opening quote.
ParseResult decode_string(std::string_view& out, std::string& decoded, Position start, Position& position,
                          Position end) {
    decoded.assign(start, position);
    ParseResult result = ParseResult::Ok;
    while ((result = parse_string_char(decoded, position, end)) == ParseResult::Ok) {
        const Position plain = position;
        position = skip_plain(plain, end);
        decoded.append(plain, position);
    }
    if (result != ParseResult::StringEndReached) {
        return result;
    }
    ++position;
    out = decoded;
    return ParseResult::Ok;
}

ParseResult scan_literal(std::string_view literal, ParseResult otherwise, Position& position, Position end) {
    const auto [mismatch, reached] = std::mismatch(literal.begin(), literal.end(), position, end);
    if (mismatch == literal.end()) {
        position = reached;
        return ParseResult::Ok;
    }
    return reached == end ? ParseResult::UnexpectedEnd : otherwise;
}

}  // namespace

void skip_comments(Position& position, Position end) {
    for (auto terminator = comment_terminator(position, end); !terminator.empty();
         terminator = comment_terminator(position, end)) {
        position = skip_spaces(skip_comment(position, end, terminator), end);
    }
}

ParseResult parse_string(std::string& out, Position& position, Position end, unsigned int) {
    std::string_view text;
    std::string decoded;
    const ParseResult result = read_string(text, decoded, position, end);
    if (result == ParseResult::Ok) {
        out = text;
    }
    return result;
}

ParseResult read_string(std::string_view& out, std::string& decoded, Position& position, Position end) {
    if (position == end) {
        return ParseResult::UnexpectedEnd;
    }
    if (*position != '"') {
        return ParseResult::ExpectedString;
    }
    const Position start = position + 1;
    position = skip_plain(start, end);
    if (position == end || *position != '"') {
        return decode_string(out, decoded, start, position, end);
    }
    out = {start, position};
    ++position;
    return ParseResult::Ok;
}

ParseResult parse_string_char(std::string& buffer, Position& position, Position end) {
    if (position == end) {
        return ParseResult::UnexpectedEnd;
    }
    if (*position == '"') {
        return ParseResult::StringEndReached;
    }
    if (*position == '\\') {
        return parse_escape(buffer, position, end);
    }
    buffer.push_back(*position++);
    return ParseResult::Ok;
}

ParseResult parse_hex4(char16_t& out, Position& position, Position end) {
    if (end - position < 4) {
        return ParseResult::UnexpectedEnd;
    }
    int unit = 0;
    for (int i = 0; i != 4; ++i) {
        const int digit = hex_digit(position[i]);
        if (digit < 0) {
            return ParseResult::InvalidUnicodeEscape;
        }
        unit = unit * 16 + digit;
    }
    position += 4;
    out = static_cast<char16_t>(unit);
    return ParseResult::Ok;
}

ParseResult parse_number(double& out, Position& position, Position end, unsigned int) {
    const Position start = position;
    const ParseResult result = scan_number(position, end);
    if (result == ParseResult::Ok) {
        out = detail::string_to_double(detail::get_utf8_string(start, position).c_str());
    }
    return result;
}

ParseResult scan_number(Position& position, Position end) {
    ParseResult result = scan_integer_part(position, end);
    if (result == ParseResult::Ok) {
        result = scan_fraction(position, end);
    }
    if (result == ParseResult::Ok) {
        result = scan_exponent(position, end);
    }
    return result;
}

ParseResult parse_bool(Value& out, Position& position, Position end, unsigned int) {
    ParseResult result = scan_literal("true", ParseResult::ExpectedBoolean, position, end);
    const bool boolean = result == ParseResult::Ok;
    if (result == ParseResult::ExpectedBoolean) {
        result = scan_literal("false", ParseResult::ExpectedBoolean, position, end);
    }
    if (result == ParseResult::Ok) {
        out.emplace<bool>(boolean);
    }
    return result;
}

ParseResult parse_null(Value& out, Position& position, Position end) {
    const ParseResult result = scan_literal("null", ParseResult::ExpectedNull, position, end);
    if (result == ParseResult::Ok) {
        out.emplace<Null>();
    }
    return result;
}

}  // namespace foundation::json
