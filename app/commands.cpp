#include "commands.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

#include "Failure.hpp"
#include "catalogue.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "options.hpp"
#include "table.hpp"
#include "terminal_text.hpp"

namespace app {

using doc_products_shared::DocProduct;
using doc_products_shared::ProductFamily;
using doc_products_shared::TopLevelDocProductPtr;

namespace {

using Products = std::vector<TopLevelDocProductPtr>;
using Row = std::vector<std::string>;

auto texts(const DocProduct& product) {
    return std::tie(product.getDisplayName(), product.getShortName(), product.getAltShortName(), product.getBaseCode(),
                    product.getAvailability(), product.getHelpLocation());
}

bool areSameFamilies(const std::vector<ProductFamily>& left, const std::vector<ProductFamily>& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const ProductFamily& one, const ProductFamily& other) {
                          return one.getFamily() == other.getFamily() && one.getGroup() == other.getGroup();
                      });
}

// True if the two were read from the same entry, or from one just like it.
bool isSame(const DocProduct& left, const DocProduct& right) {
    return texts(left) == texts(right) && areSameFamilies(left.getProductFamilies(), right.getProductFamilies());
}

bool isWebOnly(const DocProduct& product) {
    const auto& families = product.getProductFamilies();
    return std::any_of(families.begin(), families.end(),
                       [](const ProductFamily& family) { return family.getFamily() == "webonlyproducts"; });
}

Row productRow(const DocProduct& product) {
    return {product.getDisplayName(), product.getShortName(), product.getBaseCode(), product.getAvailability(),
            product.getHelpLocation()};
}

const Row s_headings = {"Display name", "Short name", "Base code", "Status", "Location"};

std::string installedTable(const Products& installed) {
    std::vector<Row> rows = {s_headings};
    for (const TopLevelDocProductPtr& product : installed) {
        rows.push_back(productRow(*product));
    }
    return tableText(std::move(rows));
}

// The installed products are part of the whole list, in the same order, and what is said alike is installed alike: so
// one walk down both pairs them, though they were read one after the other.
std::string wholeTable(const Products& all, const Products& installed) {
    std::vector<Row> rows = {s_headings};
    rows.back().push_back("On this machine");
    auto next = installed.begin();
    for (const TopLevelDocProductPtr& product : all) {
        const bool isInstalled = next != installed.end() && isSame(**next, *product);
        next += isInstalled ? 1 : 0;
        rows.push_back(productRow(*product));
        rows.back().push_back(isInstalled ? "installed" : isWebOnly(*product) ? "web-only" : "not found");
    }
    return tableText(std::move(rows));
}

std::string familyText(const ProductFamily& family) {
    return family.getGroup().empty() ? family.getFamily() : family.getFamily() + " (" + family.getGroup() + ")";
}

std::string productText(const DocProduct& product) {
    std::vector<Row> rows = {
        {"display name", product.getDisplayName()},
        {"short name", product.getShortName()},
        {"alternative short name", product.getAltShortName()},
        {"base code", product.getBaseCode()},
        {"status", product.getAvailability()},
        {"help location", product.getHelpLocation()},
    };
    for (const ProductFamily& family : product.getProductFamilies()) {
        rows.push_back({"family", familyText(family)});
    }
    return tableText(std::move(rows));
}

}  // namespace

std::string showRoots(const Options& /*options*/) {
    auto& roots = doc_products_shared::Docroot::getInstance();
    return tableText({
        {"documentation root", to_string(roots.getDocroot())},
        {"data root", to_string(roots.getDocDataRoot())},
    });
}

std::string listProducts(const Options& options) {
    const auto collector = openCatalogue(options);
    const Products& installed = *collector->getInstalledTopLevelDocProducts();
    const Products all = readAllProducts(*collector, options);
    return (options.all ? wholeTable(all, installed) : installedTable(installed)) +
           fmt::format("{} of {} products installed\n", installed.size(), all.size());
}

std::string findProduct(const Options& options) {
    const auto product = openCatalogue(options)->getProductInfo(options.name);
    if (!product) {
        throw Failure(ExitStatus::nothingFound, "No product has the name \"" + printable(options.name) + "\"\n");
    }
    return productText(*product);
}

}  // namespace app
