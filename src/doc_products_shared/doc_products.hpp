#pragma once

#include "doc_products_shared/DocProductCacheManager.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "fl/i18n.hpp"

// What a user of the library includes: the roots, the catalogue with its records, paths, and conversions of text.
// This prints the documentation root, the installed products, and where one product has its pages:
//
//     using namespace doc_products_shared;
//     std::cout << to_string(Docroot::getInstance().getDocroot()) << '\n';
//     if (const auto collector = DocProductCacheManager::getInstance().getDocProductCache()) {
//         for (const auto& product : *collector->getInstalledTopLevelDocProducts()) {
//             std::cout << "  " << product->getDisplayName() << '\n';
//         }
//         if (const auto product = collector->getProductInfo("LK")) {
//             std::cout << "LK: " << product->getHelpLocation() << '\n';
//         }
//     }
//
// The collector is null while no root is known, and while no attempt to read a catalogue has succeeded. The request
// that finds a malformed catalogue throws std::runtime_error. Until the host adds a sink to the Boost.Log core, that
// core writes the library's error records to standard output.
