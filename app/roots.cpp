#include "roots.hpp"

#include <fmt/format.h>

#include "doc_products_shared/Docroot.hpp"
#include "fl/filesystem.hpp"
#include "terminal_text.hpp"

namespace app {

std::array<Root, 2> findRoots() {
    auto& docroot = doc_products_shared::Docroot::getInstance();
    const std::array paths = {docroot.getDocroot(), docroot.getDocDataRoot()};
    auto roots = unknownRoots;
    for (std::size_t i = 0; i < roots.size(); ++i) {
        roots.at(i).path = to_string(paths.at(i));
        roots.at(i).exists = fl::filesystem::exists(paths.at(i));
    }
    return roots;
}

std::string missingRoots(const std::array<Root, 2>& roots) {
    std::string lines;
    for (const Root& root : roots) {
        lines += root.exists ? "" : fmt::format("The {} {} does not exist\n", root.name, printable(root.path));
    }
    return lines;
}

}  // namespace app
