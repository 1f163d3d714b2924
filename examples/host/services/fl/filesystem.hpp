#pragma once

#include <filesystem>
#include <system_error>

#include "foundation/basic_path.hpp"  // the library's own path type
#include "host.hpp"

// Defined here, so that the services can be built before the library.
namespace fl::filesystem {

inline bool exists(const ustring& path) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::path(i18n::to_string(path)), error);
}

inline bool exists(const upath& path) {
    return exists(path.native());
}

inline upath canonical(const upath& path, const upath& base) {
    const auto whole = std::filesystem::path(to_string(base)) / to_string(path);
    return upath(i18n::to_ustring(std::filesystem::canonical(whole).string()));
}

inline ustring get_install_path() {
    return host::installRoot();
}

}  // namespace fl::filesystem
