#pragma once

#include <string_view>

namespace app::check {

class Problems;

// Reports what the library reads and other readers of JSON refuse or read differently. The syntax of the text must be
// right; the text may end anywhere.
void checkPortable(std::string_view text, Problems& problems);

}  // namespace app::check
