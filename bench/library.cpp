#include <sys/stat.h>

#include <memory>
#include <mutex>
#include <stdexcept>
#include <utility>

#include "doc_products_shared/DocProductCacheManager.hpp"
#include "doc_products_shared/DocSetJsonParser.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "fl/filesystem.hpp"
#include "fl/i18n.hpp"
#include "support.hpp"
#include "vorlan/host.hpp"
#include "yardsticks.hpp"

// Operations of the library on an installation, and the loops that they are compared with. An operation and its loop
// prepare with the same calls, so that they find the process in the same state.

namespace {

using doc_products_shared::DocProduct;
using doc_products_shared::DocProductCacheManager;
using doc_products_shared::DocProductCollector;
using doc_products_shared::Docroot;
using doc_products_shared::DocSetJsonParser;
using doc_products_shared::DocumentationSet;
using fl::filesystem::upath;

// Doesn't ask the library for its roots, so that reading a catalogue doesn't resolve them.
fl::ustring catalogueFile() {
    return (upath(fl::filesystem::get_install_path()) / u"help" / u"docset.json").native();
}

// Throws if there is no catalogue, because the parser would return an empty set in no time.
DocumentationSet readCatalogue() {
    DocumentationSet set = DocSetJsonParser().parse(catalogueFile());
    if (set.getTopLevelProducts().empty()) {
        throw std::runtime_error("No catalogue in the installation");
    }
    return set;
}

std::shared_ptr<DocProductCollector> warmCollector() {
    const auto collector = DocProductCacheManager::getInstance().getDocProductCache();
    if (!collector || collector->getInstalledTopLevelDocProducts()->empty()) {
        throw std::runtime_error("No product in the installation");
    }
    return collector;
}

// The names of a product, in the order in which the collector adds them.
std::vector<std::string> namesOf(const DocProduct& product) {
    std::vector<std::string> names;
    for (const std::string* name : {&product.getBaseCode(), &product.getShortName(), &product.getHelpLocation(),
                                    &product.getAltShortName(), &product.getDisplayName()}) {
        if (!name->empty()) {
            names.push_back(*name);
        }
    }
    return names;
}

std::vector<std::string> namesOf(const DocumentationSet& set) {
    std::vector<std::string> all;
    for (const auto& product : set.getTopLevelProducts()) {
        const auto names = namesOf(*product);
        all.insert(all.end(), names.begin(), names.end());
    }
    return all;
}

// The two files that prove a product installed. The second is tested only if the first doesn't exist.
struct ProofFiles {
    std::string inHelpLocation;
    std::string inCatalogueFolder;
};

std::vector<ProofFiles> proofFiles(const DocumentationSet& set) {
    const std::string dataRoot = fl::i18n::to_string(Docroot::getInstance().getDocDataRoot().native());
    std::vector<ProofFiles> files;
    for (const auto& product : set.getTopLevelProducts()) {
        files.push_back({dataRoot + "/" + product->getHelpLocation() + "/doccenter.properties",
                         dataRoot + "/docCatalog/products/" + product->getShortName() + ".properties"});
    }
    return files;
}

bool isThere(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0;
}

// One look-up per iteration, cycling through all names.
template <class Find>
void lookUp(benchmark::State& state, const std::vector<std::string>& names, const Find& find) {
    for (const std::string& name : names) {
        if (!find(name)) {
            return state.SkipWithError(("Not found: " + name).c_str());
        }
    }
    auto name = names.begin();
    for (auto _ : state) {
        benchmark::DoNotOptimize(find(*name));
        if (++name == names.end()) {
            name = names.begin();
        }
    }
}

upath lockAndCopy(std::mutex& mutex, const upath& path) {
    const std::lock_guard lock(mutex);
    return path;
}

void parseFile(benchmark::State& state) {
    readCatalogue();
    const fl::ustring path = catalogueFile();
    for (auto _ : state) {
        benchmark::DoNotOptimize(DocSetJsonParser().parse(path));
    }
}
BENCHMARK(parseFile);

void buildCollector(benchmark::State& state) {
    warmCollector();
    for (auto _ : state) {
        benchmark::DoNotOptimize(DocProductCollector(upath()));
    }
}
BENCHMARK(buildCollector);

void parseAndStat(benchmark::State& state) {
    warmCollector();
    const fl::ustring path = catalogueFile();
    const std::vector<ProofFiles> all = proofFiles(readCatalogue());
    for (auto _ : state) {
        benchmark::DoNotOptimize(DocSetJsonParser().parse(path));
        for (const ProofFiles& files : all) {
            benchmark::DoNotOptimize(isThere(files.inHelpLocation) || isThere(files.inCatalogueFolder));
        }
    }
}
BENCHMARK(parseAndStat);

void getDocProductCache(benchmark::State& state) {
    warmCollector();
    for (auto _ : state) {
        benchmark::DoNotOptimize(DocProductCacheManager::getInstance().getDocProductCache());
    }
}
BENCHMARK(getDocProductCache);

void lockCompareAndCopy(benchmark::State& state) {
    const auto collector = warmCollector();
    const upath docroot = Docroot::getInstance().getDocroot();
    const upath dataRoot = Docroot::getInstance().getDocDataRoot();
    const upath rememberedDocroot = docroot;
    const upath rememberedDataRoot = dataRoot;
    std::mutex mutexes[3];
    for (auto _ : state) {
        const std::lock_guard lock(mutexes[0]);
        benchmark::DoNotOptimize(lockAndCopy(mutexes[1], docroot) == rememberedDocroot);
        benchmark::DoNotOptimize(lockAndCopy(mutexes[2], dataRoot) == rememberedDataRoot);
        benchmark::DoNotOptimize(std::shared_ptr(collector));
    }
}
BENCHMARK(lockCompareAndCopy);

void getProductInfo(benchmark::State& state) {
    const auto collector = warmCollector();
    const auto find = [&](const std::string& name) { return collector->getProductInfo(name); };
    lookUp(state, namesOf(readCatalogue()), find);
}
BENCHMARK(getProductInfo);

void findInMap(benchmark::State& state) {
    warmCollector();
    const DocumentationSet set = readCatalogue();
    doc_products_shared::TopLevelDocProductMap products;
    products.reserve(5 * set.getTopLevelProducts().size());  // as the collector does
    for (const auto& product : set.getTopLevelProducts()) {
        for (const std::string& name : namesOf(*product)) {
            products[name] = product;
        }
    }
    bench::keepProducts(std::move(products));
    lookUp(state, namesOf(set), bench::find);
}
BENCHMARK(findInMap);

void getDocroot(benchmark::State& state) {
    warmCollector();
    for (auto _ : state) {
        benchmark::DoNotOptimize(Docroot::getInstance().getDocroot());
    }
}
BENCHMARK(getDocroot);

void copyPath(benchmark::State& state) {
    warmCollector();
    bench::keepPath(Docroot::getInstance().getDocroot());
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench::copyPath());
    }
}
BENCHMARK(copyPath);

}  // namespace

// The argument is the install root.
int main(int argc, char** argv) {
    return bench::run(argc, argv, [](const bench::Arguments& arguments) {
        vorlan::setInstallRoot(fl::i18n::to_ustring(arguments.at(0)));
    });
}
