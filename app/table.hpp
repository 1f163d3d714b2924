#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace app {

using Row = std::vector<std::string_view>;
using Write = std::function<void(std::string_view)>;

// Writes one line per row, with aligned columns, two blanks apart and without padding at the end. Cells are written in
// printable form. A cell wider than 60 columns of the terminal is written whole but doesn't widen its column: it shifts
// only the rest of its own line.
//
// `row(i)` returns the cells of row i, the same number for each row. It is called twice per row, so that a long table
// is never held in memory.
void writeTable(const Write& write, std::size_t count, const std::function<Row(std::size_t)>& row);

void writeTable(const Write& write, const std::vector<Row>& rows);

}  // namespace app
