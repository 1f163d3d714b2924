#pragma once

#include <string>

#include "doc_products_shared/TopLevelDocProduct.hpp"
#include "foundation/basic_path.hpp"

// The least that two operations of the library can do, behind a library's edge as the operations are.
namespace bench {

// Enters a product under a name; find then copies its pointer.
void enter(const std::string& name, const doc_products_shared::TopLevelDocProductPtr& product);
doc_products_shared::DocProductPtr find(const std::string& name);

// Keeps a path; copyPath then copies it with a lock held.
void keepPath(const fl::filesystem::upath& path);
fl::filesystem::upath copyPath();

}  // namespace bench
