#include "fl/pathname.hpp"

namespace fl::filesystem::detail {

namespace {

constexpr char16_t s_separator = u'/';

}  // namespace

ustring make_native_form(const ustring& text, bool /*flag*/) {
    return text;
}

void concatenate_pathname(ustring& text, const ustring& component, bool /*flag*/) {
    ustring whole;  // apart, since the component may be the text itself
    whole.reserve(text.size() + 1 + component.size());
    whole = text;
    if (!text.empty() && text.back() != s_separator) {
        whole.push_back(s_separator);
    }
    whole += component;
    text.swap(whole);
}

bool is_absolute(const ustring& text) noexcept {
    return !text.empty() && text.front() == s_separator;
}

}  // namespace fl::filesystem::detail
