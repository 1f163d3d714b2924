#include "doc_products_shared/DocProductCacheManager.hpp"

#include <utility>

#include "doc_products_shared/Docroot.hpp"

namespace doc_products_shared {

using fl::filesystem::upath;

std::mutex DocProductCacheManager::s_mutex;
upath DocProductCacheManager::s_docroot;
upath DocProductCacheManager::s_docDataRoot;
upath DocProductCacheManager::s_docsetJsonFile;
std::shared_ptr<DocProductCollector> DocProductCacheManager::s_docCollector;
bool DocProductCacheManager::s_forceRebuild = false;

DocProductCacheManager& DocProductCacheManager::getInstance() {
    static DocProductCacheManager s_instance;
    return s_instance;
}

std::shared_ptr<DocProductCollector> DocProductCacheManager::getDocProductCache() const {
    const std::lock_guard lock(s_mutex);
    validateDocCollector();
    return s_docCollector;
}

void DocProductCacheManager::validateDocCollector() const {
    upath docroot = Docroot::getInstance().getDocroot();
    upath docDataRoot = Docroot::getInstance().getDocDataRoot();
    if (docroot == s_docroot && docDataRoot == s_docDataRoot && !s_forceRebuild) {
        return;
    }
    // Before the collector is built, so that a rebuild that fails isn't tried again until something changes.
    s_docroot = std::move(docroot);
    s_docDataRoot = std::move(docDataRoot);
    s_forceRebuild = false;
    s_docCollector = std::make_shared<DocProductCollector>(s_docsetJsonFile);
}

void DocProductCacheManager::setDocsetJsonFile(upath docsetJsonFile) const {
    const std::lock_guard lock(s_mutex);
    s_docsetJsonFile = std::move(docsetJsonFile);
    s_forceRebuild = true;
}

}  // namespace doc_products_shared
