#include "json/structure_parser.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <limits>
#include <string_view>
#include <system_error>
#include <utility>

#include "json/parse.hpp"
#include "json/scan.hpp"
#include "json/text.hpp"

namespace foundation::json {

namespace {

constexpr const char* s_type_key = "zqtype";
constexpr const char* s_data_key = "zqdata";

constexpr std::array<std::string_view, 4> s_signed_types{"int64", "int32", "int16", "int8"};
constexpr std::array<std::string_view, 4> s_unsigned_types{"uint64", "uint32", "uint16", "uint8"};

// A kind of container: its brackets, and what to report where one of them is missing.
struct Container {
    char opening;
    char closing;
    ParseResult opening_expected;
    ParseResult delimiter_expected;
};

constexpr Container s_array{'[', ']', ParseResult::ExpectedArray, ParseResult::ExpectedArrayDelimiter};
constexpr Container s_object{'{', '}', ParseResult::ExpectedObject, ParseResult::ExpectedObjectDelimiter};

// Not to be asked at the end of the text.
bool accept(char byte, Position& position) {
    if (*position != byte) {
        return false;
    }
    ++position;
    return true;
}

ParseResult skip_to_next_byte(Position& position, Position end, unsigned int flags) {
    skip_whitespace(position, end, flags);
    return position == end ? ParseResult::UnexpectedEnd : ParseResult::Ok;
}

ParseResult open_container(const Container& container, Position& position, Position end, unsigned int flags,
                           unsigned int depth) {
    if (position == end) {
        return ParseResult::UnexpectedEnd;
    }
    if (!accept(container.opening, position)) {
        return container.opening_expected;
    }
    if (depth >= MAX_NESTING) {
        return ParseResult::NestingTooDeep;
    }
    return skip_to_next_byte(position, end, flags);
}

// From the opening to the closing bracket. `read_item` reads one item and the white space behind it, and succeeds
// only short of the end of the text.
template <class ReadItem>
ParseResult parse_container(const Container& container, Position& position, Position end, unsigned int flags,
                            unsigned int depth, ReadItem read_item) {
    ParseResult result = open_container(container, position, end, flags, depth);
    if (result != ParseResult::Ok || accept(container.closing, position)) {
        return result;
    }
    for (;;) {
        result = read_item();
        if (result != ParseResult::Ok) {
            return result;
        }
        if (!accept(',', position)) {
            return accept(container.closing, position) ? ParseResult::Ok : container.delimiter_expected;
        }
        skip_whitespace(position, end, flags);
    }
}

// Element by element: Value's move can throw, so a vector that grows by itself would copy whole trees instead. After
// an exception the elements are good for nothing but destruction.
void append(std::vector<Value>& elements, Value&& element) {
    if (elements.size() == elements.capacity()) {
        std::vector<Value> larger;
        larger.reserve(std::max<std::size_t>(4, 2 * elements.size()));
        std::move(elements.begin(), elements.end(), std::back_inserter(larger));
        elements.swap(larger);
    }
    elements.push_back(std::move(element));
}

ParseResult scan_integer(Position& position, Position end) {
    if (position != end && *position == '-') {
        ++position;
    }
    if (position == end) {
        return ParseResult::UnexpectedEnd;
    }
    if (!detail::is_digit(*position)) {
        return ParseResult::InvalidInteger;
    }
    position = *position == '0' ? position + 1 : detail::skip_digits(position, end);
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
        out = to_integer<Integer>(detail::get_utf8_string(start, position));
    }
    return result;
}

// What shows, behind an integer token or the white space after it, that the element is another kind of value.
bool spoils_integer(char byte) {
    return std::string_view("\".Ee{").find(byte) != std::string_view::npos;
}

template <class Integer>
ParseResult parse_integer_element(std::vector<Value>& elements, Position& position, Position end,
                                  unsigned int flags) {
    Integer number = 0;
    ParseResult result = parse_integer(number, position, end);
    if (result == ParseResult::Ok) {
        result = skip_to_next_byte(position, end, flags);
    }
    if (result == ParseResult::Ok) {
        append(elements, Value(number));
    }
    return result;
}

template <class Integer>
ParseResult parse_integer_array(std::vector<Value>& out, Position& position, Position end, unsigned int flags,
                                unsigned int depth) {
    std::vector<Value> elements;
    const auto read_element = [&] { return parse_integer_element<Integer>(elements, position, end, flags); };
    const ParseResult result = parse_container(s_array, position, end, flags, depth, read_element);
    if (result == ParseResult::Ok) {
        out.swap(elements);
    } else if (result == ParseResult::ExpectedArrayDelimiter && spoils_integer(*position)) {
        return ParseResult::InvalidInteger;
    }
    return result;
}

// Never inlined, like others below: its locals are to take no stack while a document is descended into.
[[gnu::noinline]] ParseResult parse_typed_array(const std::string& element_type, Value& out, Position& position,
                                                Position end, unsigned int flags, unsigned int depth) {
    std::vector<Value> elements;
    const ParseResult result = is_signed_type(element_type)
                                   ? parse_signed_array(elements, position, end, flags, depth)
                                   : parse_unsigned_array(elements, position, end, flags, depth);
    if (result == ParseResult::Ok) {
        out = Value(std::move(elements));
    }
    return result;
}

ParseResult parse_array_element(std::vector<Value>& elements, Position& position, Position end, unsigned int flags,
                                unsigned int depth) {
    Value element;
    ParseResult result = parse_value(element, position, end, flags, depth);
    if (result == ParseResult::Ok) {
        result = skip_to_next_byte(position, end, flags);
    }
    if (result == ParseResult::Ok) {
        append(elements, std::move(element));
    }
    return result;
}

// What parse_object knows of its object.
struct ObjectState {
    std::map<std::string, Value> members;
    std::string element_type;   // the latest supported zqtype, or empty
    bool data_pending = false;  // a zqdata has been read that no later zqtype has settled
    Position data_start{};      // where the value of the latest zqdata starts
    Position data_end{};        // the end of the text, saved with it
};

ParseResult parse_key(std::string& key, Position& position, Position end, unsigned int flags) {
    ParseResult result = parse_string(key, position, end, flags);
    if (result == ParseResult::Ok) {
        result = skip_to_next_byte(position, end, flags);
    }
    if (result != ParseResult::Ok) {
        return result;
    }
    if (!accept(':', position)) {
        return ParseResult::ExpectedColon;
    }
    skip_whitespace(position, end, flags);
    return ParseResult::Ok;
}

ParseResult parse_data(ObjectState& state, Value& out, Position& position, Position end, unsigned int flags,
                       unsigned int depth) {
    state.data_start = position;
    state.data_end = end;
    state.data_pending = true;
    try {
        return parse_typed_data(state.element_type, out, position, end, flags, depth);
    } catch (...) {
        position = state.data_start;
        return ParseResult::UnexpectedEnd;
    }
}

ParseResult reread_data(ObjectState& state, unsigned int flags, unsigned int depth) {
    state.members[s_data_key] = Value();
    Value data;
    Position position = state.data_start;
    const ParseResult result = parse_typed_data(state.element_type, data, position, state.data_end, flags, depth);
    if (result == ParseResult::Ok) {
        state.members[s_data_key] = std::move(data);
        state.data_pending = false;
    }
    return result;
}

// A zqtype that is no string has no effect, and neither has anything that is thrown here: the member is then stored
// like any other. The cursor does not move.
[[gnu::noinline]] ParseResult apply_type(ObjectState& state, const Value& type, unsigned int flags,
                                         unsigned int depth) {
    try {
        const auto& name = type.get<std::string>();
        if (is_supported_type(name)) {
            state.element_type = name;
        }
        if (state.data_pending && is_supported_type(state.element_type)) {
            return reread_data(state, flags, depth);
        }
    } catch (...) {  // NOLINT(bugprone-empty-catch)
    }
    return ParseResult::Ok;
}

ParseResult parse_member_value(ObjectState& state, const std::string& key, Value& out, Position& position,
                               Position end, unsigned int flags, unsigned int depth) {
    if (key == s_data_key) {
        return parse_data(state, out, position, end, flags, depth);
    }
    const ParseResult result = parse_value(out, position, end, flags, depth);
    return result == ParseResult::Ok && key == s_type_key ? apply_type(state, out, flags, depth) : result;
}

ParseResult parse_member(ObjectState& state, Position& position, Position end, unsigned int flags,
                         unsigned int depth) {
    std::string key;
    Value value;
    ParseResult result = parse_key(key, position, end, flags);
    if (result == ParseResult::Ok) {
        result = parse_member_value(state, key, value, position, end, flags, depth);
    }
    if (result == ParseResult::Ok) {
        result = skip_to_next_byte(position, end, flags);
    }
    if (result == ParseResult::Ok) {
        state.members.try_emplace(std::move(key), std::move(value));
    }
    return result;
}

// The kinds of value, one function each, so that only the kind that is being read has its locals on the stack.

[[gnu::noinline]] ParseResult parse_string_value(Value& out, Position& position, Position end, unsigned int flags,
                                                 unsigned int) {
    std::string text;
    const ParseResult result = parse_string(text, position, end, flags);
    if (result == ParseResult::Ok) {
        out = Value(std::move(text));
    }
    return result;
}

ParseResult parse_number_value(Value& out, Position& position, Position end, unsigned int flags, unsigned int) {
    double number = 0;
    const ParseResult result = parse_number(number, position, end, flags);
    if (result == ParseResult::Ok) {
        out = Value(number);
    }
    return result;
}

ParseResult parse_object_value(Value& out, Position& position, Position end, unsigned int flags, unsigned int depth) {
    std::map<std::string, Value> members;
    const ParseResult result = parse_object(members, position, end, flags, depth);
    if (result == ParseResult::Ok) {
        out = Value(std::move(members));
    }
    return result;
}

ParseResult parse_array_value(Value& out, Position& position, Position end, unsigned int flags, unsigned int depth) {
    std::vector<Value> elements;
    const ParseResult result = parse_array(elements, position, end, flags, depth);
    if (result == ParseResult::Ok) {
        out = Value(std::move(elements));
    }
    return result;
}

ParseResult parse_bool_value(Value& out, Position& position, Position end, unsigned int flags, unsigned int) {
    return parse_bool(out, position, end, flags);
}

ParseResult parse_null_value(Value& out, Position& position, Position end, unsigned int, unsigned int) {
    return parse_null(out, position, end);
}

// In the order in which they are tried, behind the string.
constexpr auto s_further_kinds = {parse_number_value, parse_object_value, parse_array_value, parse_bool_value,
                                  parse_null_value};

}  // namespace

// At most one kind gets past the first byte, so the furthest of them is also the only one that can succeed.
ParseResult parse_value(Value& out, Position& position, Position end, unsigned int flags, unsigned int depth) {
    const Position start = position;
    ParseResult result = parse_string_value(out, position, end, flags, depth);
    for (const auto parse_kind : s_further_kinds) {
        if (result == ParseResult::Ok) {
            break;
        }
        Position reached = start;
        const ParseResult attempt = parse_kind(out, reached, end, flags, depth);
        if (reached > position) {
            position = reached;
            result = attempt;
        }
    }
    return result;
}

ParseResult parse_object(std::map<std::string, Value>& out, Position& position, Position end, unsigned int flags,
                         unsigned int depth) {
    ObjectState state;
    const auto read_member = [&] { return parse_member(state, position, end, flags, depth + 1); };
    const ParseResult result = parse_container(s_object, position, end, flags, depth, read_member);
    if (result == ParseResult::Ok) {
        out.swap(state.members);
    }
    return result;
}

ParseResult parse_array(std::vector<Value>& out, Position& position, Position end, unsigned int flags,
                        unsigned int depth) {
    std::vector<Value> elements;
    const auto read_element = [&] { return parse_array_element(elements, position, end, flags, depth + 1); };
    const ParseResult result = parse_container(s_array, position, end, flags, depth, read_element);
    if (result == ParseResult::Ok) {
        out.swap(elements);
    }
    return result;
}

ParseResult parse_typed_data(const std::string& element_type, Value& out, Position& position, Position end,
                             unsigned int flags, unsigned int depth) {
    return element_type.empty() ? parse_value(out, position, end, flags, depth)
                                : parse_typed_array(element_type, out, position, end, flags, depth);
}

ParseResult parse_signed_array(std::vector<Value>& out, Position& position, Position end, unsigned int flags,
                               unsigned int depth) {
    return parse_integer_array<long long>(out, position, end, flags, depth);
}

ParseResult parse_unsigned_array(std::vector<Value>& out, Position& position, Position end, unsigned int flags,
                                 unsigned int depth) {
    return parse_integer_array<unsigned long long>(out, position, end, flags, depth);
}

ParseResult parse_signed_integer(long long& out, Position& position, Position end, unsigned int) {
    return parse_integer(out, position, end);
}

ParseResult parse_unsigned_integer(unsigned long long& out, Position& position, Position end, unsigned int) {
    return parse_integer(out, position, end);
}

bool is_supported_type(const std::string& name) {
    return is_signed_type(name) || is_unsigned_type(name);
}

bool is_signed_type(const std::string& name) {
    return std::find(s_signed_types.begin(), s_signed_types.end(), name) != s_signed_types.end();
}

bool is_unsigned_type(const std::string& name) {
    return std::find(s_unsigned_types.begin(), s_unsigned_types.end(), name) != s_unsigned_types.end();
}

}  // namespace foundation::json
