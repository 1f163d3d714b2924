#include "check/examine.hpp"

#include <optional>
#include <string_view>
#include <utility>

#include "check/disk.hpp"
#include "check/portable.hpp"
#include "check/products.hpp"
#include "check/walk.hpp"

namespace app::check {

Report examine(std::string file, std::string text, std::string dataRoot, const Policy& policy) {
    Report report{std::move(file), {}, std::move(text), std::move(dataRoot), 0, Problems(policy)};
    ProductChecks products(report.problems);
    std::optional<DiskChecks> disk;
    if (!report.dataRoot.empty()) {
        disk.emplace(report.dataRoot, report.problems);
    }
    const std::size_t sound = walkCatalogue(report.text, report.problems, [&](const Product& product) {
        ++report.products;
        products.check(product);
        disk ? disk->check(product) : void();
    });
    checkPortable(std::string_view(report.text).substr(0, sound), report.problems);
    return report;
}

}  // namespace app::check
