#include "table.hpp"

#include <algorithm>
#include <numeric>
#include <string>
#include <utility>

#include "terminal_text.hpp"

namespace app {

namespace {

constexpr std::size_t s_widest = 60;  // where nothing is cut, a wider cell doesn't widen its column
constexpr std::size_t s_gap = 2;
constexpr std::size_t s_leastLast = 10;

using Widths = std::vector<std::size_t>;

std::size_t cellWidth(std::string_view cell) {
    std::size_t width = 0;
    forEachPrintablePart(cell, [&](const std::string& part) { width += displayWidth(part); });
    return width;
}

void widen(Widths& widths, const Row& row, const TableStyle& style) {
    widths.resize(row.cells.size());
    for (std::size_t column = 0; column < widths.size(); ++column) {
        std::size_t width = cellWidth(row.cells[column]);
        if (style.width > 0) {
            width = std::min(width, style.width);
        } else if (width > s_widest) {
            width = 0;
        }
        widths[column] = std::max(widths[column], width);
    }
}

// Takes from the widest column, as long as the table is too wide and a column has more than one to give.
void narrow(Widths& widths, const TableStyle& style) {
    std::size_t total = std::accumulate(widths.begin(), widths.end(), (widths.size() - 1) * s_gap);
    for (; total > style.width; --total) {
        const bool isLast = style.cutsLastFirst && widths.back() > s_leastLast;
        std::size_t& widest = isLast ? widths.back() : *std::max_element(widths.begin(), widths.end());
        if (widest <= 1) {
            return;
        }
        --widest;
    }
}

// Writes a cell and returns its width.
std::size_t writeCell(const Write& write, std::string_view cell, std::size_t columnWidth, const TableStyle& style) {
    const std::size_t width = cellWidth(cell);
    if (style.width > 0 && width > columnWidth) {
        const std::string start = truncated(cell, columnWidth);
        write(start);
        return displayWidth(start);  // less than the column's, if a wide character doesn't fit
    }
    forEachPrintablePart(cell, write);
    return width;
}

const char* startOf(Emphasis emphasis) {
    constexpr const char* s_bold = "\x1B[1m";
    constexpr const char* s_dim = "\x1B[2m";
    return emphasis == Emphasis::heading ? s_bold : s_dim;
}

void writeLine(const Write& write, const TableStyle& style, const Widths& widths, const Row& row) {
    const bool isEmphasized = style.hasColor && row.emphasis != Emphasis::none;
    write(isEmphasized ? startOf(row.emphasis) : "");
    std::size_t blanks = 0;  // due before the next cell that isn't empty
    for (std::size_t column = 0; column < widths.size(); ++column) {
        std::size_t width = 0;
        if (!row.cells[column].empty()) {
            write(std::string(std::exchange(blanks, 0), ' '));
            width = writeCell(write, row.cells[column], widths[column], style);
        }
        blanks += std::max(widths[column], width) - width + s_gap;
    }
    write(isEmphasized ? "\x1B[0m\n" : "\n");
}

}  // namespace

void writeTable(const Write& write, const TableStyle& style, std::size_t count,
                const std::function<Row(std::size_t)>& row) {
    Widths widths;
    for (std::size_t i = 0; i < count; ++i) {
        widen(widths, row(i), style);
    }
    if (style.width > 0) {
        narrow(widths, style);
    }
    for (std::size_t i = 0; i < count; ++i) {
        writeLine(write, style, widths, row(i));
    }
}

void writeTable(const Write& write, const TableStyle& style, const std::vector<Row>& rows) {
    writeTable(write, style, rows.size(), [&](std::size_t i) { return rows[i]; });
}

}  // namespace app
