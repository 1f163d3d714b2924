#include "roots.hpp"

#include <fmt/format.h>

#include "doc_products_shared/Docroot.hpp"
#include "fl/filesystem.hpp"
#include "terminal_text.hpp"

namespace app {

namespace {

Root rootAt(const char* key, const char* name, const fl::filesystem::upath& path) {
    return {key, name, to_string(path), fl::filesystem::exists(path)};
}

}  // namespace

std::array<Root, 2> findRoots() {
    auto& docroot = doc_products_shared::Docroot::getInstance();
    return {rootAt("documentation_root", "documentation root", docroot.getDocroot()),
            rootAt("data_root", "data root", docroot.getDocDataRoot())};
}

std::string missingRoots(const std::array<Root, 2>& roots) {
    std::string lines;
    for (const Root& root : roots) {
        lines += root.exists ? "" : fmt::format("The {} {} does not exist\n", root.name, printable(root.path));
    }
    return lines;
}

}  // namespace app
