#pragma once

#include <string>

#include "doc_products_shared/DocumentationSet.hpp"
#include "foundation/basic_path.hpp"

// The least work of two operations of the library. It is in a shared library, like the operations.
namespace bench {

// Keeps products by name. find returns a copy of the pointer to one; null if there is none.
void keepProducts(doc_products_shared::TopLevelDocProductMap products);
doc_products_shared::DocProductPtr find(const std::string& name);

// Keeps a path. copyPath copies it under a lock.
void keepPath(const fl::filesystem::upath& path);
fl::filesystem::upath copyPath();

}  // namespace bench
