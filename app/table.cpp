#include "table.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "terminal_text.hpp"

namespace app {

namespace {

constexpr std::size_t s_widest = 60;  // a wider cell doesn't widen its column
constexpr std::size_t s_gap = 2;

std::size_t cellWidth(std::string_view cell) {
    std::size_t width = 0;
    forEachPrintablePart(cell, [&](const std::string& part) { width += displayWidth(part); });
    return width;
}

void widen(std::vector<std::size_t>& widths, const Row& row) {
    widths.resize(row.size());
    for (std::size_t column = 0; column < row.size(); ++column) {
        const std::size_t width = cellWidth(row[column]);
        widths[column] = std::max(widths[column], width > s_widest ? 0 : width);
    }
}

void writeLine(const Write& write, const std::vector<std::size_t>& widths, const Row& row) {
    std::size_t blanks = 0;  // due before the next cell that isn't empty
    for (std::size_t column = 0; column < row.size(); ++column) {
        if (!row[column].empty()) {
            write(std::string(std::exchange(blanks, 0), ' '));
            forEachPrintablePart(row[column], write);
        }
        const std::size_t width = cellWidth(row[column]);
        blanks += std::max(widths[column], width) - width + s_gap;
    }
    write("\n");
}

}  // namespace

void writeTable(const Write& write, std::size_t count, const std::function<Row(std::size_t)>& row) {
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < count; ++i) {
        widen(widths, row(i));
    }
    for (std::size_t i = 0; i < count; ++i) {
        writeLine(write, widths, row(i));
    }
}

void writeTable(const Write& write, const std::vector<Row>& rows) {
    writeTable(write, rows.size(), [&](std::size_t i) { return rows[i]; });
}

}  // namespace app
