#pragma once

#include <string>

// The host's types and services for text and paths.
namespace fl {

// UTF-16 text; lengths and positions count code units. Unpaired surrogates are allowed and keep their place.
using ustring = std::basic_string<char16_t>;

}  // namespace fl
