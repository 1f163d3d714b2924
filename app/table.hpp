#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace app {

enum class Emphasis { none, heading, missing };

struct Row {
    std::vector<std::string_view> cells;
    Emphasis emphasis = Emphasis::none;  // shown only by a table with colour
};

// How a table is shown.
struct TableStyle {
    std::size_t width = 0;  // the columns of the terminal that it must fit; 0 if it may have any width
    bool hasColor = false;
    bool cutsLastFirst = false;  // narrows the last column before the others, as long as it has 10 columns
};

using Write = std::function<void(std::string_view)>;

// Writes one line per row, with aligned columns, two blanks apart and without padding at the end. Cells are written in
// printable form.
//
// If the width is limited, the widest columns are narrowed until the table fits or each is one wide, and the cells that
// are wider than their column are cut, with "…" at the end. Otherwise a cell wider than 60 columns of the terminal is
// written whole but doesn't widen its column: it shifts only the rest of its own line.
//
// `row(i)` returns row i, with the same number of cells for each. It is called twice per row, so that a long table is
// never held in memory.
void writeTable(const Write& write, const TableStyle& style, std::size_t count,
                const std::function<Row(std::size_t)>& row);

void writeTable(const Write& write, const TableStyle& style, const std::vector<Row>& rows);

}  // namespace app
