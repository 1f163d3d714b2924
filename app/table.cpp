#include "table.hpp"

#include <algorithm>
#include <cstddef>

#include "terminal_text.hpp"

namespace app {

namespace {

using Row = std::vector<std::string>;

std::size_t columnWidth(const std::vector<Row>& rows, std::size_t column) {
    std::size_t width = 0;
    for (const Row& row : rows) {
        width = std::max(width, displayWidth(row[column]));
    }
    return width;
}

// Widens each cell of the column to `width` and the gap to the next column.
void padColumn(std::vector<Row>& rows, std::size_t column, std::size_t width) {
    for (Row& row : rows) {
        row[column].append(width + 2 - displayWidth(row[column]), ' ');
    }
}

std::string lineText(const Row& row) {
    std::string line;
    for (const std::string& cell : row) {
        line += cell;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + '\n';
}

}  // namespace

std::string tableText(std::vector<Row> rows) {
    for (Row& row : rows) {
        std::transform(row.begin(), row.end(), row.begin(), printable);
    }
    for (std::size_t column = 0; column < rows.front().size(); ++column) {
        padColumn(rows, column, columnWidth(rows, column));
    }
    std::string text;
    for (const Row& row : rows) {
        text += lineText(row);
    }
    return text;
}

}  // namespace app
