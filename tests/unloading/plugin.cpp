#include "doc_products_shared/DocProductCacheManager.hpp"
#include "doc_products_shared/Docroot.hpp"

// Uses the roots and the catalogue. Returns the number of products installed.
extern "C" [[gnu::visibility("default")]] std::size_t installedProducts() {
    using namespace doc_products_shared;
    Docroot& docroot = Docroot::getInstance();
    docroot.setDocroot(docroot.getDocroot());
    return DocProductCacheManager::getInstance().getDocProductCache()->getInstalledTopLevelDocProducts()->size();
}
