#include "catalogue.hpp"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iostream>
#include <sstream>
#include <string_view>
#include <system_error>

#include "Failure.hpp"
#include "doc_products_shared/DocProductCacheManager.hpp"
#include "doc_products_shared/DocSetJsonParser.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "fl/i18n.hpp"
#include "host.hpp"
#include "near_names.hpp"
#include "options.hpp"
#include "table.hpp"
#include "terminal_text.hpp"
#include "text.hpp"

namespace app {

using doc_products_shared::DocProductCacheManager;
using doc_products_shared::DocProductCollector;
using doc_products_shared::Docroot;
using fl::filesystem::upath;

namespace {

constexpr std::size_t s_proofsPerProduct = 2;

// True for the line of a reader's message that holds the caret: blanks and a final "^".
bool isCaret(std::string_view line) {
    return line.ends_with('^') && line.find_first_not_of(' ') == line.size() - 1;
}

// Makes the library's report on a catalogue printable, line by line. The tab with which the reader indents a line
// stays. Escapes widen a line, so the caret below it is moved to the character that it marks.
std::string printableReport(std::string_view report) {
    std::string result;
    std::string_view above;
    while (!report.empty()) {
        const std::size_t size = std::min(report.find('\n'), report.size());
        const std::string_view line = report.substr(0, size);
        const std::string_view text = line.substr(line.starts_with('\t') ? 1 : 0);
        result.append(size - text.size(), '\t');
        result += isCaret(text) ? std::string(displayWidth(printable(above.substr(0, text.size() - 1))), ' ') + '^'
                                : printable(text);
        result += '\n';
        above = text;
        report.remove_prefix(std::min(size + 1, report.size()));
    }
    return result;
}

// Holds back what is written to std::cerr during the lifetime of the object.
class HeldErrors {
public:
    HeldErrors() : m_errors(std::cerr.rdbuf(m_held.rdbuf())) {}
    HeldErrors(const HeldErrors&) = delete;
    HeldErrors& operator=(const HeldErrors&) = delete;
    ~HeldErrors() { std::cerr.rdbuf(m_errors); }

    // In printable form, each line with its line feed. The library's report on a catalogue ends without one.
    std::string text() const { return printableReport(m_held.str()); }

private:
    std::ostringstream m_held;
    std::streambuf* m_errors;
};

// Calls `read` and turns the library's "Error while parsing ..." into a Failure, whose message starts with the
// library's report. Only the prefix identifies it.
template <class Read>
auto readCatalogue(Read read) {
    const HeldErrors held;
    try {
        return read();
    } catch (const std::runtime_error& e) {
        if (!std::string_view(e.what()).starts_with("Error while parsing ")) {
            throw;
        }
        throw Failure(
            ExitStatus::malformedCatalogue,
            held.text() + printable(e.what()) + "\nThe command check says everything that is wrong with it.\n");
    }
}

std::string docsetFileIn(const upath& root) {
    return to_string(root / u"docset.json");
}

upath preferredFile(const Options& options) {
    return upath(fl::i18n::to_ustring(options.catalogue.value_or("")));
}

// The files that the library looked for to prove one product: it looks for the second only if the first doesn't exist.
std::vector<LookedAt> takeProofs(std::vector<HostCall>::iterator& next, std::vector<HostCall>::iterator end) {
    std::vector<LookedAt> proofs;
    while (next != end && proofs.size() < s_proofsPerProduct && (proofs.empty() || !proofs.back().exists)) {
        proofs.push_back({std::move(next->text), next->exists});
        ++next;
    }
    return proofs;
}

}  // namespace

std::array<CataloguePlace, 3> cataloguePlaces(const Options& options) {
    auto& roots = Docroot::getInstance();
    return {CataloguePlace{"preferred file", options.catalogue.value_or("")},
            {"in the documentation root", docsetFileIn(roots.getDocroot())},
            {"in the data root", docsetFileIn(roots.getDocDataRoot())}};
}

void reportMissing(const Options& options) {
    const auto places = cataloguePlaces(options);
    std::string message = "There is no catalogue. Looked at:\n";
    writeTable([&](std::string_view text) { message += text; }, {}, places.size(),
               [&](std::size_t i) {
                   const std::string_view file = places[i].file;
                   return Row{{places[i].name, file.empty() ? "(none named by --catalogue)" : file}};
               });
    throw Failure(ExitStatus::nothingFound, message);
}

std::shared_ptr<DocProductCollector> openCatalogue(const Options& options) {
    const auto& manager = DocProductCacheManager::getInstance();
    manager.setDocsetJsonFile(preferredFile(options));
    auto collector = readCatalogue([&] { return manager.getDocProductCache(); });
    std::error_code unreachable;
    if (!std::filesystem::exists(catalogueFile(*collector, options), unreachable)) {
        reportMissing(options);
    }
    return collector;
}

std::string catalogueFile(const DocProductCollector& collector, const Options& options) {
    return to_string(collector.findDocsetJsonFile(preferredFile(options)));
}

doc_products_shared::DocumentationSet readAllProducts(const DocProductCollector& collector, const Options& options) {
    const fl::ustring file = collector.findDocsetJsonFile(preferredFile(options)).native();
    return readCatalogue([&] { return doc_products_shared::DocSetJsonParser().parse(file); });
}

doc_products_shared::DocProductPtr productNamed(const std::string& name, DocProductCollector& collector,
                                                const Options& options) {
    auto product = collector.getProductInfo(name);
    if (!product) {
        const auto set = readAllProducts(collector, options);
        std::vector<std::string> names;
        for (const auto& each : set.getTopLevelProducts()) {
            for (const Name& candidate : namesOf(*each)) {
                names.push_back(trimmed(candidate.text));
            }
        }
        const std::string message = "No product has the name \"" + name + '"' + suggestion(nearNames(name, names));
        throw Failure(ExitStatus::nothingFound, printable(message) + '\n');
    }
    return product;
}

std::vector<FoundProduct> lookAtProducts(DocProductCollector& collector, const Options& options) {
    const auto set = readAllProducts(collector, options);
    takeCalls();
    collector.populateTopLevelDocProductList(set);
    auto calls = takeCalls();
    const auto installed = collector.getInstalledTopLevelDocProducts();
    auto nextInstalled = installed->begin();
    std::vector<FoundProduct> found;
    found.reserve(set.getTopLevelProducts().size());
    for (auto next = calls.begin(); const auto& product : set.getTopLevelProducts()) {
        const bool isInstalled = nextInstalled != installed->end() && *nextInstalled == product;
        nextInstalled += isInstalled ? 1 : 0;
        found.push_back({product, isInstalled, takeProofs(next, calls.end())});
    }
    return found;
}

std::vector<FoundProduct> productsNamed(const std::string& name, DocProductCollector& collector,
                                        const Options& options) {
    productNamed(name, collector, options);
    auto products = lookAtProducts(collector, options);
    const auto product = productNamed(name, collector, options);
    const auto isIt = [&](const FoundProduct& found) { return found.product == product; };
    if (std::none_of(products.begin(), products.end(), isIt)) {
        throw Failure(ExitStatus::failure, "The catalogue has changed while it was read: try again\n");
    }
    std::erase_if(products, [&](const FoundProduct& found) {
        return !isIt(found) && namesThatAre(name, *found.product).empty();
    });
    std::stable_partition(products.begin(), products.end(), std::not_fn(isIt));
    return products;
}

}  // namespace app
