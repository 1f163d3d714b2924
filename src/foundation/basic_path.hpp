#pragma once

#include <string>
#include <utility>

#include "fl/i18n.hpp"
#include "fl/pathname.hpp"

namespace fl::filesystem {

namespace detail {

// What a path asks of the text level, for one pair of character types.
template <class Narrow, class Unit>
struct path_traits;

template <>
struct path_traits<char, char16_t> {
    static ustring native_form(const ustring& text) { return make_native_form(text, true); }
    static void append(ustring& text, const ustring& component, bool flag) {
        concatenate_pathname(text, component, flag);
    }
};

}  // namespace detail

// A path: text in native form, absolute or relative, never looked up or normalised. The empty text is the empty path,
// which the library uses for "no value". A plain value: copies share nothing, and a moved-from path may hold any
// text.
template <class Narrow, class Unit, class Traits>
class basic_path {
public:
    using string_type = std::basic_string<Unit>;

    basic_path() = default;

    // The empty text gives the empty path; any other is brought into native form.
    explicit basic_path(const string_type& text) : m_text(text.empty() ? string_type() : Traits::native_form(text)) {}

    // The text, in code units without a terminator. Valid until the path changes.
    const string_type& native() const noexcept { return m_text; }

    bool empty() const noexcept { return m_text.empty(); }

    // Appends a component; an empty one changes nothing, and on the empty path the component stands alone.
    basic_path& operator/=(const string_type& component) {
        if (!component.empty()) {
            Traits::append(m_text, component, m_flag);
        }
        return *this;
    }

    friend basic_path operator/(basic_path path, const string_type& component) {
        path /= component;
        return path;
    }

    // Text alone counts: the same code units, "/a" and "/a/" being different paths.
    friend bool operator==(const basic_path& left, const basic_path& right) noexcept {
        return left.m_text == right.m_text;
    }

private:
    string_type m_text;
    bool m_flag = true;  // travels with the text; the host's functions ask for it when a component is appended
};

using upath = basic_path<char, char16_t, detail::path_traits<char, char16_t>>;

// The path's text in narrow form, as fl::i18n::to_string gives it.
inline std::string to_string(const upath& path) {
    return i18n::to_string(path.native());
}

}  // namespace fl::filesystem
