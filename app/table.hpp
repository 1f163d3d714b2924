#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace app {

using Row = std::vector<std::string_view>;
using Write = std::function<void(std::string_view)>;

// Writes lines of aligned columns, two blanks apart and without padding at the end, one after the other. Cells are
// written in printable form. A cell of more than 60 columns is written whole, but doesn't widen its column: it shifts
// the rest of its own line alone.
//
// `row(i)` gives the cells of line i, as many for each line. It is called twice, so a long table needs no memory.
void writeTable(const Write& write, std::size_t count, const std::function<Row(std::size_t)>& row);

void writeTable(const Write& write, const std::vector<Row>& rows);

}  // namespace app
