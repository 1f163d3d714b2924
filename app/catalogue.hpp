#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "doc_products_shared/DocProductCollector.hpp"
#include "product.hpp"

namespace app {

struct Options;

// A place that is looked at for the catalogue, and the file there, which is empty if the place has none.
struct CataloguePlace {
    const char* name;
    std::string file;
};

// The three places, in the order in which the library looks at them.
std::array<CataloguePlace, 3> cataloguePlaces(const Options& options);

// Throws the Failure for a catalogue that is at none of the places.
[[noreturn]] void reportMissing(const Options& options);

// The collector of the catalogue in force: the file of --catalogue, or else docset.json in a root. Throws Failure if
// there is no catalogue, or if it is malformed or can't be read. The message for a malformed one starts with the
// library's report.
std::shared_ptr<doc_products_shared::DocProductCollector> openCatalogue(const Options& options);

// The file that the collector was built from.
std::string catalogueFile(const doc_products_shared::DocProductCollector& collector, const Options& options);

// All products of the collector's catalogue, in file order. Reads the file again, because a collector lists only the
// installed products. Throws like openCatalogue.
doc_products_shared::DocumentationSet readAllProducts(const doc_products_shared::DocProductCollector& collector,
                                                      const Options& options);

// The product with that name. Throws Failure if there is none; its message suggests similar names.
doc_products_shared::DocProductPtr productNamed(const std::string& name,
                                                doc_products_shared::DocProductCollector& collector,
                                                const Options& options);

// All products with what the library finds of each. The collector is filled anew with these very products. The options
// must ask for an explanation.
std::vector<FoundProduct> lookAtProducts(doc_products_shared::DocProductCollector& collector, const Options& options);

// Those of them that have the name; last the one that it leads to. Throws like productNamed.
std::vector<FoundProduct> productsNamed(const std::string& name, doc_products_shared::DocProductCollector& collector,
                                        const Options& options);

}  // namespace app
