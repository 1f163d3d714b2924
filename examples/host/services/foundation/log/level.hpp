#pragma once

#include <cstdint>

namespace foundation::log {

enum class level : std::uint32_t { note = 4, detail = 8, enter = 32, exit = 64, error = 512 };

}  // namespace foundation::log
