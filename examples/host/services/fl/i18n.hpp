#pragma once

#include <string>

#include "fl/ustring.hpp"

// This host has only file names that are UTF-8: other bytes, and unpaired surrogates, are dropped.
namespace fl::i18n {

std::string to_string(const ustring& text);
ustring to_ustring(const std::string& text);
ustring utf8_to_ustring(const std::string& text);

}  // namespace fl::i18n
