#include "commands.hpp"

#include <fmt/format.h>

#include <algorithm>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "catalogue.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "fl/i18n.hpp"
#include "options.hpp"
#include "output.hpp"
#include "product.hpp"
#include "roots.hpp"
#include "table.hpp"
#include "text.hpp"

namespace app {

using doc_products_shared::DocProduct;
using doc_products_shared::DocProductCollector;
using doc_products_shared::DocumentationSet;
using doc_products_shared::ProductFamily;

namespace {

Row productRow(const DocProduct& product) {
    return {{product.getDisplayName(), product.getShortName(), product.getBaseCode(), product.getAvailability(),
             product.getHelpLocation()}};
}

const Row s_headings = {{"Display name", "Short name", "Base code", "Status", "Location"}, Emphasis::heading};

TableStyle styleFor(const Options& options) {
    return {terminalWidth(), showsColor(options.color)};
}

void printCount(std::size_t installed, std::size_t all) {
    print(fmt::format("{} of {} products installed\n", installed, all));
}

void printInstalled(DocProductCollector& collector, const Options& options) {
    const auto& installed = *collector.getInstalledTopLevelDocProducts();
    const DocumentationSet all = readAllProducts(collector, options);
    writeTable(print, styleFor(options), installed.size() + 1,
               [&](std::size_t i) { return i == 0 ? s_headings : productRow(*installed[i - 1]); });
    printCount(installed.size(), all.getTopLevelProducts().size());
}

Row stateRow(const FoundProduct& found, const std::string& reason) {
    Row row = productRow(*found.product);
    row.cells.insert(row.cells.end(), {stateOf(found), reason});
    row.emphasis = found.isInstalled ? Emphasis::none : Emphasis::missing;
    return row;
}

void printAll(const std::vector<FoundProduct>& products, std::size_t installed, const Options& options) {
    Row headings = s_headings;
    headings.cells.insert(headings.cells.end(), {"State", "Reason"});
    std::vector<std::string> reasons(products.size());
    std::transform(products.begin(), products.end(), reasons.begin(),
                   [](const FoundProduct& found) { return found.isInstalled ? "" : reasonOf(found); });
    TableStyle style = styleFor(options);
    style.cutsLastFirst = true;
    writeTable(print, style, products.size() + 1,
               [&](std::size_t i) { return i == 0 ? headings : stateRow(products[i - 1], reasons[i - 1]); });
    printCount(installed, products.size());
}

// Prints a text as it is, for scripts.
void printRaw(const std::string& text, const Options& options) {
    print(text);
    print(std::string(1, options.endsWithNul ? '\0' : '\n'));
}

// Prints the base codes and short names of all products, each once. A name with a NUL can't be an argument.
void printNames(const DocProductCollector& collector, const Options& options) {
    const DocumentationSet all = readAllProducts(collector, options);
    std::set<std::string> printed;
    for (const auto& product : all.getTopLevelProducts()) {
        for (const std::string* name : {&product->getBaseCode(), &product->getShortName()}) {
            const auto [entry, isNew] = printed.insert(trimmed(*name));
            if (isNew && !entry->empty() && entry->find('\0') == std::string::npos) {
                printRaw(*entry, options);
            }
        }
    }
}

Json productsAnswer(DocProductCollector& collector, const Options& options) {
    auto products = lookAtProducts(collector, options);
    const std::size_t total = products.size();
    const std::size_t installed = collector.getInstalledTopLevelDocProducts()->size();
    if (!options.all) {
        std::erase_if(products, [](const FoundProduct& found) { return !found.isInstalled; });
    }
    Json answer = answerOf("list", ExitStatus::done, {});
    setText(answer, "catalogue", catalogueFile(collector, options));
    answer["products"] = jsonOf(products);
    answer["installed"] = installed;
    answer["total"] = total;
    return answer;
}

void printProduct(const DocProduct& product, const std::string& name) {
    std::vector<std::string> families;
    for (const ProductFamily& family : product.getProductFamilies()) {
        families.push_back(family.getGroup().empty() ? family.getFamily()
                                                     : family.getFamily() + " (" + family.getGroup() + ")");
    }
    const std::string fields = fieldsOf(namesThatAre(name, product));
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

Json productAnswer(DocProductCollector& collector, const Options& options) {
    const auto products = productsNamed(*options.name, collector, options);
    Json answer = answerOf("find", ExitStatus::done, {});
    setText(answer, "catalogue", catalogueFile(collector, options));
    setProduct(answer, products.back(), *options.name);
    return answer;
}

std::string folderOf(const DocProduct& product) {
    return to_string(doc_products_shared::Docroot::getInstance().getDocDataRoot()) + '/' + product.getHelpLocation();
}

void printRoots(const std::array<Root, 2>& roots, const Options& options) {
    if (options.path) {
        for (const Root& root : roots) {
            printRaw(root.path, options);
        }
        return;
    }
    writeTable(print, {.hasColor = showsColor(options.color)}, roots.size(), [&](std::size_t i) {
        return Row{{roots.at(i).name, roots.at(i).path}, roots.at(i).exists ? Emphasis::none : Emphasis::missing};
    });
}

Json rootsAnswer(const std::array<Root, 2>& roots, ExitStatus status) {
    Json answer = answerOf("roots", status, missingRoots(roots));
    for (const Root& root : roots) {
        answer[root.key] = placeOf(root.path, root.exists);
    }
    return answer;
}

}  // namespace

ExitStatus showRoots(const Options& options) {
    const auto roots = findRoots();
    const std::string missing = missingRoots(roots);
    const ExitStatus status = missing.empty() ? ExitStatus::done : ExitStatus::nothingFound;
    options.json ? printJson(rootsAnswer(roots, status)) : printRoots(roots, options);
    flushOutput();  // before any message on standard error
    std::cerr << missing;
    return status;
}

ExitStatus listProducts(const Options& options) {
    const auto collector = openCatalogue(options);
    if (options.json) {
        printJson(productsAnswer(*collector, options));
    } else if (options.names) {
        printNames(*collector, options);
    } else if (options.all) {
        const auto products = lookAtProducts(*collector, options);
        printAll(products, collector->getInstalledTopLevelDocProducts()->size(), options);
    } else {
        printInstalled(*collector, options);
    }
    return ExitStatus::done;
}

ExitStatus findProduct(const Options& options) {
    const auto collector = openCatalogue(options);
    if (options.json) {
        printJson(productAnswer(*collector, options));
        return ExitStatus::done;
    }
    const auto product = productNamed(*options.name, *collector, options);
    options.path ? printRaw(folderOf(*product), options) : printProduct(*product, *options.name);
    return ExitStatus::done;
}

}  // namespace app
