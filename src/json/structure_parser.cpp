#include "json/structure_parser.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <tuple>
#include <utility>

#include "json/byte_scan.hpp"
#include "json/parse.hpp"
#include "json/typed_integers.hpp"

// A typed array is an object with a "zqtype" and a "zqdata". If the type comes first, the data is read once, as
// integers. If the data comes first, its type isn't known yet: it is read as an ordinary value, and its position is
// kept. The type then has it read again, as integers, from that position.
namespace foundation::json {

namespace {

using Elements = std::vector<Value>;
using Members = std::map<std::string, Value>;

constexpr std::string_view s_type_key = "zqtype";
constexpr std::string_view s_data_key = "zqdata";

// A kind of container: its brackets, and what to report if one is missing.
struct Container {
    char opening;
    char closing;
    ParseResult opening_expected;
    ParseResult delimiter_expected;
};

constexpr Container s_array{'[', ']', ParseResult::ExpectedArray, ParseResult::ExpectedArrayDelimiter};
constexpr Container s_object{'{', '}', ParseResult::ExpectedObject, ParseResult::ExpectedObjectDelimiter};

// The position, the end of the text, and the flags, which say what counts as white space.
struct Cursor {
    Position position;
    Position end;
    unsigned int flags;
};

// Requires: not at the end of the text.
bool accept(char byte, Cursor& cursor) {
    if (*cursor.position != byte) {
        return false;
    }
    ++cursor.position;
    return true;
}

void skip_whitespace(Cursor& cursor) {
    json::skip_whitespace(cursor.position, cursor.end, cursor.flags);
}

ParseResult skip_to_next_byte(Cursor& cursor) {
    skip_whitespace(cursor);
    return cursor.position == cursor.end ? ParseResult::UnexpectedEnd : ParseResult::Ok;
}

// After a success, skips white space; UnexpectedEnd if nothing follows.
ParseResult skip_after(ParseResult result, Cursor& cursor) {
    return result == ParseResult::Ok ? skip_to_next_byte(cursor) : result;
}

ParseResult open_container(const Container& container, Cursor& cursor, unsigned int depth) {
    if (cursor.position == cursor.end) {
        return ParseResult::UnexpectedEnd;
    }
    if (!accept(container.opening, cursor)) {
        return container.opening_expected;
    }
    return depth < MAX_NESTING ? skip_to_next_byte(cursor) : ParseResult::NestingTooDeep;
}

// Reads from the opening to the closing bracket. `read_item` reads one item and the white space after it; it fails at
// the end of the text.
template <class ReadItem>
ParseResult read_container(const Container& container, Cursor& cursor, unsigned int depth, ReadItem read_item) {
    ParseResult result = open_container(container, cursor, depth);
    if (result != ParseResult::Ok || accept(container.closing, cursor)) {
        return result;
    }
    for (;;) {
        result = read_item();
        if (result != ParseResult::Ok) {
            return result;
        }
        if (!accept(',', cursor)) {
            return accept(container.closing, cursor) ? ParseResult::Ok : container.delimiter_expected;
        }
        skip_whitespace(cursor);
    }
}

// The capacity to grow to: the number of elements that the whole text would hold at the present density, plus an
// eighth, kept between 1.5 and 4 times the present size.
std::size_t next_capacity(std::size_t size, Position start, const Cursor& cursor) {
    const auto density = static_cast<double>(size) / static_cast<double>(cursor.position - start);
    const auto expected = 1.125 * density * static_cast<double>(cursor.end - start);
    return std::clamp(static_cast<std::size_t>(expected), size + size / 2, 4 * size);
}

// Element by element: Value's move can throw, so a vector that grows by itself would copy whole trees instead. After
// an exception the elements can only be destroyed.
void grow(Elements& elements, Position start, const Cursor& cursor) {
    Elements larger;
    larger.reserve(std::max<std::size_t>(2, next_capacity(elements.size(), start, cursor)));
    std::move(elements.begin(), elements.end(), std::back_inserter(larger));
    elements.swap(larger);
}

// Appends to an array whose text starts at `start`. Moving a container allocates, so arrays must grow rarely.
template <class... Content>
Value& append(Elements& elements, Position start, const Cursor& cursor, Content... content) {
    if (elements.size() == elements.capacity()) {
        grow(elements, start, cursor);
    }
    return elements.emplace_back(content...);
}

// From here on readers fill a fresh object. After a failure it holds what has been read so far.

template <class Integer>
ParseResult read_integer_array(Elements& fresh, Cursor& cursor, unsigned int depth) {
    const Position start = cursor.position;
    const auto read_element = [&] {
        Integer number = 0;
        const ParseResult result = skip_after(detail::parse_integer(number, cursor.position, cursor.end), cursor);
        if (result == ParseResult::Ok) {
            append(fresh, start, cursor, number);
        }
        return result;
    };
    const ParseResult result = read_container(s_array, cursor, depth, read_element);
    return result == ParseResult::ExpectedArrayDelimiter && detail::shows_no_integer(*cursor.position)
               ? ParseResult::InvalidInteger
               : result;
}

ParseResult read_value(Value& fresh, Cursor& cursor, unsigned int depth);

// Not inlined, like the others marked so: its locals must not enlarge the frames of the recursion.
[[gnu::noinline]] ParseResult read_typed_data(const std::string& element_type, Value& fresh, Cursor& cursor,
                                              unsigned int depth) {
    if (element_type.empty()) {
        return read_value(fresh, cursor, depth);
    }
    Elements elements;
    const ParseResult result = is_signed_type(element_type)
                                   ? read_integer_array<long long>(elements, cursor, depth)
                                   : read_integer_array<unsigned long long>(elements, cursor, depth);
    if (result == ParseResult::Ok) {
        fresh.emplace<Elements>(std::move(elements));
    }
    return result;
}

ParseResult read_array(Elements& fresh, Cursor& cursor, unsigned int depth) {
    const Position start = cursor.position;
    return read_container(s_array, cursor, depth, [&] {
        return skip_after(read_value(append(fresh, start, cursor), cursor, depth + 1), cursor);
    });
}

// The state of an object while it is read.
struct ObjectState {
    Members& members;
    std::string decoded;        // the latest key that has escapes
    std::string element_type;   // the latest supported zqtype, or empty
    bool data_pending = false;  // a zqdata has been read that no later zqtype has typed
    Cursor data{};              // the start of the latest zqdata's value
};

// The key, the colon, and the white space around it.
ParseResult read_key(std::string_view& key, ObjectState& state, Cursor& cursor) {
    const ParseResult result = skip_after(read_string(key, state.decoded, cursor.position, cursor.end), cursor);
    if (result != ParseResult::Ok) {
        return result;
    }
    if (!accept(':', cursor)) {
        return ParseResult::ExpectedColon;
    }
    skip_whitespace(cursor);
    return ParseResult::Ok;
}

ParseResult reread_data(ObjectState& state, unsigned int depth) {
    Value& member = state.members[std::string(s_data_key)];
    member = Value();
    Cursor cursor = state.data;
    const ParseResult result = read_typed_data(state.element_type, member, cursor, depth);
    if (result == ParseResult::Ok) {
        state.data_pending = false;
    }
    return result;
}

// A zqtype that isn't a string has no effect, and neither has an exception thrown here: the member is then stored
// like any other.
[[gnu::noinline]] ParseResult apply_type(ObjectState& state, const Value& type, unsigned int depth) {
    try {
        const auto& name = type.get<std::string>();
        if (is_supported_type(name)) {
            state.element_type = name;
        }
        if (state.data_pending && is_supported_type(state.element_type)) {
            return reread_data(state, depth);
        }
    } catch (...) {  // NOLINT(bugprone-empty-catch)
    }
    return ParseResult::Ok;
}

ParseResult read_type(ObjectState& state, Value& fresh, Cursor& cursor, unsigned int depth) {
    const ParseResult result = read_value(fresh, cursor, depth);
    return result == ParseResult::Ok ? apply_type(state, fresh, depth) : result;
}

ParseResult read_data(ObjectState& state, Value& fresh, Cursor& cursor, unsigned int depth) {
    state.data = cursor;
    state.data_pending = true;
    try {
        return read_typed_data(state.element_type, fresh, cursor, depth);
    } catch (...) {
        cursor = state.data;
        return ParseResult::UnexpectedEnd;
    }
}

// A zqtype or zqdata is stored last: it takes effect first.
[[gnu::noinline]] ParseResult read_typed_member(ObjectState& state, std::string_view key, Cursor& cursor,
                                                unsigned int depth) {
    Value value;
    const auto read = key == s_type_key ? read_type : read_data;
    const ParseResult result = skip_after(read(state, value, cursor, depth), cursor);
    if (result == ParseResult::Ok) {
        state.members.try_emplace(std::string(key), std::move(value));
    }
    return result;
}

[[gnu::noinline]] ParseResult discard_value(Cursor& cursor, unsigned int depth) {
    Value discarded;
    return read_value(discarded, cursor, depth);
}

// Inserted first, so that the value is read in place. The hint makes members in key order cheap.
ParseResult read_plain_member(Members& members, std::string_view key, Cursor& cursor, unsigned int depth) {
    const auto count = members.size();
    const auto member = members.emplace_hint(members.end(), std::piecewise_construct, std::tuple(key), std::tuple());
    const bool is_new = members.size() != count;
    return skip_after(is_new ? read_value(member->second, cursor, depth) : discard_value(cursor, depth), cursor);
}

ParseResult read_member(ObjectState& state, Cursor& cursor, unsigned int depth) {
    std::string_view key;
    const ParseResult result = read_key(key, state, cursor);
    if (result != ParseResult::Ok) {
        return result;
    }
    return key == s_type_key || key == s_data_key ? read_typed_member(state, key, cursor, depth)
                                                  : read_plain_member(state.members, key, cursor, depth);
}

ParseResult read_object(Members& fresh, Cursor& cursor, unsigned int depth) {
    ObjectState state{fresh, {}, {}};
    return read_container(s_object, cursor, depth, [&] { return read_member(state, cursor, depth + 1); });
}

ParseResult read_string_value(Value& fresh, Cursor& cursor) {
    std::string_view text;
    std::string decoded;
    const ParseResult result = read_string(text, decoded, cursor.position, cursor.end);
    if (result == ParseResult::Ok) {
        fresh.emplace<std::string>() = text;
    }
    return result;
}

ParseResult read_number_value(Value& fresh, Cursor& cursor) {
    double number = 0;
    const ParseResult result = parse_number(number, cursor.position, cursor.end, cursor.flags);
    if (result == ParseResult::Ok) {
        fresh.emplace<double>(number);
    }
    return result;
}

// Literals move the cursor only on success, so a byte that starts no value ends as ExpectedString.
ParseResult read_scalar(Value& fresh, Cursor& cursor) {
    const Position start = cursor.position;
    const ParseResult result = read_number_value(fresh, cursor);
    if (cursor.position != start) {
        return result;
    }
    if (parse_bool(fresh, cursor.position, cursor.end, cursor.flags) == ParseResult::Ok ||
        parse_null(fresh, cursor.position, cursor.end) == ParseResult::Ok) {
        return ParseResult::Ok;
    }
    return cursor.position == cursor.end ? ParseResult::UnexpectedEnd : ParseResult::ExpectedString;
}

// The first byte decides the kind of the value.
ParseResult read_value(Value& fresh, Cursor& cursor, unsigned int depth) {
    switch (cursor.position == cursor.end ? 0 : *cursor.position) {
        case '"':
            return read_string_value(fresh, cursor);
        case '{':
            return read_object(fresh.emplace<Members>(), cursor, depth);
        case '[':
            return read_array(fresh.emplace<Elements>(), cursor, depth);
        default:
            return read_scalar(fresh, cursor);
    }
}

// Reads into a fresh object, which becomes `out` on success only.
template <class Out, class Read>
ParseResult assign_on_success(Out& out, Position& position, Position end, unsigned int flags, Read read) {
    Cursor cursor{position, end, flags};
    Out fresh;
    const ParseResult result = read(fresh, cursor);
    position = cursor.position;
    if (result == ParseResult::Ok) {
        out = std::move(fresh);
    }
    return result;
}

}  // namespace

ParseResult parse_value(Value& out, Position& position, Position end, unsigned int flags, unsigned int depth) {
    return assign_on_success(out, position, end, flags,
                             [&](Value& fresh, Cursor& cursor) { return read_value(fresh, cursor, depth); });
}

ParseResult parse_object(Members& out, Position& position, Position end, unsigned int flags, unsigned int depth) {
    return assign_on_success(out, position, end, flags,
                             [&](Members& fresh, Cursor& cursor) { return read_object(fresh, cursor, depth); });
}

ParseResult parse_array(Elements& out, Position& position, Position end, unsigned int flags, unsigned int depth) {
    return assign_on_success(out, position, end, flags,
                             [&](Elements& fresh, Cursor& cursor) { return read_array(fresh, cursor, depth); });
}

ParseResult parse_typed_data(const std::string& element_type, Value& out, Position& position, Position end,
                             unsigned int flags, unsigned int depth) {
    return assign_on_success(out, position, end, flags, [&](Value& fresh, Cursor& cursor) {
        return read_typed_data(element_type, fresh, cursor, depth);
    });
}

ParseResult parse_signed_array(Elements& out, Position& position, Position end, unsigned int flags,
                               unsigned int depth) {
    return assign_on_success(out, position, end, flags, [&](Elements& fresh, Cursor& cursor) {
        return read_integer_array<long long>(fresh, cursor, depth);
    });
}

ParseResult parse_unsigned_array(Elements& out, Position& position, Position end, unsigned int flags,
                                 unsigned int depth) {
    return assign_on_success(out, position, end, flags, [&](Elements& fresh, Cursor& cursor) {
        return read_integer_array<unsigned long long>(fresh, cursor, depth);
    });
}

}  // namespace foundation::json
