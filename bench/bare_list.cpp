#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <cstddef>
#include <cstdio>
#include <cwchar>
#include <string>
#include <string_view>
#include <vector>

#include "doc_products_shared/DocSetJsonParser.hpp"
#include "fl/i18n.hpp"

// The least work that produces the output of `docproducts list`: parse the catalogue, stat each product's proof files,
// parse the catalogue again and print the table. It resolves no root, reads no setting, logs nothing and looks nothing
// up. Every cell must be printable UTF-8, and no location may be empty.

namespace {

using doc_products_shared::DocProduct;
using doc_products_shared::DocSetJsonParser;
using doc_products_shared::DocumentationSet;
using doc_products_shared::ProductFamily;

using Row = std::array<std::string_view, 5>;

constexpr Row s_headings = {"Display name", "Short name", "Base code", "Status", "Location"};
constexpr std::size_t s_widest = 60;  // a wider cell doesn't widen its column
constexpr std::size_t s_gap = 2;

bool isThere(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0;
}

bool isWebOnly(const DocProduct& product) {
    const auto& families = product.getProductFamilies();
    return std::any_of(families.begin(), families.end(),
                       [](const ProductFamily& family) { return family.getFamily() == "webonlyproducts"; });
}

bool isInstalled(const DocProduct& product, const std::string& dataRoot) {
    return (isThere(dataRoot + "/" + product.getHelpLocation() + "/doccenter.properties") ||
            isThere(dataRoot + "/docCatalog/products/" + product.getShortName() + ".properties")) &&
           !isWebOnly(product);
}

std::vector<Row> installedRows(const DocumentationSet& set, const std::string& dataRoot) {
    std::vector<Row> rows = {s_headings};
    for (const auto& product : set.getTopLevelProducts()) {
        if (isInstalled(*product, dataRoot)) {
            rows.push_back({product->getDisplayName(), product->getShortName(), product->getBaseCode(),
                            product->getAvailability(), product->getHelpLocation()});
        }
    }
    return rows;
}

std::size_t displayWidth(std::string_view text) {
    if (std::all_of(text.begin(), text.end(), [](char byte) { return byte >= ' ' && byte <= '~'; })) {
        return text.size();
    }
    std::size_t width = 0;
    std::mbstate_t state{};
    while (!text.empty()) {
        wchar_t character = 0;
        const std::size_t bytes = std::mbrtowc(&character, text.data(), text.size(), &state);
        width += static_cast<std::size_t>(std::max(0, ::wcwidth(character)));
        text.remove_prefix(std::min(bytes, text.size()));
    }
    return width;
}

std::size_t columnWidth(const std::vector<Row>& rows, std::size_t column) {
    std::size_t widest = 0;
    for (const Row& row : rows) {
        const std::size_t width = displayWidth(row[column]);
        widest = width > s_widest ? widest : std::max(widest, width);
    }
    return widest;
}

// The last column is never padded.
std::string tableText(const std::vector<Row>& rows) {
    std::array<std::size_t, s_headings.size() - 1> widths;
    for (std::size_t column = 0; column < widths.size(); ++column) {
        widths[column] = columnWidth(rows, column);
    }
    std::string text;
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < widths.size(); ++column) {
            const std::size_t width = displayWidth(row[column]);
            text.append(row[column]).append(std::max(widths[column], width) - width + s_gap, ' ');
        }
        text.append(row.back()).push_back('\n');
    }
    return text;
}

}  // namespace

// The argument is the install root.
int main(int argc, char** argv) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
    const std::string helpFolder = std::string(argc > 1 ? argv[1] : ".") + "/help";
    const fl::ustring catalogue = fl::i18n::to_ustring(helpFolder + "/docset.json");
    const DocumentationSet set = DocSetJsonParser().parse(catalogue);
    const std::vector<Row> rows = installedRows(set, helpFolder);
    const std::size_t count = DocSetJsonParser().parse(catalogue).getTopLevelProducts().size();
    const std::string text =
        tableText(rows) + std::to_string(rows.size() - 1) + " of " + std::to_string(count) + " products installed\n";
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0 ? 0 : 1;
}
