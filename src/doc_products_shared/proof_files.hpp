#pragma once

#include <string>

#include "fl/i18n.hpp"
#include "foundation/basic_path.hpp"

// The files that prove a product: it is installed if either exists. The second is looked for only if the first doesn't.
namespace doc_products_shared::proof_files {

namespace detail {

inline const fl::ustring s_inLocation = u"doccenter.properties";
inline const fl::ustring s_folder = u"docCatalog/products";
inline const std::string s_suffix = ".properties";

}  // namespace detail

inline fl::filesystem::upath inLocation(const fl::ustring& dataRoot, const std::string& helpLocation) {
    return fl::filesystem::upath() / dataRoot / fl::i18n::to_ustring(helpLocation) / detail::s_inLocation;
}

inline fl::filesystem::upath ofShortName(const fl::ustring& dataRoot, const std::string& shortName) {
    return fl::filesystem::upath() / dataRoot / detail::s_folder / fl::i18n::to_ustring(shortName + detail::s_suffix);
}

}  // namespace doc_products_shared::proof_files
