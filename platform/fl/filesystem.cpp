#include "fl/filesystem.hpp"

#include "vorlan/services.hpp"

namespace fl::filesystem {

bool exists(const upath& path) {
    return exists(path.native());
}

bool exists(const ustring& path) {
    return vorlan::services().exists(path);
}

upath canonical(const upath& path, const upath& base) {
    const bool standsAlone = base.empty() || detail::is_absolute(path.native());
    return upath(vorlan::services().canonical(standsAlone ? path.native() : (base / path.native()).native()));
}

ustring get_install_path() {
    return vorlan::services().installRoot();
}

}  // namespace fl::filesystem
