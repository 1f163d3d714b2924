#pragma once

#include <string>

namespace support {

// Names a test of a table after its row's `name`.
inline constexpr auto s_rowName = [](const auto& test) { return std::string(test.param.name); };

}  // namespace support
