#pragma once

#include <memory>
#include <string>
#include <unordered_map>
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

}  // namespace doc_products_shared
