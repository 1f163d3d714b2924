#include "json/typed_integers.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace foundation::json {

namespace {

constexpr std::array<std::string_view, 4> s_signed_types{"int64", "int32", "int16", "int8"};
constexpr std::array<std::string_view, 4> s_unsigned_types{"uint64", "uint32", "uint16", "uint8"};

}  // namespace

ParseResult parse_signed_integer(long long& out, Position& position, Position end, unsigned int) {
    return detail::parse_integer(out, position, end);
}

ParseResult parse_unsigned_integer(unsigned long long& out, Position& position, Position end, unsigned int) {
    return detail::parse_integer(out, position, end);
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

bool detail::shows_no_integer(char byte) {
    return std::string_view("\".Ee{").find(byte) != std::string_view::npos;
}

}  // namespace foundation::json
