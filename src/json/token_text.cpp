#include "json/token_text.hpp"

#include <boost/locale/utf.hpp>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <system_error>

namespace foundation::json::detail {

namespace {

namespace utf = boost::locale::utf;

constexpr utf::code_point s_replacement = 0xFFFD;

// Every token of at most this many characters fits an int.
constexpr std::ptrdiff_t s_exact_digits = std::numeric_limits<int>::digits10;

// strtod distinguishes overflow from underflow, which from_chars doesn't; in the C locale "." is the decimal point.
double beyond_range(const char* token) {
    static const locale_t s_locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return strtod_l(token, nullptr, s_locale);
}

}  // namespace

std::string get_utf8_string(std::string::const_iterator first, std::string::const_iterator last) {
    return {first, last};
}

double string_to_double(const char* token) {
    const char* const end = token + std::strlen(token);
    if (end - token <= s_exact_digits) {
        int integer = 0;
        if (std::from_chars(token, end, integer).ptr == end && integer != 0) {  // a zero may be negative
            return integer;
        }
    }
    double number = 0;
    const auto outcome = std::from_chars(token, end, number);
    return outcome.ec == std::errc::result_out_of_range ? beyond_range(token) : number;
}

std::string u16_to_u8(const char16_t* units, int count) {
    std::string text;
    const char16_t* const end = units + count;
    while (units != end) {
        const char16_t* next = units;
        utf::code_point point = utf::utf_traits<char16_t>::decode(next, end);
        if (point == utf::illegal || point == utf::incomplete) {
            point = s_replacement;
            next = units + 1;  // the decoder may have consumed a valid unit after the invalid one
        }
        utf::utf_traits<char>::encode(point, std::back_inserter(text));
        units = next;
    }
    return text;
}

}  // namespace foundation::json::detail
