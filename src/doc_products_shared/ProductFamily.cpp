#include "doc_products_shared/ProductFamily.hpp"

namespace doc_products_shared {

const std::string& ProductFamily::getFamily() const {
    return m_family;
}

const std::string& ProductFamily::getGroup() const {
    return m_group;
}

}  // namespace doc_products_shared
