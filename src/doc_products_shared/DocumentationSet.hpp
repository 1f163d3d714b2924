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

using TopLevelDocProductPtr = std::shared_ptr<const TopLevelDocProduct>;
using TopLevelDocProductVectorPtr = std::shared_ptr<const std::vector<TopLevelDocProductPtr>>;
using TopLevelDocProductMap = std::unordered_map<std::string, TopLevelDocProductPtr>;

// The contents of one catalogue file. Default-constructed, it has empty texts and no products, as for a file that
// doesn't exist. Copies share the products. Accessors refer into the set and are valid as long as it lives unchanged.
class DocumentationSet {
public:
    DocumentationSet() = default;
    DocumentationSet(std::string format, std::string release)
        : m_format(std::move(format)), m_release(std::move(release)) {}

    // The catalogue's format, and the release that it describes: text as the file holds it, never interpreted.
    const std::string& getFormat() const;
    const std::string& getRelease() const;

    // The products in the order in which they were added, none left out.
    const std::vector<TopLevelDocProductPtr>& getTopLevelProducts() const;

    // Appends a product, also one that is there already.
    void addTopLevelProduct(std::shared_ptr<const TopLevelDocProduct> product);

private:
    std::string m_format;
    std::string m_release;
    std::vector<TopLevelDocProductPtr> m_topLevelProducts;
};

}  // namespace doc_products_shared
