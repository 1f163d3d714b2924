#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

// The roots of the installed documentation, and the products documented there. Users include doc_products.hpp.
namespace doc_products_shared {

// A family that a product belongs to: UTF-8 text as in the catalogue, not trimmed. Immutable. References returned are
// valid for the lifetime of the object.
class ProductFamily {
public:
    // The texts are taken as they are.
    ProductFamily(std::string family, std::string group) : m_family(std::move(family)), m_group(std::move(group)) {}

    // The family's name. "webonlyproducts" marks a product that is documented on the web only and never installed.
    const std::string& getFamily() const;

    // The group's name; empty if the catalogue has none.
    const std::string& getGroup() const;

private:
    std::string m_family;
    std::string m_group;
};

// A documentation product: UTF-8 text as in the catalogue, neither trimmed nor validated; any of it may be empty.
// Immutable, and shared by pointer, so it may outlive its catalogue. References returned are valid for the lifetime
// of the object.
class DocProduct {
public:
    // The texts and the families are taken as they are.
    DocProduct(std::string displayName, std::string helpLocation, std::string shortName, std::string baseCode,
               std::string altShortName, std::string availability, std::vector<ProductFamily> productFamilies)
        : m_displayName(std::move(displayName)),
          m_helpLocation(std::move(helpLocation)),
          m_shortName(std::move(shortName)),
          m_baseCode(std::move(baseCode)),
          m_altShortName(std::move(altShortName)),
          m_availability(std::move(availability)),
          m_productFamilies(std::move(productFamilies)) {}

    // The name shown to users.
    const std::string& getDisplayName() const;

    // The folder of the product's documentation, relative to the data root.
    const std::string& getHelpLocation() const;

    // The short name; it also names the product's .properties file in the catalogue folder.
    const std::string& getShortName() const;

    // A short code, such as "LK".
    const std::string& getBaseCode() const;

    // An alternative short name; empty if the catalogue has none.
    const std::string& getAltShortName() const;

    // The value of "status" in the catalogue, which the library doesn't interpret; empty if there is none.
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

// Keeps the product alive. Null where there is none.
using DocProductPtr = std::shared_ptr<const DocProduct>;

}  // namespace doc_products_shared
