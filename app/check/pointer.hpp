#pragma once

#include <string>
#include <string_view>

namespace app::check {

// Appends a key or an index to a JSON pointer (RFC 6901).
void appendTo(std::string& pointer, std::string_view segment);

}  // namespace app::check
