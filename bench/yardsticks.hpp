#pragma once

#include <string>

#include "doc_products_shared/DocumentationSet.hpp"
#include "foundation/basic_path.hpp"

// The minimum that two operations of the library must do, in a shared library of their own as the operations are.
namespace bench {

// Keeps products by name; find then copies the pointer of one.
void keepProducts(doc_products_shared::TopLevelDocProductMap products);
doc_products_shared::DocProductPtr find(const std::string& name);

// Keeps a path; copyPath then copies it with a lock held.
void keepPath(const fl::filesystem::upath& path);
fl::filesystem::upath copyPath();

}  // namespace bench
