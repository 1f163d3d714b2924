#include <iostream>

#include "doc_products_shared/doc_products.hpp"
#include "host.hpp"

// Prints where the documentation of an installation lives and how many products it has, then moves the documentation
// root as a user does in the host's settings: host INSTALL_ROOT NEW_DOCUMENTATION_ROOT
int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: host INSTALL_ROOT NEW_DOCUMENTATION_ROOT\n";
        return 2;
    }
    host::setRoots(argv[1], std::string(argv[1]) + "/support-packages");

    using namespace doc_products_shared;
    std::cout << "documentation root: " << to_string(Docroot::getInstance().getDocroot()) << '\n';
    if (const auto collector = DocProductCacheManager::getInstance().getDocProductCache()) {
        std::cout << "products: " << collector->getInstalledTopLevelDocProducts()->size() << '\n';
    }

    host::changeSetting("vorlan.help", "DocRoot", argv[2]);
    host::deliverEvents();
    std::cout << "now: " << to_string(Docroot::getInstance().getDocroot()) << '\n';
}
