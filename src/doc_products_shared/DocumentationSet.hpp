#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "doc_products_shared/DocProduct.hpp"

namespace doc_products_shared {

// An entry of a documentation set's product list.
class TopLevelDocProduct : public DocProduct {
public:
    using DocProduct::DocProduct;
};

// A product, and a list of products in file order. Both keep their products alive.
using TopLevelDocProductPtr = std::shared_ptr<const TopLevelDocProduct>;
using TopLevelDocProductVectorPtr = std::shared_ptr<const std::vector<TopLevelDocProductPtr>>;

// Products by name.
using TopLevelDocProductMap = std::unordered_map<std::string, TopLevelDocProductPtr>;

// The contents of a catalogue file: every product, installed or not, as DocSetJsonParser reads it.
// DocProductCollector knows which are installed. By default, and for a file that doesn't exist, the texts are empty
// and there are no products. Copies share the products. References returned are valid until the set changes.
class DocumentationSet {
public:
    // A set without products.
    DocumentationSet() = default;
    DocumentationSet(std::string format, std::string release)
        : m_format(std::move(format)), m_release(std::move(release)) {}

    // The catalogue's format, and the release that it describes; not interpreted.
    const std::string& getFormat() const;
    const std::string& getRelease() const;

    // The products, in the order in which they were added.
    const std::vector<TopLevelDocProductPtr>& getTopLevelProducts() const;

    // Appends a product, even if the set already has it.
    void addTopLevelProduct(std::shared_ptr<const TopLevelDocProduct> product);

private:
    std::string m_format;
    std::string m_release;
    std::vector<TopLevelDocProductPtr> m_topLevelProducts;
};

}  // namespace doc_products_shared
