#pragma once

#include <string>

#include "doc_products_shared/DocumentationSet.hpp"
#include "foundation/basic_path.hpp"

namespace doc_products_shared {

// What one catalogue file says of this machine: which products are installed, and a look-up of every product by any
// of its names. It reflects the roots and the disk as they were when it was built, and never changes afterwards; from
// then on any number of threads may read it. Lists and products handed out stay valid when the collector is gone.
//
// A product is installed if <data root>/<help location>/doccenter.properties exists, or
// <data root>/docCatalog/products/<short name>.properties does, and none of its families is "webonlyproducts". A
// std::exception while a product's files are tested is logged, and the product counts as not installed.
class DocProductCollector {  // its operations are listed in the library's version script
public:
    // Finds the catalogue, reads it and tests each product's files. `docsetJsonFile` is the preferred catalogue and
    // may be empty. Throws what findDocsetJsonFile, DocSetJsonParser::parse and populateTopLevelDocProductList throw;
    // no catalogue at all is no failure, only an empty list.
    explicit DocProductCollector(const fl::filesystem::upath& docsetJsonFile);

    // The catalogue to read: the preferred one if it exists, else docset.json in the documentation root if that
    // exists, else docset.json in the data root, whether or not it exists.
    fl::filesystem::upath findDocsetJsonFile(const fl::filesystem::upath& docsetJsonFile) const;

    // Builds the list of installed products anew, and enters the names of all products. Belongs to construction: not
    // safe beside any other use of the object.
    void populateTopLevelDocProductList(const DocumentationSet& docSet);

    // The installed products in file order. Never a null pointer; the list may be empty.
    TopLevelDocProductVectorPtr getInstalledTopLevelDocProducts();

    // The product with that base code, short name, help location, alternative short name or display name, installed
    // or not; null if there is none. The catalogue's names count without the white space around them; `name` is taken
    // unchanged and compared byte for byte. Where products share a name the last in the file has it.
    DocProductPtr getProductInfo(const std::string& name);

private:
    fl::ustring m_docsetFileName;
    TopLevelDocProductVectorPtr m_installedProducts;
    TopLevelDocProductMap m_productsMap;  // by trimmed name; never an empty one
    fl::filesystem::upath m_docsetJsonFile;
};

}  // namespace doc_products_shared
