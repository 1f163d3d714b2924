#pragma once

#include <string>

#include "doc_products_shared/DocumentationSet.hpp"
#include "foundation/basic_path.hpp"

namespace doc_products_shared {

// The products of one catalogue: which of them are installed on this machine, and a look-up of each by any of its
// names. Get it from DocProductCacheManager, which decides when to build a new one. It reflects the roots and the
// disk at the time of construction and never changes afterwards, so any number of threads may read it. The lists and
// products that it returns may outlive it.
//
// A product is installed if `<data root>/<help location>/doccenter.properties` exists, or
// `<data root>/docCatalog/products/<short name>.properties` does, and none of its families is "webonlyproducts". A
// std::exception while a product's files are tested is logged, and the product counts as not installed.
class DocProductCollector {  // exported: see src/docproducts.map
public:
    // Finds the catalogue, reads it and tests each product's files. `docsetJsonFile` is the preferred catalogue and
    // may be empty. Throws what findDocsetJsonFile, DocSetJsonParser::parse and populateTopLevelDocProductList throw.
    // If there is no catalogue, that is logged and the list is empty.
    explicit DocProductCollector(const fl::filesystem::upath& docsetJsonFile);

    // The catalogue to read: the preferred one if it exists, else docset.json in the documentation root if that
    // exists, else docset.json in the data root, whether or not it exists.
    fl::filesystem::upath findDocsetJsonFile(const fl::filesystem::upath& docsetJsonFile) const;

    // Builds the list of installed products anew and adds the names of all products. Called by the constructor.
    // Calling it again isn't safe while another thread uses the object.
    void populateTopLevelDocProductList(const DocumentationSet& docSet);

    // The installed products in file order. Never a null pointer; the list may be empty.
    TopLevelDocProductVectorPtr getInstalledTopLevelDocProducts();

    // The product with that base code, short name, help location, alternative short name or display name, installed
    // or not; null if there is none. White space around the catalogue's names is ignored; `name` is compared
    // unchanged, byte for byte. If products share a name, the last in the file has it.
    DocProductPtr getProductInfo(const std::string& name);

private:
    fl::ustring m_docsetFileName;
    TopLevelDocProductVectorPtr m_installedProducts;
    TopLevelDocProductMap m_productsMap;  // by trimmed name; never an empty one
    fl::filesystem::upath m_docsetJsonFile;
};

}  // namespace doc_products_shared
