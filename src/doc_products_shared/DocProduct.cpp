#include "doc_products_shared/DocProduct.hpp"

namespace doc_products_shared {

const std::string& ProductFamily::getFamily() const {
    return m_family;
}

const std::string& ProductFamily::getGroup() const {
    return m_group;
}

const std::string& DocProduct::getDisplayName() const {
    return m_displayName;
}

const std::string& DocProduct::getHelpLocation() const {
    return m_helpLocation;
}

const std::string& DocProduct::getShortName() const {
    return m_shortName;
}

const std::string& DocProduct::getBaseCode() const {
    return m_baseCode;
}

const std::string& DocProduct::getAltShortName() const {
    return m_altShortName;
}

const std::string& DocProduct::getAvailability() const {
    return m_availability;
}

const std::vector<ProductFamily>& DocProduct::getProductFamilies() const {
    return m_productFamilies;
}

}  // namespace doc_products_shared
