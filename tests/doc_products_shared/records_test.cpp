#include <gtest/gtest.h>

#include "doc_products_shared/DocumentationSet.hpp"

namespace {

using namespace doc_products_shared;

TEST(DocumentationSet, KeepsProductsInOrderAlsoTwiceAndLeavesTheArgumentEmpty) {
    auto product = std::make_shared<const TopLevelDocProduct>("A", "", "", "", "", "", std::vector<ProductFamily>());
    const auto* record = product.get();
    DocumentationSet set;
    set.addTopLevelProduct(product);
    set.addTopLevelProduct(nullptr);
    set.addTopLevelProduct(std::move(product));
    EXPECT_EQ(product, nullptr);
    ASSERT_EQ(set.getTopLevelProducts().size(), 3U);
    EXPECT_EQ(set.getTopLevelProducts()[0].get(), record);
    EXPECT_EQ(set.getTopLevelProducts()[1], nullptr);
    EXPECT_EQ(set.getTopLevelProducts()[2].get(), record);
}

}  // namespace
