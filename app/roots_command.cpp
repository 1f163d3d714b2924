#include "commands.hpp"
#include "doc_products_shared/Docroot.hpp"
#include "fl/i18n.hpp"
#include "table.hpp"

namespace app {

std::string showRoots(const Options& /*options*/) {
    auto& roots = doc_products_shared::Docroot::getInstance();
    return tableText({
        {"documentation root", fl::i18n::to_string(roots.getDocroot().native())},
        {"data root", fl::i18n::to_string(roots.getDocDataRoot().native())},
    });
}

}  // namespace app
