#pragma once

#include <string>
#include <utility>

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

}  // namespace doc_products_shared
