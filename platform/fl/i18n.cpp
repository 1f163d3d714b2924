#include "fl/i18n.hpp"

#include <algorithm>
#include <boost/locale/utf.hpp>
#include <iterator>
#include <type_traits>

namespace fl::i18n {

namespace {

namespace utf = boost::locale::utf;

constexpr utf::code_point s_replacement = 0xFFFD;

template <class Unit>
bool is_ascii(Unit unit) {
    return static_cast<std::make_unsigned_t<Unit>>(unit) < 0x80;
}

// Copies leading ASCII and decodes the rest, passing each invalid unit to `broken`. Only the first unit of an invalid
// sequence is dropped, since the decoder may have consumed valid ones before it notices.
template <class Target, class Source, class Broken>
std::basic_string<Target> convert(const std::basic_string<Source>& text, Broken broken) {
    auto position = std::find_if_not(text.begin(), text.end(), is_ascii<Source>);
    std::basic_string<Target> result(text.begin(), position);
    result.reserve(text.size());
    const auto out = std::back_inserter(result);
    while (position != text.end()) {
        const auto start = position;
        const utf::code_point point = utf::utf_traits<Source>::decode(position, text.end());
        if (point == utf::illegal || point == utf::incomplete) {
            broken(*start, result);
            position = start + 1;
        } else {
            utf::utf_traits<Target>::encode(point, out);
        }
    }
    return result;
}

}  // namespace

std::string to_string(const ustring& text) {
    return convert<char>(text, [](char16_t unit, std::string& result) {
        if (unit >= 0xDC80 && unit <= 0xDCFF) {
            result.push_back(static_cast<char>(unit - 0xDC00));
        } else {
            utf::utf_traits<char>::encode(s_replacement, std::back_inserter(result));
        }
    });
}

ustring to_ustring(const std::string& text) {
    return convert<char16_t>(text, [](char byte, ustring& result) {
        result.push_back(static_cast<char16_t>(0xDC00 + static_cast<unsigned char>(byte)));
    });
}

ustring utf8_to_ustring(const std::string& text) {
    return to_ustring(text);
}

}  // namespace fl::i18n
