#pragma once

#include "fl/ustring.hpp"

namespace fl::filesystem::detail {

ustring make_native_form(const ustring& text, bool flag);
void concatenate_pathname(ustring& text, const ustring& component, bool flag);
bool is_absolute(const ustring& text) noexcept;

}  // namespace fl::filesystem::detail
