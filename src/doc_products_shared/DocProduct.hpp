#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace doc_products_shared {

// One family that a product belongs to: UTF-8 text as the catalogue holds it, untrimmed. Immutable. Accessors refer
// into the record and are valid as long as it lives.
class ProductFamily {
public:
    ProductFamily(std::string family, std::string group) : m_family(std::move(family)), m_group(std::move(group)) {}

    // The family's name. "webonlyproducts" marks a product that exists on the web only.
    const std::string& getFamily() const;

    // The group's name; empty where the catalogue names none.
    const std::string& getGroup() const;

private:
    std::string m_family;
    std::string m_group;
};

// One documentation product: UTF-8 text as the catalogue holds it, untrimmed and unchecked, any of it possibly empty.
// Immutable, and shared by pointer: it outlives the catalogue that it came from as long as somebody holds it.
// Accessors refer into the record and are valid as long as it lives.
class DocProduct {
public:
    DocProduct(std::string displayName, std::string helpLocation, std::string shortName, std::string baseCode,
               std::string altShortName, std::string availability, std::vector<ProductFamily> productFamilies)
        : m_displayName(std::move(displayName)),
          m_helpLocation(std::move(helpLocation)),
          m_shortName(std::move(shortName)),
          m_baseCode(std::move(baseCode)),
          m_altShortName(std::move(altShortName)),
          m_availability(std::move(availability)),
          m_productFamilies(std::move(productFamilies)) {}

    // The name shown to people.
    const std::string& getDisplayName() const;

    // Where the product's documentation lies: a path relative to the data root.
    const std::string& getHelpLocation() const;

    // The short name; it also names the product's .properties file in the catalogue folder.
    const std::string& getShortName() const;

    const std::string& getBaseCode() const;

    // An alternative short name; empty where the catalogue has none.
    const std::string& getAltShortName() const;

    // The availability status, for callers alone; empty where the catalogue has none.
    const std::string& getAvailability() const;

    // The families in file order; may be empty.
    const std::vector<ProductFamily>& getProductFamilies() const;

private:
    std::string m_displayName;
    std::string m_helpLocation;
    std::string m_shortName;
    std::string m_baseCode;
    std::string m_altShortName;
    std::string m_availability;
    std::vector<ProductFamily> m_productFamilies;
};

using DocProductPtr = std::shared_ptr<const DocProduct>;

}  // namespace doc_products_shared
