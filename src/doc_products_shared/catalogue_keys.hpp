#pragma once

// The keys of a catalogue, and the family that it gives a meaning.
namespace doc_products_shared::catalogue_keys {

constexpr const char* documentationSet = "documentation_set";
constexpr const char* productList = "product_list";
constexpr const char* format = "format";
constexpr const char* release = "release";
constexpr const char* product = "product";
constexpr const char* displayName = "display_name";
constexpr const char* helpLocation = "help_location";
constexpr const char* shortName = "short_name";
constexpr const char* baseCode = "basecode";
constexpr const char* altShortName = "alt_short_name";
constexpr const char* status = "status";
constexpr const char* productFamilyList = "product_family_list";
constexpr const char* productFamily = "product_family";
constexpr const char* family = "family";
constexpr const char* group = "group";

constexpr const char* webOnlyFamily = "webonlyproducts";

}  // namespace doc_products_shared::catalogue_keys
