#pragma once

#include "fl/ustring.hpp"

// The text level of paths, POSIX form: the separator is "/", and any text is a path as it stands.
namespace fl::filesystem::detail {

// The native form of a path's text: the text as it is, a trailing separator included. The flag, true in every path of
// this project, chooses nothing here.
ustring make_native_form(const ustring& text, bool flag);

// Appends a component in place. One separator goes between the two unless `text` ends in one, also where the
// component starts with one: nothing that stands is ever replaced. On an empty text the component stands alone.
void concatenate_pathname(ustring& text, const ustring& component, bool flag);

// True if the text starts with a separator; false for the empty text.
bool is_absolute(const ustring& text) noexcept;

}  // namespace fl::filesystem::detail
