#include "yardsticks.hpp"

#include <mutex>
#include <utility>

namespace bench {

namespace {

doc_products_shared::TopLevelDocProductMap s_products;

std::mutex s_mutex;  // guards the path
fl::filesystem::upath s_path;

}  // namespace

void keepProducts(doc_products_shared::TopLevelDocProductMap products) {
    s_products = std::move(products);
}

doc_products_shared::DocProductPtr find(const std::string& name) {
    const auto found = s_products.find(name);
    return found == s_products.end() ? nullptr : found->second;
}

void keepPath(const fl::filesystem::upath& path) {
    const std::lock_guard lock(s_mutex);
    s_path = path;
}

fl::filesystem::upath copyPath() {
    const std::lock_guard lock(s_mutex);
    return s_path;
}

}  // namespace bench
