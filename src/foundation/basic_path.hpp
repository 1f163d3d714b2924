#pragma once

#include <string>
#include <utility>

#include "fl/i18n.hpp"
#include "fl/pathname.hpp"

namespace fl::filesystem {

namespace detail {

// The text functions that a path of these character types uses.
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

// A path: text in native form, absolute or relative; the disk isn't consulted and nothing is normalised. The empty
// text is the empty path, which the library uses for "no value". Copies share nothing; a moved-from path has
// unspecified text.
template <class Narrow, class Unit, class Traits>
class basic_path {
public:
    // The type of the text: fl::ustring for a upath.
    using string_type = std::basic_string<Unit>;

    basic_path() = default;

    // Converts the text to native form; the empty text gives the empty path.
    explicit basic_path(const string_type& text) : m_text(text.empty() ? string_type() : Traits::native_form(text)) {}

    // The text, in code units. Valid until the path changes.
    const string_type& native() const noexcept { return m_text; }

    // True if the path is "no value".
    bool empty() const noexcept { return m_text.empty(); }

    // Appends a component, after a separator unless the path is empty or ends in one. An empty one changes nothing.
    basic_path& operator/=(const string_type& component) {
        if (!component.empty()) {
            Traits::append(m_text, component, m_flag);
        }
        return *this;
    }

    // A copy of the path with the component appended in the same way.
    friend basic_path operator/(basic_path path, const string_type& component) {
        path /= component;
        return path;
    }

    // Compares the text, code unit by code unit: "/a" and "/a/" are different paths.
    friend bool operator==(const basic_path& left, const basic_path& right) noexcept {
        return left.m_text == right.m_text;
    }

private:
    string_type m_text;
    bool m_flag = true;  // copied with the text; the host's function for appending takes it
};

// The paths that the library takes and returns: UTF-16 text.
using upath = basic_path<char, char16_t, detail::path_traits<char, char16_t>>;

// The path's text in narrow form, as fl::i18n::to_string gives it.
inline std::string to_string(const upath& path) {
    return i18n::to_string(path.native());
}

}  // namespace fl::filesystem
