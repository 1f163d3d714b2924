#pragma once

#include <string>

namespace app {

// Why a file can't be read as a regular file, such as "is a folder"; empty if it can, or if there is none.
std::string obstacle(const std::string& path);

}  // namespace app
