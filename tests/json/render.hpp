#pragma once

#include <string>

#include "json/Value.hpp"

// A document as one line that shows each alternative: undefined, null, true, 1.5, "text", [..], {"key":..}, and an
// s or u in front of a signed or unsigned integer. Strings are not escaped.
std::string render(const foundation::json::Value& value);
