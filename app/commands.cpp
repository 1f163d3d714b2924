#include "commands.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <boost/algorithm/string/trim.hpp>
#include <iostream>
#include <locale>
#include <string>
#include <tuple>
#include <vector>

#include "catalogue.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "fl/filesystem.hpp"
#include "near_names.hpp"
#include "options.hpp"
#include "output.hpp"
#include "table.hpp"
#include "terminal_text.hpp"

namespace app {

using doc_products_shared::DocProduct;
using doc_products_shared::ProductFamily;
using doc_products_shared::TopLevelDocProductPtr;

namespace {

using Products = std::vector<TopLevelDocProductPtr>;

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

// True for products that were read from the same entry, or from equal entries.
bool isSame(const DocProduct& left, const DocProduct& right) {
    return texts(left) == texts(right) && areSameFamilies(left.getProductFamilies(), right.getProductFamilies());
}

bool isWebOnly(const DocProduct& product) {
    const auto& families = product.getProductFamilies();
    return std::any_of(families.begin(), families.end(),
                       [](const ProductFamily& family) { return family.getFamily() == "webonlyproducts"; });
}

Row productRow(const DocProduct& product) {
    return {{product.getDisplayName(), product.getShortName(), product.getBaseCode(), product.getAvailability(),
             product.getHelpLocation()}};
}

const Row s_headings = {{"Display name", "Short name", "Base code", "Status", "Location"}, Emphasis::heading};

void printInstalled(const TableStyle& style, const Products& installed) {
    writeTable(print, style, installed.size() + 1,
               [&](std::size_t i) { return i == 0 ? s_headings : productRow(*installed[i - 1]); });
}

const char* const s_installed = "installed";

// `installed` is a subsequence of `all`, and equal entries are either all installed or none, so one pass pairs them.
std::vector<const char*> statesOf(const Products& all, const Products& installed) {
    std::vector<const char*> states;
    auto next = installed.begin();
    for (const TopLevelDocProductPtr& product : all) {
        const bool isInstalled = next != installed.end() && isSame(**next, *product);
        next += isInstalled ? 1 : 0;
        states.push_back(isInstalled ? s_installed : isWebOnly(*product) ? "web-only" : "not found");
    }
    return states;
}

Row stateRow(const DocProduct& product, const char* state) {
    Row row = productRow(product);
    row.cells.emplace_back(state);
    row.emphasis = state == s_installed ? Emphasis::none : Emphasis::missing;
    return row;
}

void printAll(const TableStyle& style, const Products& all, const Products& installed) {
    const auto states = statesOf(all, installed);
    Row headings = s_headings;
    headings.cells.emplace_back("State");
    writeTable(print, style, all.size() + 1,
               [&](std::size_t i) { return i == 0 ? headings : stateRow(*all[i - 1], states[i - 1]); });
}

struct Name {
    const char* field;
    const std::string& text;
};

std::vector<Name> namesOf(const DocProduct& product) {
    return {{"base code", product.getBaseCode()},
            {"short name", product.getShortName()},
            {"help location", product.getHelpLocation()},
            {"alternative short name", product.getAltShortName()},
            {"display name", product.getDisplayName()}};
}

// Trims a name like the library, which uses the global locale. This program never replaces the classic one.
std::string trimmed(const std::string& text) {
    return boost::algorithm::trim_copy(text, std::locale::classic());
}

// The fields of the product that hold the name, separated by commas.
std::string fieldsOf(const DocProduct& product, const std::string& name) {
    std::string fields;
    for (const Name& candidate : namesOf(product)) {
        if (trimmed(candidate.text) == name) {
            fields += (fields.empty() ? "" : ", ") + std::string(candidate.field);
        }
    }
    return fields;
}

void printProduct(const DocProduct& product, const std::string& name) {
    std::vector<std::string> families;
    for (const ProductFamily& family : product.getProductFamilies()) {
        families.push_back(family.getGroup().empty() ? family.getFamily()
                                                     : family.getFamily() + " (" + family.getGroup() + ")");
    }
    const std::string fields = fieldsOf(product, name);
    std::vector<Row> rows = {
        {{"display name", product.getDisplayName()}},
        {{"short name", product.getShortName()}},
        {{"alternative short name", product.getAltShortName()}},
        {{"base code", product.getBaseCode()}},
        {{"status", product.getAvailability()}},
        {{"help location", product.getHelpLocation()}},
    };
    for (const std::string& family : families) {
        rows.push_back({{"family", family}});
    }
    rows.push_back({{"found by", fields}});
    writeTable(print, {}, rows);
}

[[noreturn]] void refuseName(const std::string& name, const Products& all) {
    std::vector<std::string> names;
    for (const TopLevelDocProductPtr& product : all) {
        for (const Name& candidate : namesOf(*product)) {
            names.push_back(trimmed(candidate.text));
        }
    }
    throw Failure(ExitStatus::nothingFound,
                  printable("No product has the name \"" + name + "\"" + suggestion(nearNames(name, names))) + "\n");
}

struct Root {
    Root(const char* root, const fl::filesystem::upath& path)
        : name(root), text(to_string(path)), exists(fl::filesystem::exists(path)) {}

    const char* name;
    std::string text;
    bool exists;
};

}  // namespace

ExitStatus showRoots(const Options& options) {
    auto& docroot = doc_products_shared::Docroot::getInstance();
    const std::array roots = {Root("documentation root", docroot.getDocroot()),
                              Root("data root", docroot.getDocDataRoot())};
    writeTable(print, {.hasColor = showsColor(options.color)}, roots.size(), [&](std::size_t i) {
        return Row{{roots[i].name, roots[i].text}, roots[i].exists ? Emphasis::none : Emphasis::missing};
    });
    flushOutput();  // before any message on standard error
    ExitStatus status = ExitStatus::done;
    for (const Root& root : roots) {
        if (!root.exists) {
            std::cerr << "The " << root.name << " " << printable(root.text) << " does not exist\n";
            status = ExitStatus::nothingFound;
        }
    }
    return status;
}

ExitStatus listProducts(const Options& options) {
    const auto collector = openCatalogue(options);
    const Products& installed = *collector->getInstalledTopLevelDocProducts();
    const Products all = readAllProducts(*collector, options);
    const TableStyle style = {terminalWidth(), showsColor(options.color)};
    options.all ? printAll(style, all, installed) : printInstalled(style, installed);
    print(fmt::format("{} of {} products installed\n", installed.size(), all.size()));
    return ExitStatus::done;
}

ExitStatus findProduct(const Options& options) {
    const auto collector = openCatalogue(options);
    const auto product = collector->getProductInfo(options.name);
    if (!product) {
        refuseName(options.name, readAllProducts(*collector, options));
    }
    printProduct(*product, options.name);
    return ExitStatus::done;
}

}  // namespace app
