#pragma once

#include <memory>
#include <vector>

#include "doc_products_shared/DocProductCollector.hpp"

namespace app {

struct Options;

// The collector of the catalogue that is in force. Throws Failure where there is no catalogue or a malformed one.
std::shared_ptr<doc_products_shared::DocProductCollector> openCatalogue(const Options& options);

// All products of the collector's catalogue in file order, read anew. Throws like openCatalogue.
std::vector<doc_products_shared::TopLevelDocProductPtr> readAllProducts(
    const doc_products_shared::DocProductCollector& collector, const Options& options);

}  // namespace app
