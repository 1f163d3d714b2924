#include "SupportPackageRootReader.hpp"

#include "vorlan/services.hpp"

fl::ustring SupportPackageRootReader::getSupportPackageRootNoCreate() const {
    return vorlan::services().supportPackageRoot();
}
