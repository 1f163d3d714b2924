#include "catalogue.hpp"

#include <filesystem>
#include <iostream>
#include <sstream>
#include <string_view>
#include <system_error>

#include "Failure.hpp"
#include "doc_products_shared/DocProductCacheManager.hpp"
#include "doc_products_shared/DocSetJsonParser.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "fl/i18n.hpp"
#include "options.hpp"
#include "table.hpp"
#include "terminal_text.hpp"

namespace app {

using doc_products_shared::DocProductCacheManager;
using doc_products_shared::DocProductCollector;
using doc_products_shared::Docroot;
using fl::filesystem::upath;

namespace {

// Holds back what is written to std::cerr, and gives it out at the end of its life as whole lines: the library
// reports what is wrong with a catalogue without a line end, and records of the log may follow.
class HeldErrors {
public:
    HeldErrors() : m_errors(std::cerr.rdbuf(m_held.rdbuf())) {}
    HeldErrors(const HeldErrors&) = delete;
    HeldErrors& operator=(const HeldErrors&) = delete;
    ~HeldErrors() {
        std::cerr.rdbuf(m_errors);
        if (const std::string text = m_held.str(); !text.empty()) {
            std::cerr << text << '\n';
        }
    }

private:
    std::ostringstream m_held;
    std::streambuf* m_errors;
};

// Runs what reads a catalogue. The library tells a malformed one by the beginning of the message alone.
template <class Read>
auto readCatalogue(Read read) {
    try {
        const HeldErrors held;
        return read();
    } catch (const std::runtime_error& e) {
        if (!std::string_view(e.what()).starts_with("Error while parsing ")) {
            throw;
        }
        throw Failure(ExitStatus::malformedCatalogue, printable(e.what()) + '\n');
    }
}

std::string docsetFileIn(const upath& root) {
    return to_string(root / u"docset.json");
}

[[noreturn]] void reportMissing(const Options& options) {
    auto& roots = Docroot::getInstance();
    throw Failure(ExitStatus::nothingFound,
                  "There is no catalogue. Looked at:\n" +
                      tableText({
                          {"preferred file", options.catalogue.value_or("(none named by --catalogue)")},
                          {"in the documentation root", docsetFileIn(roots.getDocroot())},
                          {"in the data root", docsetFileIn(roots.getDocDataRoot())},
                      }));
}

upath preferredFile(const Options& options) {
    return upath(fl::i18n::to_ustring(options.catalogue.value_or("")));
}

std::string catalogueFile(const DocProductCollector& collector, const Options& options) {
    return to_string(collector.findDocsetJsonFile(preferredFile(options)));
}

}  // namespace

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

std::vector<doc_products_shared::TopLevelDocProductPtr> readAllProducts(const DocProductCollector& collector,
                                                                        const Options& options) {
    const fl::ustring file = collector.findDocsetJsonFile(preferredFile(options)).native();
    return readCatalogue([&] { return doc_products_shared::DocSetJsonParser().parse(file); }).getTopLevelProducts();
}

}  // namespace app
