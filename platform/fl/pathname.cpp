#include "fl/pathname.hpp"

namespace fl::filesystem::detail {

namespace {

constexpr char16_t s_separator = u'/';

}  // namespace

ustring make_native_form(const ustring& text, bool /*flag*/) {
    return text;
}

void concatenate_pathname(ustring& text, const ustring& component, bool /*flag*/) {
    const auto length = component.size();  // before the text changes: the component may be the text itself
    text.reserve(text.size() + 1 + length);
    if (!text.empty() && text.back() != s_separator) {
        text.push_back(s_separator);
    }
    text.append(component, 0, length);
}

bool is_absolute(const ustring& text) noexcept {
    return !text.empty() && text.front() == s_separator;
}

}  // namespace fl::filesystem::detail
