#include "obstacle.hpp"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace app {

std::string obstacle(const std::string& path) {
    std::error_code error;
    const auto type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::regular) {
        return std::ifstream(path) ? "" : "permission denied";
    }
    if (type == std::filesystem::file_type::none) {
        return error == std::errc::permission_denied ? "permission denied" : "";
    }
    const bool isThere = type != std::filesystem::file_type::not_found;
    return type == std::filesystem::file_type::directory ? "is a folder" : isThere ? "is not a regular file" : "";
}

}  // namespace app
