#include <utility>
#include <vector>

#include "Failure.hpp"
#include "catalogue.hpp"
#include "commands.hpp"
#include "options.hpp"
#include "table.hpp"
#include "terminal_text.hpp"

namespace app {

using doc_products_shared::DocProduct;
using doc_products_shared::ProductFamily;

namespace {

std::string familyText(const ProductFamily& family) {
    return family.getGroup().empty() ? family.getFamily() : family.getFamily() + " (" + family.getGroup() + ")";
}

std::string productText(const DocProduct& product) {
    std::vector<std::vector<std::string>> rows = {
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

std::string findProduct(const Options& options) {
    const auto product = openCatalogue(options)->getProductInfo(options.name);
    if (!product) {
        throw Failure(ExitStatus::nothingFound, "No product has the name \"" + printable(options.name) + "\"\n");
    }
    return productText(*product);
}

}  // namespace app
