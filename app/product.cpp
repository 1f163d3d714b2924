#include "product.hpp"

#include <fmt/format.h>

#include <algorithm>

#include "doc_products_shared/catalogue_keys.hpp"
#include "text.hpp"

namespace app {

using doc_products_shared::DocProduct;
using doc_products_shared::ProductFamily;
namespace keys = doc_products_shared::catalogue_keys;

namespace {

bool isWebOnly(const DocProduct& product) {
    const auto& families = product.getProductFamilies();
    return std::any_of(families.begin(), families.end(),
                       [](const ProductFamily& family) { return family.getFamily() == keys::webOnlyFamily; });
}

Json familyOf(const ProductFamily& family) {
    Json object;
    setText(object, keys::family, family.getFamily());
    setTextOrNull(object, keys::group, family.getGroup());
    return object;
}

Json productOf(const FoundProduct& found) {
    const DocProduct& product = *found.product;
    Json object;
    setText(object, keys::displayName, product.getDisplayName());
    setText(object, keys::shortName, product.getShortName());
    setTextOrNull(object, keys::altShortName, product.getAltShortName());
    setText(object, keys::baseCode, product.getBaseCode());
    setTextOrNull(object, keys::status, product.getAvailability());
    setText(object, keys::helpLocation, product.getHelpLocation());
    object["families"] = arrayOf(product.getProductFamilies(), familyOf);
    object["state"] = stateOf(found);
    object["looked_at"] = jsonOf(found.lookedAt);
    return object;
}

}  // namespace

const char* stateOf(const FoundProduct& found) {
    return found.isInstalled ? "installed" : isWebOnly(*found.product) ? "web-only" : "not found";
}

std::string reasonOf(const FoundProduct& found) {
    if (found.isInstalled) {
        return found.lookedAt.back().path + " exists";
    }
    if (isWebOnly(*found.product)) {
        return fmt::format("in the family {}", keys::webOnlyFamily);
    }
    std::string reason;
    for (const LookedAt& file : found.lookedAt) {
        const std::size_t slash = file.path.rfind('/');
        reason += fmt::format("{}no {} in {}", reason.empty() ? "" : ", ", file.path.substr(slash + 1),
                              file.path.substr(0, slash));
    }
    return reason;
}

std::vector<Name> namesOf(const DocProduct& product) {
    return {{keys::baseCode, "base code", product.getBaseCode()},
            {keys::shortName, "short name", product.getShortName()},
            {keys::helpLocation, "help location", product.getHelpLocation()},
            {keys::altShortName, "alternative short name", product.getAltShortName()},
            {keys::displayName, "display name", product.getDisplayName()}};
}

std::vector<Name> namesThatAre(const std::string& name, const DocProduct& product) {
    std::vector<Name> names;
    for (const Name& candidate : namesOf(product)) {
        if (trimmed(candidate.text) == name) {
            names.push_back(candidate);
        }
    }
    return names;
}

std::string fieldsOf(const std::vector<Name>& names) {
    std::string fields;
    for (const Name& name : names) {
        fields += (fields.empty() ? "" : ", ") + std::string(name.field);
    }
    return fields;
}

Json jsonOf(const std::vector<LookedAt>& paths) {
    return arrayOf(paths, [](const LookedAt& path) { return placeOf(path.path, path.exists); });
}

Json jsonOf(const std::vector<FoundProduct>& products) {
    return arrayOf(products, productOf);
}

void setProduct(Json& answer, const FoundProduct& found, const std::string& name) {
    answer["product"] = productOf(found);
    answer["found_by"] = arrayOf(namesThatAre(name, *found.product), [](const Name& each) { return each.key; });
}

}  // namespace app
