#include "doc_products_shared/DocProductCacheManager.hpp"
#include "doc_products_shared/Docroot.hpp"

// Reads a root, sets it, and asks for the catalogue.
extern "C" [[gnu::visibility("default")]] std::size_t installedProducts() {
    using namespace doc_products_shared;
    Docroot& docroot = Docroot::getInstance();
    docroot.setDocroot(docroot.getDocroot());
    return DocProductCacheManager::getInstance().getDocProductCache()->getInstalledTopLevelDocProducts()->size();
}
