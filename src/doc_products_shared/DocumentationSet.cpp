#include "doc_products_shared/DocumentationSet.hpp"

namespace doc_products_shared {

const std::string& DocumentationSet::getFormat() const {
    return m_format;
}

const std::string& DocumentationSet::getRelease() const {
    return m_release;
}

const std::vector<TopLevelDocProductPtr>& DocumentationSet::getTopLevelProducts() const {
    return m_topLevelProducts;
}

void DocumentationSet::addTopLevelProduct(std::shared_ptr<const TopLevelDocProduct> product) {
    m_topLevelProducts.push_back(std::move(product));
}

}  // namespace doc_products_shared
