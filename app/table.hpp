#pragma once

#include <string>
#include <vector>

namespace app {

// The rows as lines of aligned columns, two blanks apart. Rows have the same number of cells; cells are shown
// printable, and no line ends in blanks.
std::string tableText(std::vector<std::vector<std::string>> rows);

}  // namespace app
